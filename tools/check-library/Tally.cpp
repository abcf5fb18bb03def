#include "tools/check-library/Tally.h"

namespace Steinberg {
namespace Vst {
namespace checklibrary {

std::string Tally::text() const
{
    if (count < 2)
        return first;
    return first + " and " + std::to_string(count - 1) + (count == 2 ? " other" : " others");
}

void sayIf(Journal& journal, const Tally& tally, Verdict verdict, const char* check,
           const char* before, const char* behind)
{
    if (!tally)
        return;
    const auto* remedy = verdict == Verdict::bad ? kTellMaker : "";
    journal.say(
        {verdict, check, before + tally.text() + behind, remedy, {{"count", tally.size()}}});
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
