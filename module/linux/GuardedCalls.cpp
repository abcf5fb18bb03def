// What the module asks of allocator and locks, by way of AudioThreadGuard. The linker leads the
// module's own calls here (--wrap); those of the host and of the library go where they always went.
#include "processor/AudioThreadGuard.h"

#ifdef VSTK2X_AUDIO_GUARD

#include <cstddef>
#include <pthread.h>

using Steinberg::Vst::AudioThreadGuard;

extern "C" {

/** One operation. The build reads the first word of each line below for what the linker wraps. */
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
