// Creating a timer when memory runs out. macho/programs/MacsCodeTest.cpp tests how it ticks.
#include "platform/TimerPlatformFactory.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <utility>

namespace {

/** The calling thread's next operator new throws std::bad_alloc; those after it do not. */
thread_local bool failsNext = false;

} // namespace

// delete as well: a sanitizer reports memory that one operator took and another one freed.
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

/** VSTGUI creates timers in functions that must not throw. */
TEST(MacTimerFactory, CreateTimerReturnsNullWhenMemoryRunsOut)
{
    NobodyTicks listener;
    const auto factory = Steinberg::Vst::platform::makeTimerPlatformFactory();
    failsNext = true;
    EXPECT_EQ(factory->createTimer(&listener), nullptr);
    EXPECT_FALSE(failsNext) << "createTimer took no memory";
    EXPECT_NE(factory->createTimer(&listener), nullptr);
}

} // namespace
