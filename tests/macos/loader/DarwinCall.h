// How a call of Darwin's is offered to the image where Linux's of the same name is another one:
//
//   DARWIN_CALL(int, pthread_mutex_lock)(Mutex* lock) { ... }
//
// make-image finds such functions by their names and binds the image to them.
#pragma once

#define DARWIN_CALL(result, name)                                                                  \
    extern "C" __attribute__((visibility("hidden"))) result darwin_##name

namespace macho {

/** Ends the program with a word about what the image did. */
[[noreturn]] void endProgram(const char* what, const void* where);

} // namespace macho
