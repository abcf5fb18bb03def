// What the module asks of allocator and locks, by way of AudioThreadGuard. The linker leads the
// module's own calls here (--wrap); those of the host and of the library go where they always went.
#include "processor/AudioThreadGuard.h"

#ifdef VSTK2X_AUDIO_GUARD

#include <cstddef>
#include <pthread.h>

using Steinberg::Vst::AudioThreadGuard;

extern "C" {

void* __real_malloc(std::size_t size);
void* __wrap_malloc(std::size_t size)
{
    AudioThreadGuard::check(AudioThreadGuard::kAllocate, "malloc");
    return __real_malloc(size);
}

void* __real_calloc(std::size_t count, std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size)
{
    AudioThreadGuard::check(AudioThreadGuard::kAllocate, "calloc");
    return __real_calloc(count, size);
}

void* __real_realloc(void* memory, std::size_t size);
void* __wrap_realloc(void* memory, std::size_t size)
{
    AudioThreadGuard::check(AudioThreadGuard::kAllocate, "realloc");
    return __real_realloc(memory, size);
}

void __real_free(void* memory);
void __wrap_free(void* memory)
{
    AudioThreadGuard::check(AudioThreadGuard::kFree, "free");
    __real_free(memory);
}

// operator new, new[], and delete with and without a size.
void* __real__Znwm(std::size_t size);
void* __wrap__Znwm(std::size_t size)
{
    AudioThreadGuard::check(AudioThreadGuard::kAllocate, "operator new");
    return __real__Znwm(size);
}

void* __real__Znam(std::size_t size);
void* __wrap__Znam(std::size_t size)
{
    AudioThreadGuard::check(AudioThreadGuard::kAllocate, "operator new[]");
    return __real__Znam(size);
}

void __real__ZdlPv(void* memory);
void __wrap__ZdlPv(void* memory)
{
    AudioThreadGuard::check(AudioThreadGuard::kFree, "operator delete");
    __real__ZdlPv(memory);
}

void __real__ZdlPvm(void* memory, std::size_t size);
void __wrap__ZdlPvm(void* memory, std::size_t size)
{
    AudioThreadGuard::check(AudioThreadGuard::kFree, "operator delete");
    __real__ZdlPvm(memory, size);
}

void __real__ZdaPv(void* memory);
void __wrap__ZdaPv(void* memory)
{
    AudioThreadGuard::check(AudioThreadGuard::kFree, "operator delete[]");
    __real__ZdaPv(memory);
}

int __real_pthread_mutex_lock(pthread_mutex_t* lock);
int __wrap_pthread_mutex_lock(pthread_mutex_t* lock)
{
    AudioThreadGuard::check(AudioThreadGuard::kLock, "pthread_mutex_lock");
    return __real_pthread_mutex_lock(lock);
}

int __real_pthread_mutex_trylock(pthread_mutex_t* lock);
int __wrap_pthread_mutex_trylock(pthread_mutex_t* lock)
{
    AudioThreadGuard::check(AudioThreadGuard::kTryLock, "pthread_mutex_trylock");
    return __real_pthread_mutex_trylock(lock);
}

int __real_pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* lock);
int __wrap_pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* lock)
{
    AudioThreadGuard::check(AudioThreadGuard::kWait, "pthread_cond_wait");
    return __real_pthread_cond_wait(condition, lock);
}

} // extern "C"

#endif
