# Run by cpack when everything is installed into a folder of its own: what Debian wants otherwise in a
# package than "cmake --install" leaves it.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
set(usr "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr")

# The bundle's module has no symbols anyway.
file(GLOB_RECURSE files "${usr}/bin/*" "${usr}/lib/rdl3-rdl5-vst/*")
foreach(file ${files})
  file(READ "${file}" start LIMIT 4 HEX)
  if(start STREQUAL "7f454c46")
    execute_process(COMMAND "${CPACK_VSTK2X_STRIP}" --strip-unneeded --remove-section=.comment
      --remove-section=.note "${file}" COMMAND_ERROR_IS_FATAL ANY)
  endif()
endforeach()

# Debian's zsh looks there for what packages bring.
if(EXISTS "${usr}/share/zsh/site-functions") # not where the tools were left out
  file(RENAME "${usr}/share/zsh/site-functions" "${usr}/share/zsh/vendor-completions")
endif()

set(documents "${usr}/share/doc/${CPACK_DEBIAN_PACKAGE_NAME}")
file(COPY "${CPACK_VSTK2X_DEBIAN}/copyright" DESTINATION "${documents}")
file(COPY_FILE "${CPACK_VSTK2X_CHANGELOG}" "${documents}/changelog")
file(COPY_FILE "${CPACK_VSTK2X_DEBIAN}/changelog" "${documents}/changelog.Debian")
execute_process(COMMAND gzip -9n "${documents}/changelog" "${documents}/changelog.Debian"
  COMMAND_ERROR_IS_FATAL ANY)

# Whatever the building user's files have.
execute_process(COMMAND chmod -R u=rwX,go=rX "${usr}" COMMAND_ERROR_IS_FATAL ANY)
