include("${CMAKE_CURRENT_LIST_DIR}/headers.cmake")
darwin_headers(nlohmann_json::nlohmann_json nlohmann)
