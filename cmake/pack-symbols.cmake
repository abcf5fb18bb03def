# Run by cpack when its package is there: puts the symbols into an archive beside it, which is kept and
# not handed out.
if(EXISTS "${CPACK_VSTK2X_SYMBOLS}")
  get_filename_component(folder "${CPACK_VSTK2X_SYMBOLS}" DIRECTORY)
  get_filename_component(name "${CPACK_VSTK2X_SYMBOLS}" NAME)
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -E tar czf
      "${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}-symbols.tar.gz" "${name}"
    WORKING_DIRECTORY "${folder}"
    COMMAND_ERROR_IS_FATAL ANY)
endif()
