// Instances: many of the plug-in's in one host.
#pragma once

#include "tests/bench/Instance.h"

#include <malloc.h>
#include <memory>
#include <vector>

namespace bench::growth {

struct Instances {
    /** @param host outlives this object */
    Instances(LeanHost& host, int count)
    {
        all.reserve(static_cast<size_t>(count));
        for (int number = 0; number < count; ++number)
            all.push_back(std::make_unique<Instance>(host));
    }

    std::vector<std::unique_ptr<Instance>> all;
};

/** Sets up what the first instance in a process sets up for all of them, and gives the rest of its
    memory back. */
inline void warmUp(LeanHost& host)
{
    {
        const Instance first(host);
    }
    malloc_trim(0);
}

} // namespace bench::growth
