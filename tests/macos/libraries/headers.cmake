# darwin_headers(target header...): a target that stands for one of Debian's libraries when programs are
# compiled for macOS. It has the library's headers and nothing to link: Debian's headers do not depend
# on the system, its binaries do. Only what is named is taken out of /usr/include, whose other
# headers are Linux's.
function(darwin_headers target)
  set(folder "${PROJECT_BINARY_DIR}/libraries")
  file(MAKE_DIRECTORY "${folder}")
  foreach(header ${ARGN})
    if(NOT EXISTS "/usr/include/${header}")
      message(FATAL_ERROR "No /usr/include/${header}: \"scripts/setup test\" installs it.")
    endif()
    file(CREATE_LINK "/usr/include/${header}" "${folder}/${header}" SYMBOLIC)
  endforeach()
  if(NOT TARGET ${target})
    add_library(${target} INTERFACE IMPORTED)
    target_include_directories(${target} SYSTEM INTERFACE "${folder}")
  endif()
endfunction()
