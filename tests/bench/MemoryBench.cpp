// The memory of an instance, whole and by its parts.
#include "tests/bench/OtherProgram.h"
#include "tests/bench/Table.h"

namespace bench {

namespace {

/** Without the allocator's cache of freed pieces, which it counts as used. */
constexpr auto kCommand = "GLIBC_TUNABLES=glibc.malloc.tcache_count=0 '" MEMORY_PROGRAM "'";

void memory(benchmark::State& state, const char* part)
{
    const auto bytes = runOther(kCommand);
    const auto found = bytes.find(part);
    const auto floor = bytes.find("array of texts");
    if (found == bytes.end() || floor == bytes.end())
        return fail(state, "the program that measures memory failed");
    reportOnce(state, found->second, floor->second);
}

void addPart(const char* what, const char* part, double aim)
{
    addLine({what, "29,000 std::string in an array", Unit::bytes, aim, true},
            [part](benchmark::State& state) { memory(state, part); });
}

} // namespace

void addMemoryLines()
{
    addPart("memory of an instance", "whole", 1.5);
    addPart("  the values' texts", "value texts", 0);
    addPart("  the parameters without them", "parameters", 0);
    addPart("  controller object", "controller", 0);
    addPart("  processor with its buses", "processor", 0);
    addPart("  lists, maps, timer, connection", "lists", 0);
}

} // namespace bench
