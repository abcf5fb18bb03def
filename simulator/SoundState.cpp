#include "simulator/SoundState.h"

#include <cstring>
#include <sstream>

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {

constexpr char magic[] = {'R', 'S', 'I', 'M'};
constexpr int32 version = 1;
constexpr const char* textHeader = "simulator";

class Writer {
public:
    void integer(int32 value)
    {
        const auto bits = static_cast<uint32>(value);
        for (unsigned shift = 0; shift < 32; shift += 8)
            bytes.push_back(static_cast<char>((bits >> shift) & 0xFF));
    }
    void count(size_t value) { integer(static_cast<int32>(value)); }
    void raw(const char* data, size_t size) { bytes.insert(bytes.end(), data, data + size); }

    std::vector<char> bytes;
};

/** After a read beyond the end all further reads fail. */
class Reader {
public:
    Reader(const void* start, int32 size)
    : data(static_cast<const char*>(start))
    , left(start && size > 0 ? static_cast<size_t>(size) : 0)
    {
    }

    int32 integer()
    {
        uint32 bits = 0;
        const char* bytes = raw(4);
        for (unsigned index = 0; bytes && index < 4; ++index)
            bits |= static_cast<uint32>(static_cast<unsigned char>(bytes[index])) << (8 * index);
        return static_cast<int32>(bits);
    }

    const char* raw(size_t size)
    {
        if (failed || size > left) {
            failed = true;
            return nullptr;
        }
        const char* result = data;
        data += size;
        left -= size;
        return result;
    }

    bool ok() const { return !failed; }
    bool finished() const { return !failed && left == 0; }

private:
    const char* data;
    size_t left;
    bool failed = false;
};

bool readUserBank(Reader& reader, SoundState& state)
{
    const int32 bank = reader.integer();
    const int32 number = reader.integer();
    const int32 size = reader.integer();
    const char* bytes = size > 0 ? reader.raw(static_cast<size_t>(size)) : nullptr;
    if (!bytes)
        return false;
    state.userBanks[{bank, number}].assign(bytes, bytes + size);
    return true;
}

std::string toHexadecimal(const std::vector<char>& bytes)
{
    static constexpr const char* digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        text += digits[(static_cast<unsigned char>(byte) >> 4) & 0xF];
        text += digits[static_cast<unsigned char>(byte) & 0xF];
    }
    return text;
}

int digitValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    return digit >= 'a' && digit <= 'f' ? digit - 'a' + 10 : -1;
}

bool fromHexadecimal(const std::string& text, std::vector<char>& bytes)
{
    if (text.empty() || text.size() % 2 != 0)
        return false;
    for (size_t index = 0; index < text.size(); index += 2) {
        const int high = digitValue(text[index]);
        const int low = digitValue(text[index + 1]);
        if (high < 0 || low < 0)
            return false;
        bytes.push_back(static_cast<char>(high * 16 + low));
    }
    return true;
}

bool readRecord(const std::string& line, SoundState& state)
{
    std::istringstream words(line);
    std::string kind;
    words >> kind;
    if (kind == "voice") {
        words >> state.bank >> state.number;
    } else if (kind == "parameter") {
        std::pair<uint32, int32> parameter;
        words >> parameter.first >> parameter.second;
        state.parameters.push_back(parameter);
    } else if (kind == "userbank") {
        std::pair<int32, int32> slot;
        std::string bytes;
        words >> slot.first >> slot.second >> bytes;
        if (!fromHexadecimal(bytes, state.userBanks[slot]))
            return false;
    } else {
        return false;
    }
    return !words.fail() && (words >> std::ws).eof();
}

} // namespace

std::vector<char> SoundState::toBytes() const
{
    Writer writer;
    writer.raw(magic, sizeof(magic));
    writer.integer(version);
    writer.integer(bank);
    writer.integer(number);
    writer.count(parameters.size());
    for (const auto& [id, value] : parameters) {
        writer.integer(static_cast<int32>(id));
        writer.integer(value);
    }
    writer.count(userBanks.size());
    for (const auto& [slot, data] : userBanks) {
        writer.integer(slot.first);
        writer.integer(slot.second);
        writer.count(data.size());
        writer.raw(data.data(), data.size());
    }
    return writer.bytes;
}

bool SoundState::fromBytes(const void* data, int32 size, SoundState& state)
{
    Reader reader(data, size);
    const char* start = reader.raw(sizeof(magic));
    if (!start || std::memcmp(start, magic, sizeof(magic)) != 0 || reader.integer() != version)
        return false;
    SoundState read;
    read.bank = reader.integer();
    read.number = reader.integer();
    // With a false count the loop ends at the end of the data, where reading fails.
    for (int32 left = reader.integer(); left > 0 && reader.ok(); --left) {
        const auto id = static_cast<uint32>(reader.integer());
        read.parameters.emplace_back(id, reader.integer());
    }
    for (int32 left = reader.integer(); left > 0; --left)
        if (!readUserBank(reader, read))
            return false;
    if (!reader.finished())
        return false;
    state = std::move(read);
    return true;
}

std::u16string SoundState::toText() const
{
    std::ostringstream text;
    text << textHeader << ' ' << version << '\n';
    text << "voice " << bank << ' ' << number << '\n';
    for (const auto& [id, value] : parameters)
        text << "parameter " << id << ' ' << value << '\n';
    for (const auto& [slot, data] : userBanks)
        text << "userbank " << slot.first << ' ' << slot.second << ' ' << toHexadecimal(data)
             << '\n';
    const auto narrow = text.str();
    return {narrow.begin(), narrow.end()};
}

bool SoundState::fromText(const char16* text, SoundState& state)
{
    if (!text)
        return false;
    std::string narrow;
    for (; *text != 0; ++text) {
        if (*text > 0x7F)
            return false;
        narrow += static_cast<char>(*text);
    }
    std::istringstream lines(narrow);
    std::string line;
    if (!std::getline(lines, line) || line != textHeader + (" " + std::to_string(version)))
        return false;
    SoundState read;
    while (std::getline(lines, line))
        if (!readRecord(line, read))
            return false;
    state = std::move(read);
    return true;
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
