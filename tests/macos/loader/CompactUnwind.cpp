#include "tests/macos/loader/CompactUnwind.h"

#include "tests/macos/loader/OpcodeReader.h"

#include <initializer_list>
#include <iterator>
#include <map>

// The table's layout and its encodings are those of Apple's <mach-o/compact_unwind_encoding.h>; the
// frames are those of the DWARF standard, with the augmentations of the Linux Standard Base.
namespace macho {
namespace {

constexpr uint32_t kHasLanguageData = 0x40000000;
constexpr uint32_t kModeMask = 0x0F000000;
constexpr uint32_t kRegularPage = 2;
constexpr uint32_t kCompressedPage = 3;

/** The section's numbers, and the entries that they make. */
class UnwindInfo {
public:
    UnwindInfo(const uint8_t* section, size_t sectionSize)
    : bytes(section)
    , size(sectionSize)
    {
        if (word(0) != 1)
            throw LoadError("__unwind_info of an unknown version");
        readPages();
        finish();
    }

    std::vector<UnwindEntry> entries;

private:
    uint32_t word(size_t offset) const { return numberAt<uint32_t>(bytes, size, offset); }
    uint16_t half(size_t offset) const { return numberAt<uint16_t>(bytes, size, offset); }

    void readPages()
    {
        const uint32_t index = word(20);
        const uint32_t count = word(24);
        if (count == 0)
            throw LoadError("__unwind_info without an end");
        for (uint32_t page = 0; page + 1 < count; ++page)
            readPage(word(index + page * 12), word(index + page * 12 + 4));
        const uint32_t last = index + (count - 1) * 12;
        endOfCode = word(last);
        for (uint32_t at = word(index + 8); at < word(last + 8); at += 8)
            languageData[word(at)] = word(at + 4);
    }

    void readPage(uint32_t firstFunction, uint32_t page)
    {
        if (page == 0)
            return;
        const uint32_t kind = word(page);
        const uint32_t table = page + half(page + 4);
        const uint32_t count = half(page + 6);
        if (kind != kRegularPage && kind != kCompressedPage)
            throw LoadError("__unwind_info has a page of an unknown kind");
        for (uint32_t entry = 0; entry < count; ++entry) {
            if (kind == kRegularPage) {
                add(word(table + entry * 8), word(table + entry * 8 + 4));
                continue;
            }
            const uint32_t both = word(table + entry * 4);
            add(firstFunction + (both & 0xFFFFFF), encodingOf(page, both >> 24));
        }
    }

    /** The encodings that the whole image shares come first, then the page's own. */
    uint32_t encodingOf(uint32_t page, uint32_t number) const
    {
        const uint32_t shared = word(8);
        if (number < shared)
            return word(word(4) + number * 4);
        if (number - shared >= half(page + 10))
            throw LoadError("__unwind_info names an encoding that it does not have");
        return word(page + half(page + 8) + (number - shared) * 4);
    }

    uint32_t languageDataOf(uint32_t function) const
    {
        const auto found = languageData.find(function);
        if (found == languageData.end())
            throw LoadError("__unwind_info lacks the language data of a function");
        return found->second;
    }

    void add(uint32_t begin, uint32_t encoding) { entries.push_back({begin, 0, encoding, 0, 0}); }

    void finish()
    {
        for (size_t index = 0; index < entries.size(); ++index) {
            auto& entry = entries[index];
            entry.end = index + 1 < entries.size() ? entries[index + 1].begin : endOfCode;
            if (entry.end < entry.begin)
                throw LoadError("__unwind_info is not in order");
            if (entry.encoding & kHasLanguageData)
                entry.languageData = languageDataOf(entry.begin);
            const uint32_t personality = entry.encoding >> 28 & 3;
            if (personality > word(16))
                throw LoadError("__unwind_info names a personality that it does not have");
            if (personality > 0)
                entry.personality = word(word(12) + (personality - 1) * 4);
        }
    }

