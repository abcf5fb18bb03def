// The module's calls of allocator and locks, checked by AudioThreadGuard. The linker directs
// the module's own calls to these functions (--wrap); those of the host and of the library are
// not affected.
#include "processor/AudioThreadGuard.h"

#ifdef VSTK2X_AUDIO_GUARD

#include <cstddef>
#include <pthread.h>

using Steinberg::Vst::AudioThreadGuard;

extern "C" {

/** Defines the checked form of one function. The build takes the names for --wrap from the first
    argument of each use below. */
#define GUARDED(symbol, name, call, result, parameters, arguments)                                 \
    result __real_##symbol parameters;                                                             \
    result __wrap_##symbol parameters                                                              \
    {                                                                                              \
        AudioThreadGuard::check(AudioThreadGuard::call, name);                                     \
        return __real_##symbol arguments;                                                          \
    }                                                                                              \
    static_assert(true)

// clang-format off
GUARDED(malloc, "malloc", kAllocate, void*, (std::size_t size), (size));
GUARDED(calloc, "calloc", kAllocate, void*, (std::size_t count, std::size_t size), (count, size));
GUARDED(realloc, "realloc", kAllocate, void*, (void* memory, std::size_t size), (memory, size));
GUARDED(free, "free", kFree, void, (void* memory), (memory));
// operator new, new[], and delete with and without a size.
GUARDED(_Znwm, "operator new", kAllocate, void*, (std::size_t size), (size));
GUARDED(_Znam, "operator new[]", kAllocate, void*, (std::size_t size), (size));
GUARDED(_ZdlPv, "operator delete", kFree, void, (void* memory), (memory));
GUARDED(_ZdlPvm, "operator delete", kFree, void, (void* memory, std::size_t size), (memory, size));
GUARDED(_ZdaPv, "operator delete[]", kFree, void, (void* memory), (memory));
GUARDED(pthread_mutex_lock, "pthread_mutex_lock", kLock, int, (pthread_mutex_t* lock), (lock));
GUARDED(pthread_mutex_trylock, "pthread_mutex_trylock", kTryLock, int,
        (pthread_mutex_t* lock), (lock));
GUARDED(pthread_cond_wait, "pthread_cond_wait", kWait, int,
        (pthread_cond_t* condition, pthread_mutex_t* lock), (condition, lock));
// clang-format on

} // extern "C"

#endif
