// The step that asks the library for what the plug-in mirrors as VST parameters.
#include "basics/CallGuard.h"
#include "tools/check-library/Life.h"
#include "tools/check-library/Steps.h"
#include "tools/check-library/Tally.h"
#include "tools/check-library/TextRules.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

/** The plug-in asks for the texts of at most so many values of one parameter. */
constexpr int64 kMostTexts = 1 << 20;

class ParameterCheck {
public:
    ParameterCheck(Journal& newJournal, bool isStrict, Life& newLife)
    : journal(newJournal)
    , strict(isStrict)
    , life(newLife)
    {
    }

    void ask(const MirroredParameter& parameter)
    {
        ++count;
        if (!life.observe(parameter))
            unwatched.add(parameter.title);
        auto& library = life.library();
        const auto askFor = [&](int32 (VstIEditorConnect::*operation)(uint32)) {
            return guarded<int32>(0, [&] { return (library.*operation)(parameter.id); });
        };
        const auto steps =
            parameter.asksForStepCount ? askFor(&VstIEditorConnect::getParameterStepCount) : 0;
        const auto maximum = askFor(&VstIEditorConnect::getParameterMax);
        const auto minimum = askFor(&VstIEditorConnect::getParameterMin);
        const auto value = askFor(&VstIEditorConnect::getParameterValue);
        life.plugIn().mirror(parameter.id, minimum, maximum, value);
        judge(parameter, minimum, maximum, value, steps);
        if (minimum < maximum && static_cast<int64>(maximum) - minimum < kMostTexts)
            askTexts(parameter, minimum, maximum);
    }

    void tell()
    {
        tellCounts();
        const auto serious = strict ? Verdict::bad : Verdict::remark;
        sayIf(journal, unwatched, Verdict::bad, "observers", "The library gives no observer for ",
              ": what is turned there does not reach the host.");
        if (rangeless.size() < count)
            sayIf(journal, rangeless, Verdict::remark, "ranges", "There is only one value for ",
                  ", which the host cannot move.");
        sayIf(journal, reversed, serious, "ranges", "The largest value is below the smallest for ",
              ": the host moves it the wrong way, without texts.");
        sayIf(journal, outside, serious, "ranges", "The value is outside the range for ", ".");
        sayIf(journal, endless, serious, "ranges",
              "There are more values than a host can show for ",
              ": making an instance takes long.");
        if (!strict)
            return;
        sayIf(journal, unstepped, Verdict::bad, "ranges",
              "The step count does not fit the range for ", ".");
        sayIf(journal, badTexts, Verdict::bad, "texts", "A value's text ", ".");
        sayIf(journal, empty, Verdict::remark, "texts", "There are values without a text for ",
              ": the host shows nothing there.");
    }

private:
    void judge(const MirroredParameter& parameter, int64 minimum, int64 maximum, int32 value,
               int32 steps)
    {
        if (minimum == maximum)
            rangeless.add(parameter.title);
        if (minimum > maximum)
            reversed.add(parameter.title);
        else if (value < minimum || value > maximum)
            outside.add(parameter.title);
        if (maximum - minimum >= kMostTexts)
            endless.add(parameter.title);
        if (steps < 0 || (minimum <= maximum && steps > maximum - minimum))
            unstepped.add(parameter.title);
    }

    void askTexts(const MirroredParameter& parameter, int64 minimum, int64 maximum)
    {
        bool isEmpty = false;
        for (int64 value = minimum; value <= maximum; ++value) {
            std::string text;
            guarded([&] {
                life.library().getParameterValueString(parameter.id, static_cast<int32>(value),
                                                       text);
            });
            ++texts;
            const auto fault = faultOf(text);
            if (!fault.empty() && parameter.hasValueTexts)
                badTexts.add(fault + ": value " + std::to_string(value) + " of " + parameter.title);
            isEmpty = isEmpty || text.empty();
        }
        if (isEmpty && parameter.hasValueTexts)
            empty.add(parameter.title);
    }

    void tellCounts()
    {
        const nlohmann::ordered_json facts = {
            {"parameters", count}, {"withRange", count - rangeless.size()}, {"texts", texts}};
        if (rangeless.size() == count)
            return journal.say(bad("parameters",
                                   "None of the " + std::to_string(count) +
                                       " parameters has more than one value: the host can automate "
                                       "nothing.",
                                   "Install the editor that belongs to this instrument and to this "
                                   "version of the plug-in.",
                                   facts));
        journal.say(good("parameters",
                         "It knows " + std::to_string(count - rangeless.size()) + " of " +
                             std::to_string(count) +
                             " parameters: 16 parts and the edit flag, with " +
                             std::to_string(texts) + " texts for their values.",
                         facts));
    }

    Journal& journal;
    const bool strict;
    Life& life;
    size_t count = 0;
    size_t texts = 0;
    Tally unwatched, rangeless, reversed, outside, endless, unstepped, badTexts, empty;
};

} // namespace

void askParameters(const Options& options, Journal& journal)
{
    Life life(options.library, journal);
    ParameterCheck check(journal, options.strict, life);
    for (const auto& parameter : mirroredParameters())
        check.ask(parameter);
    guarded([&] { life.library().parametersReady(); });
    life.tick(3);
    check.tell();
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
