# Toolchain file: builds the macOS plug-in on Linux with clang and LLVM's linker, to see that it
# compiles and links. The result is not meant to be shipped: the frameworks are declared by hand in
# tests/macos/sdk, as far as the plug-in uses them.
#   VSTK2X_DARWIN_ARCH   x86_64 or arm64
#   DARWIN_SDK_DIR       what scripts/fetch-darwin printed
set(CMAKE_SYSTEM_NAME Darwin)
set(VSTK2X_DARWIN_ARCH x86_64 CACHE STRING "x86_64 or arm64")
set(DARWIN_SDK_DIR "$ENV{DARWIN_SDK_DIR}" CACHE PATH "What scripts/fetch-darwin printed")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VSTK2X_DARWIN_ARCH DARWIN_SDK_DIR)
if(VSTK2X_DARWIN_ARCH STREQUAL "arm64")
  set(CMAKE_SYSTEM_PROCESSOR arm64)
  set(headers "aarch64-macos.11-none")
else()
  set(CMAKE_SYSTEM_PROCESSOR x86_64)
  set(headers "x86_64-macos.11-none")
endif()

set(llvm 14)
find_program(CMAKE_C_COMPILER clang-${llvm} REQUIRED)
find_program(CMAKE_CXX_COMPILER clang++-${llvm} REQUIRED)
set(CMAKE_OBJCXX_COMPILER "${CMAKE_CXX_COMPILER}")
find_program(CMAKE_AR llvm-ar-${llvm} REQUIRED)
find_program(CMAKE_RANLIB llvm-ranlib-${llvm} REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-${llvm} REQUIRED)
find_program(CMAKE_STRIP llvm-strip-${llvm} REQUIRED)
find_program(VSTK2X_DSYMUTIL dsymutil-${llvm} REQUIRED)
find_program(VSTK2X_LINKER ld64.lld-${llvm} REQUIRED)

# macOS 11 is the first on arm64.
foreach(language C CXX OBJCXX)
  set(CMAKE_${language}_COMPILER_TARGET "${VSTK2X_DARWIN_ARCH}-apple-macos11")
endforeach()
set(CMAKE_OSX_SYSROOT "" CACHE STRING "")
set(CMAKE_OSX_DEPLOYMENT_TARGET "" CACHE STRING "")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-resource-dir
  OUTPUT_VARIABLE resources OUTPUT_STRIP_TRAILING_WHITESPACE)
set(own "${CMAKE_CURRENT_LIST_DIR}/../tests/macos/sdk")
cmake_path(NORMAL_PATH own)
set(system "-isystem ${resources}/include")
foreach(part ${headers} any-macos.11-any any-macos-any)
  string(APPEND system " -isystem ${DARWIN_SDK_DIR}/include/${part}")
endforeach()
string(APPEND system " -isystem ${own}/include")
set(CMAKE_C_FLAGS_INIT "-nostdinc ${system}")
foreach(language CXX OBJCXX)
  set(CMAKE_${language}_FLAGS_INIT
    "-nostdinc -nostdinc++ -isystem ${DARWIN_SDK_DIR}/include/c++/v1 ${system}")
endforeach()
set(CMAKE_EXE_LINKER_FLAGS_INIT
  "--ld-path=${VSTK2X_LINKER} -mlinker-version=609 -nostdlib -L${DARWIN_SDK_DIR}/lib -L${own}/lib -F${own}/lib -lc++ -lSystem")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "${CMAKE_EXE_LINKER_FLAGS_INIT}")
# Only for the plug-in is all of libc++ and of the frameworks listed that it may use. What the tools and
# tests ask for beside that is looked at once they are linked (tests/macos/check_programs.py).
add_link_options("$<$<NOT:$<STREQUAL:$<TARGET_PROPERTY:NAME>,vstk2x>>:LINKER:-undefined,dynamic_lookup>")

# The SDK asks for Xcode's version and for the frameworks of its own programs, which are not built here.
set(ENV{XCODE_VERSION} 14)
set(XCODE_VERSION 14)
set(COCOA_FRAMEWORK "-framework Cocoa" CACHE STRING "")
