// Texts that a host has parsed, and values that it has shown, with any range and any texts of the
// library. An input is
//   which parser, offset, range, value, shown value, the library's text, the host's text
#include "controller/EditorParameter.h"
#include "controller/ParameterText.h"
#include "tests/doubles/ScriptedLibrary.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/LimitedMemory.h"
#include "tests/fuzz/TextModel.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <memory>
#include <optional>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

constexpr unsigned kId = 37012000;

/** A text in memory that ends where the text ends, so that reading on is seen. */
std::unique_ptr<char16[]> exactCopy(const std::u16string& text)
{
    auto copy = std::make_unique<char16[]>(text.size() + 1);
    std::copy(text.begin(), text.end(), copy.get());
    copy[text.size()] = 0;
    return copy;
}

bool isDigitOrAbove(char byte)
{
    return static_cast<unsigned char>(byte) >= 48 && static_cast<unsigned char>(byte) < 128;
}

bool allDigitsOrAbove(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), isDigitOrAbove);
}

/** The decimal digits at the start, behind a sign; int's nearer end where there are too many. */
int64 numberAtStart(const std::string& text)
{
    const bool negative = text[0] == '-';
    int64 number = 0;
    for (size_t i = text[0] == '-' || text[0] == '+' ? 1 : 0; i < text.size(); ++i) {
        if (text[i] < '0' || text[i] > '9')
            break;
        number = std::min<int64>(number * 10 + (text[i] - '0'), int64(1) << 40);
    }
    return std::clamp<int64>(negative ? -number : number, std::numeric_limits<int>::min(),
                             std::numeric_limits<int>::max());
}

std::optional<int64> plusMinus(const std::string& text)
{
    if (text.empty())
        return std::nullopt;
    const bool sign = text[0] == '+' || text[0] == '-';
    if (!allDigitsOrAbove(text.substr(sign ? 1 : 0)))
        return std::nullopt;
    return numberAtStart(text);
}

std::optional<int64> pan(const std::string& text)
{
    if (text == "C" || text == "c")
        return 0;
    if (text.size() < 2 || !allDigitsOrAbove(text.substr(1)))
        return std::nullopt;
    const int64 number = numberAtStart(text.substr(1));
    const char side = text[0];
    if (number == 0)
        return std::nullopt;
    if (side == 'L' || side == 'l')
        return -number;
    if (side == 'R' || side == 'r')
        return number;
    return std::nullopt;
}

/** A parser alone gives what the model gives, and otherwise leaves a value alone. */
void checkParser(TextParser parser, const std::u16string& text, const std::optional<int64>& model)
{
    const auto copy = exactCopy(text);
    int value = 4711;
    const int result = parser(copy.get(), value);
    FUZZ_CHECK((result == 0) == model.has_value());
    FUZZ_CHECK(value == model.value_or(4711));
}

void checkIsNumber(const std::string& text)
{
    const auto upToZero = text.substr(0, text.find('\0'));
    FUZZ_CHECK(isNumber(text.c_str()) == (!upToZero.empty() && allDigitsOrAbove(upToZero) ? 0 : 1));
}

double normalizedOf(int64 value, int64 minimum, int64 maximum)
{
    return maximum == minimum
               ? 0.0
               : static_cast<double>(value - minimum) / static_cast<double>(maximum - minimum);
}

void checkFromString(const EditorParameter& parameter, const std::u16string& text,
                     const std::optional<int64>& parsed, int64 offset, int64 minimum, int64 maximum)
{
    const auto copy = exactCopy(text);
    double normalized = -7;
    const bool understood = parameter.fromString(copy.get(), normalized);
    const int64 value = parsed.value_or(0) + offset;
    FUZZ_CHECK(understood == (parsed && value >= minimum && value <= maximum));
    FUZZ_CHECK(normalized == (understood ? normalizedOf(value, minimum, maximum) : -7));
    FUZZ_CHECK(!understood || (normalized >= 0 && normalized <= 1));
}

