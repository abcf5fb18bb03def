# darwin_headers(target header...): stands for one of Debian's libraries when programs are compiled for
# macOS. It has the library's headers, which do not depend on the system, and nothing to link. Only the
# headers that are named are linked from /usr/include, since the others there are Linux's.
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
