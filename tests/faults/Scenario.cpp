#include "tests/faults/Scenario.h"

#include "tests/doubles/NonsenseText.h"
#include "tests/doubles/Sanitized.h"
#include "tests/faults/Rehearsal.h"
#include "tests/faults/SystemFaults.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <unistd.h>

namespace faults {
namespace {

using testing::IsEmpty;

constexpr unsigned kHangSeconds = 60;
constexpr int kMaxBadRuns = 3;
constexpr size_t kLongestText = 200;

/** By kind: the faults that were tried in the scenario under way. */
std::map<std::string, int> faultsOfScenario;

/** Tells which fault ended the program, or made it hang. */
char underWay[200];

void tellAndEnd(int signal)
{
    const auto ignored = write(STDERR_FILENO, underWay, std::strlen(underWay));
    static_cast<void>(ignored);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void watch(const char* name, const Fault& fault)
{
    std::snprintf(underWay, sizeof(underWay), "\nduring %s: %s, call %zu\n", name,
                  kindName(fault.kind), fault.call);
    static const bool installed = [] {
        std::signal(SIGABRT, tellAndEnd);
        std::signal(SIGALRM, tellAndEnd);
#ifndef VSTK2X_SANITIZED // which tells more
        std::signal(SIGSEGV, tellAndEnd);
#endif
        return true;
    }();
    static_cast<void>(installed);
    alarm(kHangSeconds);
}

/** What only the host could end, and did not. */
void expectBalanced(World& world, const Fault& fault)
{
    auto left = world.host.ledger();
    const auto mayRemain = [&](const std::string& beginning) {
        left.erase(std::remove_if(left.begin(), left.end(),
                                  [&](const std::string& line) {
                                      return line.compare(0, beginning.size(), beginning) == 0;
                                  }),
                   left.end());
    };
    if (fault.hit("destroyComponent"))
        mayRemain("component(");
    if (fault.hit("unregisterTimer"))
        mayRemain("timers: ");
    // Without the update handler a dependent cannot be taken back.
    if (fault.hit("IHostClasses") || fault.hit("IUpdateHandler") || fault.hit("removeDependent"))
        mayRemain("dependents of ");
    EXPECT_THAT(left, IsEmpty());
    auto complaints = world.library.complaints();
    if (fault.hit("removeObserver"))
        complaints.clear(); // the library kept one that it was asked to let go
    EXPECT_THAT(complaints, IsEmpty());
}

size_t openFiles()
{
    using Iterator = std::filesystem::directory_iterator;
    return static_cast<size_t>(std::distance(Iterator("/proc/self/fd"), Iterator()));
}

/** Before anybody counts objects. */
void makeTextsOnce()
{
    doubles::nonsenseText(doubles::Nonsense::kEmptyText);
}

/** Hundreds of folders are made and removed, for which a disk takes its time. */
void keepFilesInMemory()
{
    constexpr auto kFolder = "/dev/shm";
    if (access(kFolder, W_OK) == 0)
        setenv("TMPDIR", kFolder, 0);
}

int failures()
{
    return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
}

void runScenario(Scenario& scenario, Fault& fault)
{
    World& world = scenario.world;
    scenario.setUp();
    arm(world, fault);
    scenario.act();
    disarm(world, fault);
    SCOPED_TRACE(fault.text);
    if (fault.happened && fault.isNonsense())
        scenario.expectBelieved(fault);
    else if (fault.happened)
        scenario.expectStated(fault);
    scenario.act();
    scenario.expectDone();
    scenario.tearDown();
    expectBalanced(world, fault);
    scenario.expectEnded(fault);
    world.host.runLoop.forgetTimers();
    world.host.updates.forgetDependents();
}

/** The same, and nothing is left of it. @return whether there were so many calls */
bool run(const char* name, const MakeScenario& make, Fault fault)
{
    SCOPED_TRACE(std::string(kindName(fault.kind)) + " at call " + std::to_string(fault.call));
    watch(name, fault);
    const int failuresBefore = failures();
    // So that their memory is not taken for the plug-in's.
    fault.text.reserve(kLongestText);
    fault.step.reserve(kLongestText);
    const long objects = SystemFaults::liveObjects();
    const size_t files = openFiles();
    runScenario(*make(), fault);
    const long left = SystemFaults::liveObjects() - objects;
    alarm(0);
    if (fault.happened)
        ++faultsOfScenario.at(kindName(fault.kind));
    if (failures() > failuresBefore)
        return fault.reached; // the report of a failure takes memory too
    EXPECT_EQ(openFiles(), files) << fault.text;
    // What the first run leaves is made once. The SDK's timer is nobody's once its host refused it
    // with an exception or did not take it back.
    if (fault.happened && !fault.hit("egisterTimer(")) {
        EXPECT_EQ(left, 0) << "objects left in memory: " << fault.text;
    }
    // What is kept for a timer that the host did not take out goes when the next one stops.
    if (fault.hit("unregisterTimer"))
        run(name, make, Fault());
    return fault.reached;
}

} // namespace
} // namespace faults

/** For the leak sanitizer: the SDK drops the timer that a host's run loop threw at. */
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions()
{
    return "leak:createLinuxTimer";
}

namespace faults {

void injectFaults(const char* name, const MakeScenario& make, const std::vector<Kind>& kinds)
{
    makeTextsOnce();
    keepFilesInMemory();
    for (const Kind kind : kinds)
        faultsOfScenario[kindName(kind)] = 0; // so that counting takes no memory
    run(name, make, Fault());
    run(name, make, Fault());
    const Rehearsal rehearsal(make);
    int badRuns = 0;
    for (const Kind kind : kinds) {
        bool reached = true;
        for (size_t call = 1; reached && badRuns < kMaxBadRuns; ++call) {
            if (rehearsal.isIdle(kind, call))
                continue;
            const int before = failures();
            reached = run(name, make, Fault(kind, call));
            badRuns += failures() > before ? 1 : 0;
        }
    }
    // For scripts/figures, which adds up what follows the last colon.
    for (const auto& [kind, count] : faultsOfScenario)
        testing::Test::RecordProperty(std::string(name) + ": " + kind, count);
    faultsOfScenario.clear();
}

} // namespace faults
