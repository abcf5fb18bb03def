// Defines a function that the image calls where Darwin's function differs from Linux's of that
// name:
//
//   DARWIN_CALL(int, pthread_mutex_lock)(Mutex* lock) { ... }
//
// make-image finds these functions by their names and has the image call them.
#pragma once

#define DARWIN_CALL(result, name)                                                                  \
    extern "C" __attribute__((visibility("hidden"))) result darwin_##name

namespace macho {

/** Prints what the image did wrong, and ends the program. */
[[noreturn]] void endProgram(const char* what, const void* where);

} // namespace macho
