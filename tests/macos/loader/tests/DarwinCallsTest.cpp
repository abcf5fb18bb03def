// The functions that the machine code calls instead of Darwin's.
#include <cstdint>
#include <gmock/gmock.h>

extern "C" {
void* darwin_dlopen(const char* path, int mode);
int darwin_pthread_mutex_init(void* mutex, const void* attributes);
int darwin_pthread_mutex_lock(void* mutex);
int darwin_pthread_mutex_trylock(void* mutex);
int darwin_pthread_mutex_unlock(void* mutex);
int darwin_pthread_mutex_destroy(void* mutex);
int darwin_pthread_mutexattr_init(void* attributes);
int darwin_pthread_mutexattr_settype(void* attributes, int kind);
int darwin_pthread_mutexattr_destroy(void* attributes);
void darwin__ZNSt3__118condition_variable10notify_allEv(void* condition);
}

namespace {

/** Memory for a Darwin mutex that is not initialised: zeros. */
struct Memory {
    alignas(16) uint64_t words[8] = {};
};

TEST(DarwinMutex, LockIsRecursiveWhenTheAttributesSaySo)
{
    Memory attributes;
    Memory mutex;
    EXPECT_EQ(darwin_pthread_mutexattr_init(attributes.words), 0);
    EXPECT_EQ(darwin_pthread_mutexattr_settype(attributes.words, 2), 0);
    EXPECT_NE(darwin_pthread_mutexattr_settype(attributes.words, 3), 0);
    EXPECT_EQ(darwin_pthread_mutex_init(mutex.words, attributes.words), 0);
    EXPECT_EQ(darwin_pthread_mutexattr_destroy(attributes.words), 0);
    EXPECT_EQ(darwin_pthread_mutex_lock(mutex.words), 0);
    EXPECT_EQ(darwin_pthread_mutex_trylock(mutex.words), 0);
    EXPECT_EQ(darwin_pthread_mutex_unlock(mutex.words), 0);
    EXPECT_EQ(darwin_pthread_mutex_unlock(mutex.words), 0);
    EXPECT_EQ(darwin_pthread_mutex_destroy(mutex.words), 0);
}

TEST(DarwinMutex, LockMakesAMutexThatHoldsTheStaticInitialiser)
{
    Memory mutex;
    mutex.words[0] = 0x32AAABA7;
    EXPECT_EQ(darwin_pthread_mutex_lock(mutex.words), 0);
    EXPECT_NE(darwin_pthread_mutex_trylock(mutex.words), 0);
    EXPECT_EQ(darwin_pthread_mutex_unlock(mutex.words), 0);
    EXPECT_EQ(darwin_pthread_mutex_destroy(mutex.words), 0);
}

TEST(DarwinMutex, LockEndsTheProgramForAMutexThatWasNeverMadeOrIsGone)
{
    Memory mutex;
    EXPECT_DEATH(darwin_pthread_mutex_lock(mutex.words), "mutex was used that nobody made");
    EXPECT_DEATH(darwin_pthread_mutex_destroy(mutex.words), "mutex was used that nobody made");
    darwin_pthread_mutex_init(mutex.words, nullptr);
    darwin_pthread_mutex_destroy(mutex.words);
    EXPECT_DEATH(darwin_pthread_mutex_unlock(mutex.words), "mutex was used that nobody made");
    EXPECT_DEATH(darwin_pthread_mutex_init(mutex.words, mutex.words), "attributes were used");
    EXPECT_DEATH(darwin__ZNSt3__118condition_variable10notify_allEv(mutex.words),
                 "condition variable was used that nobody made");
}

TEST(DarwinDlopen, LoadsWithDarwinsModeForLocal)
{
    constexpr int kLazyLocal = 1 | 4;
    constexpr int kLazyNoLoad = 1 | 16;
    EXPECT_EQ(darwin_dlopen(VSTK2X_SCRIPTED_LIBRARY, kLazyNoLoad), nullptr);
    EXPECT_NE(darwin_dlopen(VSTK2X_SCRIPTED_LIBRARY, kLazyLocal), nullptr);
    EXPECT_NE(darwin_dlopen(VSTK2X_SCRIPTED_LIBRARY, kLazyNoLoad), nullptr);
    EXPECT_DEATH(darwin_dlopen(VSTK2X_SCRIPTED_LIBRARY, 0x1000), "mode that Darwin does not have");
}

} // namespace
