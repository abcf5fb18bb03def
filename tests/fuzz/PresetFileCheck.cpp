#include "tests/fuzz/PresetFileCheck.h"

#include "tests/doubles/PresetFileBytes.h"
#include "tests/fuzz/FuzzInput.h"

namespace fuzz {

namespace {

/** Eleven lines with an attribute each. No value contains a character that would end it. */
void checkAttributes(const std::string& xml)
{
    const std::string front = "<?xml version=\"1.0\" encoding=\"US-ASCII\"?>\n<MetaInfo>\n";
    FUZZ_CHECK(xml.compare(0, front.size(), front) == 0);
    size_t attributes = 0;
    size_t line = front.size();
    for (auto end = xml.find('\n', line); end != std::string::npos;
         line = end + 1, end = xml.find('\n', line)) {
        const auto text = xml.substr(line, end - line);
        FUZZ_CHECK(text.compare(0, 15, "\t<Attribute id=") == 0);
        FUZZ_CHECK(text.compare(text.size() - 2, 2, "/>") == 0);
        size_t quotes = 0;
        for (const char byte : text) {
            quotes += byte == '"' ? 1 : 0;
            FUZZ_CHECK(byte == '\t' || (byte >= ' ' && byte < 0x7F));
        }
        FUZZ_CHECK(quotes == 8 && text.find('<', 2) == std::string::npos);
        ++attributes;
    }
    FUZZ_CHECK(attributes == 11 && xml.substr(line) == "</MetaInfo>");
}

} // namespace

void checkPresetFile(const std::string& file, const std::string& controllerState)
{
    constexpr size_t kHeaderSize = 48;
    constexpr size_t kListSize = 8 + 3 * 20;
    const size_t front = kHeaderSize + controllerState.size();
    FUZZ_CHECK(file.size() > front + kListSize);
    const auto xml = file.substr(front, file.size() - front - kListSize);
    FUZZ_CHECK(file == doubles::presetFileBytes(controllerState, xml));
    checkAttributes(xml);
}

} // namespace fuzz
