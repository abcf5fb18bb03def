// Parameter texts, to the user and back.
#include "tests/bench/LinkedInstance.h"
#include "tests/bench/Table.h"

#include <algorithm>
#include <map>

namespace bench {

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

constexpr int kCalls = 2'000;
constexpr ParamID kFirstId = 37012000; ///< the volumes: texts without an offset
constexpr int kParts = 16;
constexpr int kValues = 128;

ParamID idOf(int call)
{
    return kFirstId + static_cast<ParamID>(call % kParts);
}

/** Steps through all values with a stride that is prime to their number. */
int valueOf(int call)
{
    return call * 37 % kValues;
}

double normalizedOf(int value)
{
    return value / 127.0;
}

std::u16string textOf(int value)
{
    const std::string text = std::to_string(value);
    return {text.begin(), text.end()};
}

void toText(benchmark::State& state)
{
    LinkedScene scene;
    IEditController* controller = unknown<IEditController>(&scene.instance.controller());
    std::map<std::pair<ParamID, int>, std::u16string> texts;
    for (int part = 0; part < kParts; ++part)
        for (int value = 0; value < kValues; ++value)
            texts[{kFirstId + static_cast<ParamID>(part), value}] = textOf(value);
    String128 text = {};
    compare(state, kCalls, {[&] {
                for (int call = 0; call < kCalls; ++call)
                    controller->getParamStringByValue(idOf(call), normalizedOf(valueOf(call)),
                                                      text);
            }},
            {[&] {
                for (int call = 0; call < kCalls; ++call) {
                    const std::u16string& found = texts.find({idOf(call), valueOf(call)})->second;
                    std::copy_n(found.c_str(), found.size() + 1, text);
                    keep(text);
                }
            }});
}

void fromText(benchmark::State& state)
{
    LinkedScene scene;
    IEditController* controller = unknown<IEditController>(&scene.instance.controller());
    std::vector<std::u16string> typed;
    std::map<std::pair<ParamID, std::u16string>, double> values;
    for (int value = 0; value < kValues; ++value) {
        typed.push_back(textOf(value));
        for (int part = 0; part < kParts; ++part)
            values[{kFirstId + static_cast<ParamID>(part), typed.back()}] = normalizedOf(value);
    }
    double value = 0;
    compare(
        state, kCalls, {[&] {
            for (int call = 0; call < kCalls; ++call)
                controller->getParamValueByString(
                    idOf(call), typed[static_cast<size_t>(valueOf(call))].data(), value);
        }},
        {[&] {
            for (int call = 0; call < kCalls; ++call) {
                value =
                    values.find({idOf(call), typed[static_cast<size_t>(valueOf(call))]})->second;
                keep(value);
            }
        }});
}

} // namespace

void addTextLines()
{
    addLine({"parameter value to text", "std::map look-up and copy", Unit::seconds, 1.5}, toText);
    addLine({"parameter text to value", "std::map look-up and copy", Unit::seconds, 1.5}, fromText);
}

} // namespace bench
