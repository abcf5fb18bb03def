#include "tests/faults/FaultKinds.h"

#include "tests/faults/HostBlock.h"
#include "tests/faults/SystemFaults.h"
#include "tests/faults/World.h"

#include <algorithm>

namespace faults {
namespace {

using doubles::CallScript;
using doubles::Nonsense;

enum class Where { kHost, kLibrary, kStream, kMemory, kFiles };
enum class How { kAnswers, kThrows, kTells, kOnce, kFromThenOn };

struct Row {
    Kind kind;
    const char* name;
    Where where;
    How how;
    Nonsense nonsense;
};

constexpr auto kNone = Nonsense::kWrong; // not used: the kind is no nonsense

constexpr Row kRows[] = {
    {Kind::kHostAnswers, "host answers", Where::kHost, How::kAnswers, kNone},
    {Kind::kHostThrows, "host exception", Where::kHost, How::kThrows, kNone},
    {Kind::kHostNonsense, "host nonsense", Where::kHost, How::kTells, Nonsense::kWrong},
    {Kind::kHostHugeNumber, "host huge number", Where::kHost, How::kTells, Nonsense::kHuge},
    {Kind::kHostEmptyText, "host empty text", Where::kHost, How::kTells, Nonsense::kEmptyText},
    {Kind::kHostBrokenText, "host broken text", Where::kHost, How::kTells, Nonsense::kBrokenText},
    {Kind::kHostEndlessText, "host endless text", Where::kHost, How::kTells,
     Nonsense::kEndlessText},
    {Kind::kLibraryAnswers, "library answers", Where::kLibrary, How::kAnswers, kNone},
    {Kind::kLibraryThrows, "library exception", Where::kLibrary, How::kThrows, kNone},
    {Kind::kLibraryNonsense, "library nonsense", Where::kLibrary, How::kTells, Nonsense::kWrong},
    {Kind::kLibraryHugeNumber, "library huge number", Where::kLibrary, How::kTells,
     Nonsense::kHuge},
    {Kind::kLibraryEmptyText, "library empty text", Where::kLibrary, How::kTells,
     Nonsense::kEmptyText},
    {Kind::kLibraryBrokenText, "library broken text", Where::kLibrary, How::kTells,
     Nonsense::kBrokenText},
    {Kind::kLibraryEndlessText, "library endless text", Where::kLibrary, How::kTells,
     Nonsense::kEndlessText},
    {Kind::kShortTransfer, "short transfer", Where::kStream, How::kOnce, kNone},
    {Kind::kEmptyTransfer, "empty transfer", Where::kStream, How::kOnce, kNone},
    {Kind::kNoMemory, "no memory", Where::kMemory, How::kOnce, kNone},
    {Kind::kNoMoreMemory, "no more memory", Where::kMemory, How::kFromThenOn, kNone},
    {Kind::kFileCall, "file call", Where::kFiles, How::kOnce, kNone},
    {Kind::kDiskFull, "disk full", Where::kFiles, How::kFromThenOn, kNone},
};

const Row& rowOf(Kind kind)
{
    return *std::find_if(std::begin(kRows), std::end(kRows),
                         [kind](const Row& row) { return row.kind == kind; });
}

void arm(CallScript& script, const Row& row, size_t call)
{
    if (row.how == How::kThrows)
        script.throwAtCall(call);
    else if (row.how == How::kTells)
        script.talkNonsenseAtCall(call, row.nonsense);
    else
        script.failAtCall(call);
}

void disarm(CallScript& script, const Row& row, Fault& fault)
{
    fault.text = script.faultyText();
    fault.reached = script.callCount() >= fault.call;
    fault.happened = fault.reached && (row.how != How::kTells || script.nonsenseTold());
}

template <typename Wanted>
std::vector<Kind> kindsAt(Wanted&& wanted)
{
    std::vector<Kind> result;
    for (const auto& row : kRows)
        if (wanted(row.where))
            result.push_back(row.kind);
    return result;
}

} // namespace

const std::vector<Kind>& allKinds()
{
    static const auto kinds = kindsAt([](Where) { return true; });
    return kinds;
}

const std::vector<Kind>& hostKinds()
{
    static const auto kinds = kindsAt([](Where where) { return where == Where::kHost; });
    return kinds;
}

const std::vector<Kind>& libraryKinds()
{
    static const auto kinds = kindsAt([](Where where) { return where == Where::kLibrary; });
    return kinds;
}

const char* kindName(Kind kind)
{
    return rowOf(kind).name;
}

bool Fault::isNonsense() const
{
    return rowOf(kind).how == How::kTells;
}

bool Fault::isHostFailure() const
{
    return kind == Kind::kHostAnswers || kind == Kind::kHostThrows;
}

bool Fault::isLibraryFailure() const
{
    return kind == Kind::kLibraryAnswers || kind == Kind::kLibraryThrows;
}

bool Fault::isOutOfMemory() const
{
    return rowOf(kind).where == Where::kMemory;
}

void arm(World& world, const Fault& fault)
{
    const Row& row = rowOf(fault.kind);
    world.failedStep.clear();
    world.host.failAtCall(0);
    world.library.failAtCall(0);
    HostStream::transfers = {};
    if (fault.call == 0)
        return;
    switch (row.where) {
    case Where::kHost:
        return arm(world.host, row, fault.call);
    case Where::kLibrary:
        return arm(world.library, row, fault.call);
    case Where::kStream:
        HostStream::transfers.faulty = fault.call;
        HostStream::transfers.movesNothing = row.kind == Kind::kEmptyTransfer;
        return;
    case Where::kMemory:
        return SystemFaults::failMemory(fault.call, row.how == How::kFromThenOn);
    case Where::kFiles:
        return SystemFaults::failFiles(fault.call, row.how == How::kFromThenOn);
    }
}

void disarm(World& world, Fault& fault)
{
    SystemFaults::clear();
    fault.step = world.failedStep;
    const Row& row = rowOf(fault.kind);
    switch (row.where) {
    case Where::kHost:
        disarm(world.host, row, fault);
        break;
    case Where::kLibrary:
        disarm(world.library, row, fault);
        break;
    case Where::kStream:
        fault.reached = fault.happened = HostStream::transfers.count >= fault.call;
        break;
    case Where::kMemory:
        fault.reached = fault.happened = SystemFaults::memoryCalls() >= fault.call;
        break;
    case Where::kFiles:
        fault.text = SystemFaults::failedFileCall();
        fault.reached = SystemFaults::fileCalls() >= fault.call;
        fault.happened = !fault.text.empty();
        break;
    }
    if (fault.call == 0)
        fault.reached = fault.happened = false;
    HostStream::transfers = {};
    world.host.clearFaults();
    world.library.clearFaults();
}

void watchAnswers(World& world)
{
    world.host.watchAnswers();
    world.library.watchAnswers();
}

std::vector<bool> answersOf(const World& world, Kind kind)
{
    const Row& row = rowOf(kind);
    const CallScript& script =
        row.where == Where::kHost ? static_cast<const CallScript&>(world.host) : world.library;
    std::vector<bool> result;
    for (size_t call = 1; call <= script.callCount(); ++call)
        result.push_back(script.hadAnswer(call, row.nonsense));
    return result;
}

} // namespace faults
