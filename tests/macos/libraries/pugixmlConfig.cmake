include("${CMAKE_CURRENT_LIST_DIR}/headers.cmake")
darwin_headers(pugixml::pugixml pugixml.hpp pugiconfig.hpp)
