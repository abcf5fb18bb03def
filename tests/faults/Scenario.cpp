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

/** How many faults of each kind happened in the running scenario. */
std::map<std::string, int> faultsOfScenario;

/** The running scenario and fault, to be printed when the program crashes or hangs. */
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
#ifndef VSTK2X_SANITIZED // a sanitizer's own report says more
        std::signal(SIGSEGV, tellAndEnd);
#endif
        return true;
    }();
    static_cast<void>(installed);
    alarm(kHangSeconds);
}

/** Nothing is left at the host or the library but what a failed call of theirs kept. */
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
    // Without the update handler the plug-in cannot remove a dependent.
    if (fault.hit("IHostClasses") || fault.hit("IUpdateHandler") || fault.hit("removeDependent"))
        mayRemain("dependents of ");
    EXPECT_THAT(left, IsEmpty());
    auto complaints = world.library.complaints();
    if (fault.hit("removeObserver"))
        complaints.clear(); // the library failed to remove an observer
    EXPECT_THAT(complaints, IsEmpty());
}

size_t openFiles()
{
    using Iterator = std::filesystem::directory_iterator;
    return static_cast<size_t>(std::distance(Iterator("/proc/self/fd"), Iterator()));
}

/** These texts are made once, so they must exist before objects are counted. */
void makeTextsOnce()
{
    doubles::nonsenseText(doubles::Nonsense::kEmptyText);
}

/** Hundreds of folders are made and removed, which is slow on a disk. */
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

/** Runs a new scenario, which must leave no object and no open file.
    @return whether there were as many calls as the fault's number */
bool run(const char* name, const MakeScenario& make, Fault fault)
{
    SCOPED_TRACE(std::string(kindName(fault.kind)) + " at call " + std::to_string(fault.call));
    watch(name, fault);
    const int failuresBefore = failures();
    // So that they allocate nothing while the plug-in's objects are counted.
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
        return fault.reached; // the report of the failure is memory that stays
    EXPECT_EQ(openFiles(), files) << fault.text;
    // A run without a fault is not checked, because the first one leaves what is made only once.
    // The SDK's timer leaks when the host throws at it or does not unregister it.
    if (fault.happened && !fault.hit("egisterTimer(")) {
        EXPECT_EQ(left, 0) << "objects left in memory: " << fault.text;
    }
    // What is kept of a timer that was not unregistered is deleted when the next timer stops.
    if (fault.hit("unregisterTimer"))
        run(name, make, Fault());
    return fault.reached;
}

} // namespace
} // namespace faults

/** For the leak sanitizer: the SDK leaks its timer when the host's run loop throws. */
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
        faultsOfScenario[kindName(kind)] = 0; // so that counting allocates nothing
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
