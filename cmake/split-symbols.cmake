# Takes the symbols out of a module that was just linked.
#   CONFIG    the build's configuration; Debug leaves the module as it is
#   MODULE    the module
#   SYMBOLS   where they go: a .dSYM, else a file
#   STRIP, and OBJCOPY or for a .dSYM DSYMUTIL: the tools
cmake_minimum_required(VERSION 3.23)

if(CONFIG STREQUAL "Debug")
  return()
endif()

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE "${SYMBOLS}")
if(SYMBOLS MATCHES "\\.dSYM$")
  run("${DSYMUTIL}" "${MODULE}" -o "${SYMBOLS}")
  # Without local symbols and those for debugging; what is exported and imported stays.
  run("${STRIP}" -S -x "${MODULE}")
else()
  run("${OBJCOPY}" --only-keep-debug "${MODULE}" "${SYMBOLS}")
  run("${STRIP}" "${MODULE}")
  run("${OBJCOPY}" "--add-gnu-debuglink=${SYMBOLS}" "${MODULE}")
endif()
