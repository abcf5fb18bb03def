# cmake --install puts the bundle where hosts look for plug-ins, cpack makes what to hand out.
#   Linux   /usr/local/lib/vst3, or with --prefix /usr the distribution's folder; a .tar.gz of it. The
#           user's own folder has another name: -DVSTK2X_PLUGIN_FOLDER=.vst3, then
#           --component plug-in --prefix ~
#           The tools (tools/install.cmake) and the documents for users as well; a .deb of everything.
#   macOS   /Library/Audio/Plug-Ins/VST3, or with --prefix ~ the user's own; a .pkg and a .zip
if(APPLE)
  if(CMAKE_INSTALL_PREFIX_INITIALIZED_TO_DEFAULT)
    set(CMAKE_INSTALL_PREFIX "/" CACHE PATH "Where Library/Audio/Plug-Ins/VST3 is" FORCE)
  endif()
  set(plugin_folder "Library/Audio/Plug-Ins/VST3")
else()
  set(plugin_folder "lib/vst3")
endif()
set(VSTK2X_PLUGIN_FOLDER "${plugin_folder}" CACHE STRING "Where the bundle goes, below the prefix")
install(DIRECTORY "${CMAKE_BINARY_DIR}/RDL3_RDL5 VST.vst3"
  DESTINATION "${VSTK2X_PLUGIN_FOLDER}" USE_SOURCE_PERMISSIONS COMPONENT plug-in)
# The symbols stay with those who build it: in an archive beside cpack's package, or where
#   cmake --install BUILD --component symbols --prefix FOLDER
# puts them.
if(APPLE)
  install(DIRECTORY "${VSTK2X_SYMBOLS}" DESTINATION . COMPONENT symbols EXCLUDE_FROM_ALL)
else()
  install(FILES "${VSTK2X_SYMBOLS}" DESTINATION . COMPONENT symbols EXCLUDE_FROM_ALL)
endif()
set(CPACK_VSTK2X_SYMBOLS "${VSTK2X_SYMBOLS}")
list(APPEND CPACK_POST_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/pack-symbols.cmake")

set(CPACK_PACKAGE_NAME "RDL3_RDL5-VST")
set(CPACK_PACKAGE_VENDOR "Tavrin Corporation")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "RDL3/RDL5 VST, a VST 3 instrument")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CHECKSUM SHA256)
# The installer shows the licence, and knows it as a text by its name alone.
configure_file("${PROJECT_SOURCE_DIR}/LICENSE" "${CMAKE_BINARY_DIR}/LICENSE.txt" COPYONLY)
set(CPACK_RESOURCE_FILE_LICENSE "${CMAKE_BINARY_DIR}/LICENSE.txt")
if(APPLE)
  set(CPACK_GENERATOR productbuild ZIP)
  set(CPACK_SYSTEM_NAME macOS)
  set(CPACK_PACKAGING_INSTALL_PREFIX "/")
  set(CPACK_PRODUCTBUILD_IDENTIFIER "com.tavrin.vst3.rdl3-rdl5")
  # The certificate for the .pkg, which is another than the bundle's.
  set(VSTK2X_INSTALLER_IDENTITY "" CACHE STRING "\"Developer ID Installer\" that signs the .pkg; empty for none")
  set(CPACK_PRODUCTBUILD_IDENTITY_NAME "${VSTK2X_INSTALLER_IDENTITY}")
  set(CPACK_PKGBUILD_IDENTITY_NAME "${VSTK2X_INSTALLER_IDENTITY}")
  # Where there is one component, CPack would name none, and productbuild pack nothing.
  set(CPACK_COMPONENTS_ALL plug-in)
  # The Installer's texts, the template of what it asks for, and how it treats the bundle.
  set(installer "${PROJECT_SOURCE_DIR}/cmake/installer")
  foreach(file Welcome.txt ReadMe.txt component.plist)
    configure_file("${installer}/${file}.in" "${CMAKE_BINARY_DIR}/installer/${file}" @ONLY)
  endforeach()
  set(CPACK_MODULE_PATH "${installer}")
  set(CPACK_RESOURCE_FILE_WELCOME "${CMAKE_BINARY_DIR}/installer/Welcome.txt")
  set(CPACK_RESOURCE_FILE_README "${CMAKE_BINARY_DIR}/installer/ReadMe.txt")
else()
  set(CPACK_GENERATOR TGZ)
  set(CPACK_SYSTEM_NAME "Linux-${CMAKE_SYSTEM_PROCESSOR}")
  include("${PROJECT_SOURCE_DIR}/cmake/debian/package.cmake")
endif()
set(CPACK_SOURCE_GENERATOR "")
include(CPack)
if(APPLE)
  cpack_add_component(plug-in
    DISPLAY_NAME "RDL3/RDL5 VST" REQUIRED PLIST "${CMAKE_BINARY_DIR}/installer/component.plist")
endif()
