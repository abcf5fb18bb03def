#include "controller/EditorParameter.h"

#include "basics/CallGuard.h"
#include "basics/Utf.h"
#include "editorlib/VstIEditorConnect.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <string>
#include <string_view>

namespace Steinberg {
namespace Vst {

using Base::Thread::FGuard;
using Base::Thread::FLock;

namespace {

/** More than any editor parameter has. Without the limit a library that claims a range of billions
    would block the host and use up its memory. Values beyond it show no text. */
constexpr int64 kMaxValueTexts = 1 << 20;

int32 cutToInt32(double value)
{
    constexpr double low = std::numeric_limits<int32>::min();
    constexpr double high = std::numeric_limits<int32>::max();
    // NaN fails every comparison; converting it to an integer would be undefined behaviour.
    if (!(value > low))
        return value <= low ? std::numeric_limits<int32>::min() : 0;
    return value < high ? static_cast<int32>(value) : std::numeric_limits<int32>::max();
}

} // namespace

EditorParameter::EditorParameter(VstIEditorConnect* editorConnection, int32 flags, ParamID id,
                                 UnitID unitId, int32 stepCount, const char* title,
                                 const EditorParameter* similar)
: editor(editorConnection)
, lock(std::make_unique<FLock>("ParameterFlag"))
{
    utf8ToString128(title ? title : "", info.title);
    info.id = id;
    info.flags = flags;
    info.unitId = unitId;
    info.stepCount = stepCount;
    if (editor) {
        maximum = guarded<int32>(0, [&] { return editor->getParameterMax(id); });
        minimum = guarded<int32>(0, [&] { return editor->getParameterMin(id); });
    }
    updateParemeterInfo();
    fetchValueTexts(similar);
}

EditorParameter::~EditorParameter() = default;

void EditorParameter::fetchValueTexts(const EditorParameter* similar)
{
    if (!editor || maximum <= minimum)
        return;
    const int64 count =
        std::min(static_cast<int64>(maximum) - static_cast<int64>(minimum) + 1, kMaxValueTexts);
    const IPtr<ValueTexts> own = owned(new ValueTexts); // untaken: new-throws
    own->reserve(static_cast<size_t>(count));
    std::string text;
    for (int64 index = 0; index < count; ++index) {
        const auto value = static_cast<int32>(minimum + index);
        text.clear();
        const bool isTold = guarded(false, [&] {
            editor->getParameterValueString(info.id, value, text);
            return true;
        });
        own->add(isTold ? text : std::string_view());
    }
    const ValueTexts* others = similar ? similar->getValueTexts() : nullptr;
    valueTexts = others && own->isSame(*others) ? others : own;
}

void EditorParameter::setTextParser(TextParser textParser, int32 offset)
{
    parser = textParser;
    parseOffset = offset;
}

int32 EditorParameter::askValue() const
{
    if (!editor)
        return editorValue;
    return guarded<int32>(editorValue, [this] { return editor->getParameterValue(info.id); });
}

void EditorParameter::updateParemeterInfo()
{
    showToHost(takeOverEditorValue());
}

double EditorParameter::takeOverEditorValue()
{
    const FGuard guard(*lock);
    editorValue = askValue();
    return convertToVSTParameter(editorValue);
}

void EditorParameter::showToHost(double normalized)
{
    info.defaultNormalizedValue = normalized;
    setNormalized(normalized);
}

double EditorParameter::convertToVSTParameter(int value) const
{
    if (maximum == minimum)
        return 0;
    return (static_cast<double>(value) - minimum) / (static_cast<double>(maximum) - minimum);
}

int32 EditorParameter::convertToEditorValue(double normalized) const
{
    const double span = static_cast<double>(maximum) - minimum;
    return cutToInt32(minimum + (span * normalized + 0.5));
}

void EditorParameter::toString(ParamValue normalized, String128 string) const
{
    if (hasValueTexts) {
        const int64 index = static_cast<int64>(convertToEditorValue(normalized)) - minimum;
        utf8ToString128(valueTexts ? valueTexts->at(index) : std::string_view(), string);
        return;
    }
    char number[128];
    std::snprintf(number, sizeof(number), "%.4f", normalized);
    utf8ToString128(number, string);
}

bool EditorParameter::fromString(const TChar* string, ParamValue& normalized) const
{
    int number = 0;
    if (!parser || !string || parser(string, number) != 0)
        return false;
    const int64 value = static_cast<int64>(number) + parseOffset;
    if (value < minimum || value > maximum)
        return false;
    normalized = convertToVSTParameter(static_cast<int>(value));
    return true;
}

int32 EditorParameter::getEditorParameter() const
{
    if (!lock) // untaken: made-with-object
        return 0;
    const FGuard guard(*lock);
    return editorValue;
}

void EditorParameter::setEditorParameter(int32 value)
{
    const FGuard guard(*lock);
    editorValue = value;
}

bool EditorParameter::changeEditorParameter(int32 value)
{
    const FGuard guard(*lock);
    if (editorValue == value)
        return false;
    editorValue = value;
    return true;
}

} // namespace Vst
} // namespace Steinberg
