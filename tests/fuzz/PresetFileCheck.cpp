#include "tests/fuzz/PresetFileCheck.h"

#include "tests/fuzz/FuzzInput.h"

namespace fuzz {

namespace {

constexpr size_t kHeaderSize = 48;

template <class Number>
Number numberAt(const std::string& file, size_t offset)
{
    FUZZ_CHECK(offset + sizeof(Number) <= file.size());
    Number number{};
    std::memcpy(&number, file.data() + offset, sizeof(number));
    return number;
}

struct Chunk {
    std::string id;
    size_t offset;
    size_t size;
};

Chunk entryAt(const std::string& file, size_t offset)
{
    FUZZ_CHECK(offset + 20 <= file.size());
    return {file.substr(offset, 4), static_cast<size_t>(numberAt<int64_t>(file, offset + 4)),
            static_cast<size_t>(numberAt<int64_t>(file, offset + 12))};
}

/** No value of ours holds anything that would end its attribute. */
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

std::string integerBytes(int32_t value)
{
    std::string bytes(sizeof(value), '\0');
    std::memcpy(bytes.data(), &value, sizeof(value));
    return bytes;
}

void checkPresetFile(const std::string& file, const std::string& controllerState)
{
    FUZZ_CHECK(file.compare(0, 4, "VST3") == 0 && numberAt<int32_t>(file, 4) == 1);
    FUZZ_CHECK(file.substr(8, 32) == "13EEE3484D664261B90352CE35DD18B4");
    const auto list = static_cast<size_t>(numberAt<int64_t>(file, 40));
    FUZZ_CHECK(list >= kHeaderSize && list + 8 + 3 * 20 == file.size());
    FUZZ_CHECK(file.compare(list, 4, "List") == 0 && numberAt<int32_t>(file, list + 4) == 3);

    const Chunk component = entryAt(file, list + 8);
    const Chunk controller = entryAt(file, list + 28);
    const Chunk info = entryAt(file, list + 48);
    FUZZ_CHECK(component.id == "Comp" && component.offset == kHeaderSize && component.size == 0);
    FUZZ_CHECK(controller.id == "Cont" && controller.offset == kHeaderSize);
    FUZZ_CHECK(controller.size == controllerState.size());
    FUZZ_CHECK(file.compare(kHeaderSize, controller.size, controllerState) == 0);
    FUZZ_CHECK(info.id == "Info" && info.offset == kHeaderSize + controller.size);
    FUZZ_CHECK(info.offset + info.size == list);
    checkAttributes(file.substr(info.offset, info.size));
}

} // namespace fuzz
