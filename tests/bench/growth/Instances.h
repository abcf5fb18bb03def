// Instances: many of the plug-in's in one host.
#pragma once

#include "tests/bench/LinkedInstance.h"

#include <malloc.h>
#include <memory>
#include <vector>

namespace bench::growth {

struct Instances {
    /** @param host outlives this object */
    Instances(BenchHost& host, int count)
    {
        all.reserve(static_cast<size_t>(count));
        for (int number = 0; number < count; ++number)
            all.push_back(std::make_unique<LinkedInstance>(host));
    }

    std::vector<std::unique_ptr<LinkedInstance>> all;
};

/** Sets up what the first instance in a process sets up for all of them, and gives the rest of its
    memory back. */
inline void warmUp(BenchHost& host)
{
    {
        const LinkedInstance first(host);
    }
    malloc_trim(0);
}

} // namespace bench::growth
