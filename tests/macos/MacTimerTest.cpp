// What a timer is where memory ran out. How it ticks is tried with the Mac's machine code.
#include "platform/TimerPlatformFactory.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <utility>

namespace {

/** The calling thread's next operator new throws std::bad_alloc; those after it do not. */
thread_local bool failsNext = false;

} // namespace

// Both, since a sanitizer takes an object of one's operator in another's for a defect.
void* operator new(std::size_t size)
{
    void* memory = std::exchange(failsNext, false) ? nullptr : std::malloc(size);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

class NobodyTicks : public VSTGUI::IPlatformTimerCallback {
public:
    void fire() override {}
};

/** VSTGUI asks for timers where nothing may be thrown. */
TEST(MacTimerFactory, CreateTimerGivesNoneWhereMemoryRanOut)
{
    NobodyTicks listener;
    const auto factory = Steinberg::Vst::platform::makeTimerPlatformFactory();
    failsNext = true;
    EXPECT_EQ(factory->createTimer(&listener), nullptr);
    EXPECT_FALSE(failsNext) << "no memory was asked for";
    EXPECT_NE(factory->createTimer(&listener), nullptr);
}

} // namespace
