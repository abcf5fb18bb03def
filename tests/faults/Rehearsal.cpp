#include "tests/faults/Rehearsal.h"

#include "tests/faults/SystemFaults.h"

#include <cctype>
#include <cstdlib>

namespace faults {
namespace {

bool isAboutAMiddlePart(const std::string& text)
{
    static const bool everywhere = std::getenv("FAULTS_AT_EVERY_PART") != nullptr;
    const size_t at = text.find('(');
    if (everywhere || at == std::string::npos)
        return false;
    const size_t begin = at + 1;
    size_t end = begin;
    while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end])))
        ++end;
    if (end - begin < 8)
        return false;
    const int part = std::atoi(text.substr(end - 3, 3).c_str());
    return part >= 1 && part <= 14;
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
        isRepeated = isAboutAMiddlePart(text);
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
