# Replaces CMake's own, which would find this machine's libraries. Gives the headers of a module whose one
# header has its name, and those of GLib, which libsmf's header includes.
include("${CMAKE_CURRENT_LIST_DIR}/headers.cmake")
function(pkg_check_modules prefix)
  list(GET ARGN -1 module)
  darwin_headers(PkgConfig::${prefix} ${module}.h)
  execute_process(COMMAND pkg-config --cflags-only-I glib-2.0
    OUTPUT_VARIABLE folders OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(folders)
  list(TRANSFORM folders REPLACE "^-I" "")
  target_include_directories(PkgConfig::${prefix} SYSTEM INTERFACE ${folders})
endfunction()
