# Toolchain file: builds Linux programs that the macOS plug-in's machine code can run in: with clang,
# and with libc++ linked in statically, whose texts have the layout that the code knows.
#   VSTK2X_RUNTIME_ARCH   x86_64 or arm64
#   DARWIN_RUNTIME_DIR    what scripts/fetch-mac-runtime printed
set(VSTK2X_RUNTIME_ARCH x86_64 CACHE STRING "x86_64 or arm64")
set(DARWIN_RUNTIME_DIR "$ENV{DARWIN_RUNTIME_DIR}" CACHE PATH "What scripts/fetch-mac-runtime printed")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VSTK2X_RUNTIME_ARCH DARWIN_RUNTIME_DIR)
set(root "${DARWIN_RUNTIME_DIR}/${VSTK2X_RUNTIME_ARCH}")
set(libcxx "${root}/usr/lib/llvm-14")

find_program(CMAKE_C_COMPILER clang-14 REQUIRED)
find_program(CMAKE_CXX_COMPILER clang++-14 REQUIRED)
find_program(VSTK2X_NM llvm-nm-14 REQUIRED)

set(flags "")
if(VSTK2X_RUNTIME_ARCH STREQUAL "arm64")
  set(CMAKE_SYSTEM_NAME Linux)
  set(CMAKE_SYSTEM_PROCESSOR aarch64)
  set(CMAKE_SYSROOT "${root}")
  set(CMAKE_FIND_ROOT_PATH "${root}")
  set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
  set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
  foreach(language C CXX)
    set(CMAKE_${language}_COMPILER_TARGET aarch64-linux-gnu)
  endforeach()
  # As the machine code has it (Apple's "Writing ARM64 code for Apple platforms"): char is signed, and
  # whoever calls extends a bool or a short.
  set(flags "-fsigned-char -mabi=darwinpcs")
endif()
set(CMAKE_C_FLAGS_INIT "${flags}")
set(CMAKE_CXX_FLAGS_INIT "${flags} -Wno-unused-command-line-argument -nostdinc++ -isystem ${libcxx}/include/c++/v1")

# Each program and each module has a C++ library of its own, which it shows to nobody: one that all
# shared would take the place of the library of the host that loads the module.
set(CMAKE_CXX_STANDARD_LIBRARIES "${libcxx}/lib/libc++.a ${libcxx}/lib/libc++abi.a -lpthread -ldl -lm -lgcc_s")
# The SDK links a part of GNU's C++ library that libc++ has in itself: an empty archive will do.
set(stand_ins "${CMAKE_BINARY_DIR}/stand-ins")
file(WRITE "${stand_ins}/libstdc++fs.a" "!<arch>\n")
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT
    "-L${stand_ins} -fuse-ld=lld-14 -nostdlib++ -Wl,--exclude-libs,libc++.a:libc++abi.a")
endforeach()
