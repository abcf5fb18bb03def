# What Linux machines get beside the bundle, and the package for Debian.
include(GNUInstallDirs)
set(package rdl3-rdl5-vst)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs/" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${package}"
  COMPONENT documents)

# Which tells what the programs need of other packages.
find_program(VSTK2X_SHLIBDEPS dpkg-shlibdeps)
if(VSTK2X_SHLIBDEPS)
  list(APPEND CPACK_GENERATOR DEB)
endif()
# A package has somebody who answers for it: whoever hands it out.
set(VSTK2X_MAINTAINER "Tavrin Corporation <packages@tavrin.com>" CACHE STRING
  "Maintainer of the .deb, with an address")
set(CPACK_DEBIAN_PACKAGE_NAME "${package}")
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${VSTK2X_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS bubblewrap) # for with-simulator
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "VST 3 plug-in for synthesizers of the RDL3 and RDL5 series")
set(CPACK_PACKAGE_DESCRIPTION "Puts a hardware synthesizer into a digital audio workstation's project as if it
were a software instrument. It makes no sound itself, and needs the maker's
editor library; rdl3-rdl5-check-library tells whether it is there.
.
With it come a simulated library, a command-line host that plays a MIDI file
through the plug-in, and a program that writes voices as preset files.")

# Each kind of package has its own contents.
set(CPACK_PROJECT_CONFIG_FILE "${PROJECT_SOURCE_DIR}/cmake/debian/contents.cmake")
set(CPACK_VSTK2X_BUILD "${CMAKE_BINARY_DIR}")
set(CPACK_VSTK2X_STRIP "${CMAKE_STRIP}")
set(CPACK_VSTK2X_CHANGELOG "${PROJECT_SOURCE_DIR}/CHANGELOG.md")
set(CPACK_VSTK2X_DEBIAN "${CMAKE_BINARY_DIR}/debian")
list(APPEND CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/debian/complete.cmake")
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
string(TIMESTAMP year "%Y" UTC)
# The text between its heading and the line at its end, as a field of the file goes on: a space before
# each line, and a point on an empty one.
file(READ "${VST3_SDK_DIR}/vstgui4/LICENSE" steinberg_license)
string(REGEX REPLACE "//[ \t]?" "" steinberg_license "${steinberg_license}")
string(REGEX REPLACE "^.*(Redistribution and use .*POSSIBILITY OF SUCH DAMAGE\\.).*$" "\\1"
  steinberg_license "${steinberg_license}")
string(REGEX REPLACE "\n[ \t]*\n" "\n.\n" steinberg_license "${steinberg_license}")
string(REPLACE "\n" "\n " steinberg_license " ${steinberg_license}")
foreach(file copyright changelog)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/debian/${file}.in" "${CPACK_VSTK2X_DEBIAN}/${file}" @ONLY)
endforeach()