    const uint8_t* const bytes;
    const size_t size;
    uint32_t endOfCode = 0;
    std::map<uint32_t, uint32_t> languageData;
};

// DWARF's numbers of the registers.
#if defined(__x86_64__)
constexpr uint8_t kReturnAddress = 16;
constexpr uint8_t kStackPointer = 7;
constexpr uint8_t kFramePointer = 6;
#else
constexpr uint8_t kReturnAddress = 30;
constexpr uint8_t kStackPointer = 31;
constexpr uint8_t kFramePointer = 29;
#endif

class FrameWriter {
public:
    explicit FrameWriter(const uint8_t* mappedImage)
    : image(mappedImage)
    {
    }

    void add(const UnwindEntry& entry)
    {
        const auto personality = entry.personality ? pointerAt(entry.personality) : 0;
        const auto known = commonEntries.find(personality);
        const size_t common = known != commonEntries.end()
                                  ? known->second
                                  : commonEntries[personality] = addCommonEntry(personality);
        const size_t begin = output.size();
        put<uint32_t>(0);
        put(static_cast<uint32_t>(begin + 4 - common));
        put(reinterpret_cast<uint64_t>(image + entry.begin));
        put(uint64_t{entry.end} - entry.begin);
        number(personality ? 8 : 0);
        if (personality)
            put(entry.languageData ? reinterpret_cast<uint64_t>(image + entry.languageData) : 0);
        addRules(entry);
        close(begin);
    }

    std::vector<uint8_t> take()
    {
        put<uint32_t>(0);
        return std::move(output);
    }

private:
    uint64_t pointerAt(uint32_t offset) const
    {
        uint64_t pointer;
        std::memcpy(&pointer, image + offset, sizeof(pointer));
        return pointer;
    }

    template <typename Number>
    void put(Number value)
    {
        const auto* bytes = reinterpret_cast<const uint8_t*>(&value);
        output.insert(output.end(), bytes, bytes + sizeof(value));
    }

    void number(uint64_t value)
    {
        for (; value > 0x7F; value >>= 7)
            output.push_back(static_cast<uint8_t>(value | 0x80));
        output.push_back(static_cast<uint8_t>(value));
    }

    void close(size_t begin)
    {
        while ((output.size() - begin) % 8 != 0)
            output.push_back(0); // DW_CFA_nop
        const auto size = static_cast<uint32_t>(output.size() - begin - 4);
        std::memcpy(&output[begin], &size, sizeof(size));
    }

    size_t addCommonEntry(uint64_t personality)
    {
        const size_t begin = output.size();
        put<uint32_t>(0);
        put<uint32_t>(0);
        output.push_back(1);
        for (const char letter : std::string(personality ? "zPLR" : "zR"))
            output.push_back(static_cast<uint8_t>(letter));
        output.push_back(0);
        number(1);              // code is counted in bytes
        output.push_back(0x78); // and places on the stack in -8
        output.push_back(kReturnAddress);
        number(personality ? 11 : 1);
        if (personality) {
            output.push_back(0); // DW_EH_PE_absptr, as all the others
            put(personality);
            output.push_back(0);
        }
        output.push_back(0);
        close(begin);
        return begin;
    }

    /** The caller's stack pointer is so much above a register. */
    void frameAt(uint8_t reg, uint64_t distance)
    {
        output.push_back(0x0C); // DW_CFA_def_cfa
        number(reg);
        number(distance);
    }

    /** A register is so many words below the caller's stack pointer. */
    void saved(uint8_t reg, uint64_t words)
    {
        output.push_back(0x05); // DW_CFA_offset_extended
        number(reg);
        number(words);
    }

    void addRules(const UnwindEntry& entry);
    void addPairs(uint32_t encoding, uint64_t words);

