// LittleMemory: while it lives, the program has a gigabyte of address space, so that operator new
// fails for two. Not for builds with a sanitizer, which needs more than that itself.
#pragma once

#include <gtest/gtest.h>

#include <sys/resource.h>

namespace unit {

class LittleMemory {
public:
    LittleMemory()
    {
        EXPECT_EQ(getrlimit(RLIMIT_AS, &before), 0);
        rlimit tight = before;
        tight.rlim_cur = rlim_t(1) << 30;
        EXPECT_EQ(setrlimit(RLIMIT_AS, &tight), 0);
    }
    LittleMemory(const LittleMemory&) = delete;
    LittleMemory& operator=(const LittleMemory&) = delete;
    ~LittleMemory() { setrlimit(RLIMIT_AS, &before); }

private:
    rlimit before{};
};

} // namespace unit
