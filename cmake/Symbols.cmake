# What a crash report is read with: line numbers in what ships, taken out of it into a file beside the
# bundle. A Debug build keeps everything in the module.
#   Linux   RDL3_RDL5 VST.so.debug, which the module names in its debug link and build ID
#   macOS   RDL3_RDL5 VST.vst3.dSYM, of the module's UUID

# Functions and lines and nothing else: enough for a backtrace, and no change of the code.
set(VSTK2X_LINE_NUMBERS $<$<CONFIG:Release>:-g1>)

if(APPLE)
  set(VSTK2X_SYMBOLS "${CMAKE_BINARY_DIR}/RDL3_RDL5 VST.vst3.dSYM")
  find_program(VSTK2X_DSYMUTIL NAMES dsymutil REQUIRED)
else()
  set(VSTK2X_SYMBOLS "${CMAKE_BINARY_DIR}/RDL3_RDL5 VST.so.debug")
endif()

# vstk2x_split_symbols(target): strips the module once it is linked. To be called before whatever else
# is done with it after linking: its description, its signature.
function(vstk2x_split_symbols target)
  if(NOT APPLE)
    target_link_options(${target} PRIVATE LINKER:--build-id)
  endif()
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND "${CMAKE_COMMAND}" "-DCONFIG=$<CONFIG>" "-DMODULE=$<TARGET_FILE:${target}>"
      "-DSYMBOLS=${VSTK2X_SYMBOLS}" "-DSTRIP=${CMAKE_STRIP}" "-DOBJCOPY=${CMAKE_OBJCOPY}"
      "-DDSYMUTIL=${VSTK2X_DSYMUTIL}" -P "${PROJECT_SOURCE_DIR}/cmake/split-symbols.cmake"
    COMMENT "Taking the symbols out of the module"
    VERBATIM)
endfunction()