    const uint8_t* const image;
    std::vector<uint8_t> output;
    std::map<uint64_t, size_t> commonEntries; ///< by their personality
};

[[noreturn]] void refuse(const UnwindEntry& entry)
{
    throw LoadError("function at " + std::to_string(entry.begin) +
                    " is unwound in a way that this loader does not know");
}

#if defined(__x86_64__)

/** rbx, r12 to r15, rbp by the encoding's numbers, of which 0 is none. */
constexpr uint8_t kSavedRegisters[] = {0, 3, 12, 13, 14, 15, 6};
constexpr uint32_t kFrameMode = 0x01000000;
constexpr uint32_t kFramelessMode = 0x02000000;
constexpr uint32_t kDwarfMode = 0x04000000;
constexpr uint32_t kSavedInFrameless = 0x0000FFFF; ///< how many registers, and which

/** Functions that clang makes for macOS keep a frame pointer, but for a few that save nothing. */
void FrameWriter::addRules(const UnwindEntry& entry)
{
    if ((entry.encoding & (kModeMask | kSavedInFrameless)) == kFramelessMode) {
        frameAt(kStackPointer, (entry.encoding >> 16 & 0xFF) * 8);
        return saved(kReturnAddress, 1);
    }
    if ((entry.encoding & kModeMask) != kFrameMode)
        refuse(entry);
    frameAt(kFramePointer, 16);
    saved(kReturnAddress, 1);
    saved(kFramePointer, 2);
    const uint32_t first = entry.encoding >> 16 & 0xFF;
    for (uint32_t place = 0; place < 5; ++place) {
        const uint32_t reg = entry.encoding >> (3 * place) & 7;
        if (reg >= std::size(kSavedRegisters))
            refuse(entry);
        if (reg > 0)
            saved(kSavedRegisters[reg], 2 + first - place);
    }
}

#else

constexpr uint32_t kLeafMode = 0x02000000;
constexpr uint32_t kDwarfMode = 0x03000000;
constexpr uint32_t kFrameMode = 0x04000000;

void FrameWriter::addRules(const UnwindEntry& entry)
{
    switch (entry.encoding & kModeMask) {
    case kLeafMode: // the return address is still in its register
        frameAt(kStackPointer, (entry.encoding >> 12 & 0xFFF) * 16);
        return addPairs(entry.encoding, 1);
    case kFrameMode:
        frameAt(kFramePointer, 16);
        saved(kReturnAddress, 1);
        saved(kFramePointer, 2);
        return addPairs(entry.encoding, 3);
    default:
        refuse(entry);
    }
}

/** x19 and its neighbour, x21 and so on; then the floating-point registers from d8. */
void FrameWriter::addPairs(uint32_t encoding, uint64_t words)
{
    struct Pair {
        uint32_t bit;
        uint8_t first;
    };
    for (const Pair& pair : std::initializer_list<Pair>{{0x001, 19},
                                                        {0x002, 21},
                                                        {0x004, 23},
                                                        {0x008, 25},
                                                        {0x010, 27},
                                                        {0x100, 72},
                                                        {0x200, 74},
                                                        {0x400, 76},
                                                        {0x800, 78}}) {
        if ((encoding & pair.bit) == 0)
            continue;
        saved(pair.first, words++);
        saved(static_cast<uint8_t>(pair.first + 1), words++);
    }
}

#endif

/** Unwound by __eh_frame, which LLVM's linker leaves unusable: an exception that comes to such a
    function ends the program, as where nothing can be unwound. One that catches is refused. */
bool isLeftToDwarf(const UnwindEntry& entry)
{
    return (entry.encoding & (kModeMask | kHasLanguageData)) == kDwarfMode;
}

} // namespace

std::vector<UnwindEntry> readUnwindInfo(const uint8_t* section, size_t size)
{
    return UnwindInfo(section, size).entries;
}

std::vector<uint8_t> framesOf(const std::vector<UnwindEntry>& entries, const uint8_t* image)
{
    FrameWriter writer(image);
    for (const auto& entry : entries)
        if ((entry.encoding & kModeMask) != 0 && !isLeftToDwarf(entry))
            writer.add(entry);
    return writer.take();
}

} // namespace macho
