#include "tests/faults/Rehearsal.h"

#include "tests/faults/SystemFaults.h"

#include <cstdlib>

namespace faults {
namespace {

constexpr unsigned long kLastOfPart16 = 37057015;

/** A parameter ID has eight digits or more. The last three are the part's index. */
bool isAboutARepeatedParameter(const std::string& text)
{
    static const bool everywhere = std::getenv("FAULTS_AT_EVERY_PART") != nullptr;
    const size_t at = text.find('(');
    if (everywhere || at == std::string::npos)
        return false;
    const unsigned long id = std::strtoul(text.c_str() + at + 1, nullptr, 10);
    return id >= 10000000 && id % 1000 != 0 && id != kLastOfPart16;
}

} // namespace

Rehearsal::Rehearsal(const MakeScenario& make)
{
    const auto scenario = make();
    scenario->setUp();
    auto& library = scenario->world.library;
    const auto before = library.onCall;
    library.onCall = [&](const std::string& text) {
        if (before)
            before(text);
        allocations.resize(SystemFaults::memoryCalls(), isRepeated);
        isRepeated = isAboutARepeatedParameter(text);
        libraryCalls.push_back(isRepeated);
    };
    watchAnswers(scenario->world);
    SystemFaults::failMemory(0);
    scenario->act();
    SystemFaults::clear();
    for (const Kind kind : allKinds())
        if (Fault(kind).isNonsense())
            answers[kind] = answersOf(scenario->world, kind);
    library.onCall = before;
    scenario->tearDown();
    scenario->expectEnded(Fault());
}

bool Rehearsal::isIdle(Kind kind, size_t call) const
{
    if (isRepetition(kind, call))
        return true;
    const auto known = answers.find(kind);
    return known != answers.end() && call <= known->second.size() && !known->second[call - 1];
}

bool Rehearsal::isRepetition(Kind kind, size_t call) const
{
    if (kind >= Kind::kLibraryAnswers && kind <= Kind::kLibraryEndlessText)
        return call <= libraryCalls.size() && libraryCalls[call - 1];
    const bool isMemory = kind == Kind::kNoMemory || kind == Kind::kNoMoreMemory;
    return isMemory && call <= allocations.size() && allocations[call - 1];
}

} // namespace faults
