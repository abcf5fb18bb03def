// AudioThreadGuard, the debug preset's check of process(): what passes and what ends the program.
#include "processor/AudioThreadGuard.h"

#include <gtest/gtest.h>

namespace {

using Guard = Steinberg::Vst::AudioThreadGuard;

TEST(AudioThreadGuardDeathTest, CheckEndsTheProgramForMemoryOrALockInABlock)
{
    const Guard guard(Guard::kInBlock);
    EXPECT_DEATH(Guard::check(Guard::kAllocate, "malloc"), "malloc on the audio thread");
    EXPECT_DEATH(Guard::check(Guard::kFree, "free"), "free on the audio thread");
    EXPECT_DEATH(Guard::check(Guard::kTryLock, "trylock"), "trylock on the audio thread");
    EXPECT_DEATH(Guard::check(Guard::kLock, "lock"), "lock on the audio thread");
    EXPECT_DEATH(Guard::check(Guard::kWait, "wait"), "wait on the audio thread");
}

TEST(AudioThreadGuardDeathTest, CheckLetsTheQueuesLockBeTriedOnly)
{
    const Guard block(Guard::kInBlock);
    {
        const Guard queue(Guard::kAtQueue);
        Guard::check(Guard::kTryLock, "trylock");
        EXPECT_DEATH(Guard::check(Guard::kLock, "lock"), "lock");
        EXPECT_DEATH(Guard::check(Guard::kFree, "free"), "free");
        EXPECT_DEATH(Guard::check(Guard::kAllocate, "malloc"), "malloc");
        EXPECT_DEATH(Guard::check(Guard::kWait, "wait"), "wait");
    }
    EXPECT_DEATH(Guard::check(Guard::kTryLock, "trylock"), "trylock");
}

TEST(AudioThreadGuardTest, CheckLetsTheLibraryDoAnything)
{
    Guard::check(Guard::kAllocate, "malloc");
    const Guard block(Guard::kInBlock);
    const Guard library(Guard::kElsewhere);
    Guard::check(Guard::kAllocate, "malloc");
    Guard::check(Guard::kLock, "lock");
}

} // namespace
