# cmake --install build/release --component tools puts the tools where Linux users expect programs,
# with manual pages made of their help texts, and with completion. Without the option only the bundle
# is installed.
include(GNUInstallDirs)
set(programs check-library make-presets play)
set(descriptions
  "tell why the RDL3/RDL5 VST plug-in stays empty"
  "write a synthesizer's voices as VST 3 preset files"
  "play a MIDI file through the RDL3/RDL5 VST plug-in"
  "run a command with a simulated editor library in its fixed place")
set(commands ${programs} with-simulator)

install(TARGETS ${programs} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
  COMPONENT tools EXCLUDE_FROM_ALL)
install(PROGRAMS "${PROJECT_BINARY_DIR}/with-simulator" DESTINATION "${CMAKE_INSTALL_BINDIR}"
  COMPONENT tools EXCLUDE_FROM_ALL)
# with-simulator looks for it there.
install(DIRECTORY "${PROJECT_BINARY_DIR}/staging/Library" DESTINATION lib/rdl3-rdl5-vst/staging
  COMPONENT tools EXCLUDE_FROM_ALL)

foreach(command ${commands})
  install(FILES "${CMAKE_CURRENT_LIST_DIR}/completion/tools.bash" RENAME "${command}"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" COMPONENT tools EXCLUDE_FROM_ALL)
endforeach()
install(FILES "${CMAKE_CURRENT_LIST_DIR}/completion/_rdl3_rdl5_tools"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions" COMPONENT tools EXCLUDE_FROM_ALL)

# help2man runs the programs, which instrumented ones do not deserve.
find_program(VSTK2X_HELP2MAN help2man)
if(NOT VSTK2X_HELP2MAN OR VSTK2X_SANITIZE OR VSTK2X_COVERAGE OR CMAKE_CROSSCOMPILING)
  return()
endif()
set(pages)
foreach(command description IN ZIP_LISTS commands descriptions)
  set(page "${CMAKE_CURRENT_BINARY_DIR}/man/${command}.1")
  add_custom_command(OUTPUT "${page}"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${CMAKE_CURRENT_BINARY_DIR}/man"
    COMMAND "${VSTK2X_HELP2MAN}" --no-info "--name=${description}" "--output=${page}"
      "${PROJECT_BINARY_DIR}/${command}"
    DEPENDS "${PROJECT_BINARY_DIR}/${command}" $<TARGET_NAME_IF_EXISTS:${command}>
    COMMENT "Manual page of ${command}" VERBATIM)
  list(APPEND pages "${page}")
endforeach()
add_custom_target(manual-pages ALL DEPENDS ${pages})
install(FILES ${pages} DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tools EXCLUDE_FROM_ALL)
