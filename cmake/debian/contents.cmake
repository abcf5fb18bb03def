# Read by cpack for each kind of package: the archive has the plug-in alone, for machines of every kind.
if(CPACK_GENERATOR STREQUAL "TGZ")
  set(CPACK_INSTALL_CMAKE_PROJECTS "${CPACK_VSTK2X_BUILD};vstk2x;plug-in;/")
endif()