/** What is shown always ends, within its 128 units and with whole characters. */
std::u16string shown(const EditorParameter& parameter, double normalized)
{
    const auto buffer = std::make_unique<char16[]>(128);
    std::fill_n(buffer.get(), 128, char16(0xFFFF));
    parameter.toString(normalized, buffer.get());
    const auto* end = std::find(buffer.get(), buffer.get() + 128, char16(0));
    FUZZ_CHECK(end != buffer.get() + 128);
    std::u16string text(static_cast<const char16*>(buffer.get()), end);
    FUZZ_CHECK(text.empty() || (text.back() & 0xFC00) != 0xD800);
    return text;
}

/** As much of a text as 127 units hold. */
std::u16string wholeCharacters(std::u16string text)
{
    text.resize(std::min<size_t>(text.size(), 127));
    if (!text.empty() && (text.back() & 0xFC00) == 0xD800)
        text.pop_back();
    return text;
}

/** Truncated towards zero; what no 32-bit integer can hold is the nearest that can, or 0. */
int64 editorValueOf(double normalized, int64 minimum, int64 maximum)
{
    const double value =
        static_cast<double>(minimum) + (static_cast<double>(maximum - minimum) * normalized + 0.5);
    if (std::isnan(value))
        return 0;
    return static_cast<int64>(std::clamp<double>(value, std::numeric_limits<int32>::min(),
                                                 std::numeric_limits<int32>::max()));
}

void checkValueTexts(EditorParameter& parameter, double normalized, const std::string& valueText,
                     int64 minimum, int64 maximum)
{
    parameter.setHasValueTexts(true);
    const auto text = shown(parameter, normalized);
    const int64 value = editorValueOf(normalized, minimum, maximum);
    if (maximum <= minimum || value < minimum || value > maximum)
        FUZZ_CHECK(text.empty());
    else
        FUZZ_CHECK(text == wholeCharacters(fuzz::utf16Of(std::to_string(value) + valueText)));
}

void checkNumber(EditorParameter& parameter, double normalized)
{
    parameter.setHasValueTexts(false);
    char number[512];
    std::snprintf(number, sizeof(number), "%.4f", normalized);
    FUZZ_CHECK(fuzz::asciiOf(shown(parameter, normalized)) == std::string(number).substr(0, 127));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const fuzz::LimitedMemory limited;
    fuzz::FuzzInput input(data, size);
    const size_t parserKind = input.below(3);
    const auto offset = input.number<int32>();
    const auto minimum = input.number<int32>();
    // A wider range would only make the library name more values.
    const int64 span = input.number<int16_t>() % 300;
    const auto maximum = static_cast<int32>(std::clamp<int64>(
        minimum + span, std::numeric_limits<int32>::min(), std::numeric_limits<int32>::max()));
    const auto value = input.number<int32>();
    const auto normalized = input.number<double>();
    const auto valueText = input.bytes(200);
    const auto text = input.units(255);

    doubles::Trace trace;
    doubles::ScriptedLibrary library(trace);
    library.setParameter(kId, {value, minimum, maximum, 0, {}});
    library.valueText = [&](uint32, int32 shownValue) {
        return std::to_string(shownValue) + valueText;
    };

    EditorParameter parameter(&library, ParameterInfo::kCanAutomate, kId, 2, 0, valueText.c_str());
    const auto bytes = fuzz::utf8Of(text).substr(0, 255);
    const auto asPlusMinus = plusMinus(bytes);
    const auto asPan = pan(bytes);
    checkParser(parsePlusMinusValue, text, asPlusMinus);
    checkParser(parseLRPanValue, text, asPan);
    checkIsNumber(bytes);
    checkIsNumber(valueText);

    TextParser parsers[] = {nullptr, parsePlusMinusValue, parseLRPanValue};
    const std::optional<int64> parsed[] = {std::nullopt, asPlusMinus, asPan};
    parameter.setTextParser(parsers[parserKind], offset);
    checkFromString(parameter, text, parsed[parserKind], offset, minimum, maximum);

    FUZZ_CHECK(parameter.getEditorParameter() == value);
    FUZZ_CHECK(parameter.convertToVSTParameter(value) == normalizedOf(value, minimum, maximum));
    checkValueTexts(parameter, normalized, valueText, minimum, maximum);
    // The text of every value that is in range leads back to it.
    if (maximum > minimum)
        checkValueTexts(parameter, normalizedOf(maximum, minimum, maximum), valueText, minimum,
                        maximum);
    checkNumber(parameter, normalized);
    return 0;
}
