# vstk2x_own_code(target): how every target of this project's own code is compiled.
function(vstk2x_own_code target)
  target_include_directories(${target} PUBLIC "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${target} PRIVATE vstk2x_sdk_headers)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow $<$<BOOL:${VSTK2X_WERROR}>:-Werror> -ffunction-sections -fdata-sections
    ${VSTK2X_LINE_NUMBERS})
  # GCC's flow analysis takes the sanitizers' own code for uses of unset values.
  if(VSTK2X_SANITIZE)
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  endif()
  set_target_properties(${target} PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# vstk2x_test_code(target): own code that only tries other code. It runs once for each time it is
# compiled, so it is compiled and linked fast, in a release build without line numbers, unless a fuzzer
# runs it for hours; undefined behaviour is looked for in what ships.
find_program(VSTK2X_LLD ld.lld)
function(vstk2x_test_code target)
  vstk2x_own_code(${target})
  if(VSTK2X_LLD AND CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT VSTK2X_MACHO_BUNDLE)
    target_link_options(${target} PRIVATE -fuse-ld=lld)
  endif()
  if(VSTK2X_FUZZ)
    target_compile_options(${target} PRIVATE -O1 -g1)
  else()
    target_compile_options(${target} PRIVATE -O0 $<IF:$<CONFIG:Release>,-g0,-g1>)
  endif()
  if(VSTK2X_SANITIZE MATCHES undefined)
    target_compile_options(${target} PRIVATE -fno-sanitize=undefined)
  endif()
endfunction()

# vstk2x_compile_together(target): for a tool or a test program of many files, of which each would read
# and instantiate the same as all others: twelve are compiled as one. GCC takes the files for headers, in
# which a class may not have a base without linkage.
function(vstk2x_compile_together target)
  if(VSTK2X_TOGETHER)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 12)
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
  endif()
endfunction()

# vstk2x_tool_code(target): own code of a tool, which waits for the library most of the time: with fewer
# optimisations it is compiled in two thirds of the time.
function(vstk2x_tool_code target)
  vstk2x_own_code(${target})
  vstk2x_compile_together(${target})
  target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
endfunction()

# vstk2x_precompile(target argument...): as target_precompile_headers. ccache takes what was precompiled into
# account by the options.
function(vstk2x_precompile target)
  target_precompile_headers(${target} ${ARGN})
  target_compile_options(${target} PRIVATE
    $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess> "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
endfunction()

# vstk2x_compile_tests_together(target): and with gmock precompiled, once for all test programs, which have
# the same options.
function(vstk2x_compile_tests_together target)
  vstk2x_compile_together(${target})
  vstk2x_with_gmock(${target})
endfunction()

# vstk2x_with_gmock(target): a test program that is compiled file by file, with the same.
function(vstk2x_with_gmock target)
  if(NOT TARGET precompiled-gmock)
    file(WRITE "${CMAKE_BINARY_DIR}/precompiled-gmock.cpp" "int main() {}\n")
    add_executable(precompiled-gmock EXCLUDE_FROM_ALL "${CMAKE_BINARY_DIR}/precompiled-gmock.cpp")
    vstk2x_test_code(precompiled-gmock)
    target_link_libraries(precompiled-gmock PRIVATE GTest::gmock)
    vstk2x_precompile(precompiled-gmock PRIVATE <gmock/gmock.h>)
  endif()
  vstk2x_precompile(${target} REUSE_FROM precompiled-gmock)
endfunction()

# vstk2x_linux_module(target): how a plug-in module for Linux is linked: ours, and one to compare with.
function(vstk2x_linux_module target)
  target_link_options(${target} PRIVATE
    "LINKER:--version-script=${PROJECT_SOURCE_DIR}/module/linux/exports.map"
    LINKER:--as-needed LINKER:-z,relro,-z,now LINKER:--gc-sections)
  if(NOT VSTK2X_SANITIZE)
    target_link_options(${target} PRIVATE LINKER:--no-undefined)
  endif()
  set_target_properties(${target} PROPERTIES PREFIX "" SUFFIX ".so")
endfunction()
