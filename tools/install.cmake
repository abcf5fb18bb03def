# cmake --install puts the tools where Linux users expect programs, with manual pages made of their help
# texts, and with completion. Other programs there have names like "play", so these get a prefix, which
# they know (tools/common/ToolName.h).
include(GNUInstallDirs)
set(prefix rdl3-rdl5-)
set(programs check-library make-presets play)
set(descriptions
  "tell why the RDL3/RDL5 VST plug-in stays empty"
  "write a synthesizer's voices as VST 3 preset files"
  "play a MIDI file through the RDL3/RDL5 VST plug-in"
  "run a command with a simulated editor library in its fixed place")
set(commands ${programs} with-simulator)

foreach(command ${commands})
  install(PROGRAMS "${PROJECT_BINARY_DIR}/${command}" RENAME "${prefix}${command}"
    DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT tools)
  install(FILES "${CMAKE_CURRENT_LIST_DIR}/completion/tools.bash" RENAME "${prefix}${command}"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" COMPONENT tools)
endforeach()
install(FILES "${CMAKE_CURRENT_LIST_DIR}/completion/_rdl3_rdl5_tools"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions" COMPONENT tools)
# with-simulator looks for it there.
install(DIRECTORY "${PROJECT_BINARY_DIR}/staging/Library" DESTINATION lib/rdl3-rdl5-vst/staging
  COMPONENT tools)

# help2man runs the programs, which takes long with instrumented ones.
find_program(VSTK2X_HELP2MAN help2man)
if(NOT VSTK2X_HELP2MAN OR VSTK2X_SANITIZE OR VSTK2X_COVERAGE OR CMAKE_CROSSCOMPILING)
  return()
endif()
set(pages)
set(folder "${CMAKE_CURRENT_BINARY_DIR}/man")
foreach(command description IN ZIP_LISTS commands descriptions)
  set(page "${folder}/${prefix}${command}.1")
  # Under its installed name, which its help tells.
  add_custom_command(OUTPUT "${page}.gz"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${folder}"
    COMMAND "${CMAKE_COMMAND}" -E copy "${PROJECT_BINARY_DIR}/${command}" "${folder}/${prefix}${command}"
    COMMAND "${VSTK2X_HELP2MAN}" --no-info "--name=${description}" "--output=${page}"
      "${folder}/${prefix}${command}"
    COMMAND gzip -9nf "${page}"
    DEPENDS "${PROJECT_BINARY_DIR}/${command}" $<TARGET_NAME_IF_EXISTS:${command}>
    COMMENT "Manual page of ${command}" VERBATIM)
  list(APPEND pages "${page}.gz")
endforeach()
add_custom_target(manual-pages ALL DEPENDS ${pages})
install(FILES ${pages} DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tools)
