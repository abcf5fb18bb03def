#include "tests/macos/loader/MachoFile.h"

#include "tests/macos/loader/OpcodeReader.h"

#include <algorithm>
#include <set>
#include <sstream>

// The file format is that of Apple's <mach-o/loader.h>, <mach-o/fat.h> and <mach-o/nlist.h>, whose
// names stand behind the numbers.
namespace macho {
namespace {

constexpr uint32_t kUniversalMagic = 0xCAFEBABE; // FAT_MAGIC, big endian
constexpr uint32_t kMagic = 0xFEEDFACF;          // MH_MAGIC_64
constexpr uint32_t kBundleType = 8;              // MH_BUNDLE
constexpr size_t kHeaderSize = 32;
constexpr size_t kUniversalHeaderSize = 8;
constexpr size_t kUniversalEntrySize = 20;
constexpr size_t kSegmentSize = 72;
constexpr size_t kSectionSize = 80;
constexpr uint64_t kMostMemory = uint64_t{1} << 30;

constexpr uint32_t kSegment = 0x19;             // LC_SEGMENT_64
constexpr uint32_t kDyldInfo = 0x80000022;      // LC_DYLD_INFO_ONLY
constexpr uint32_t kChainedFixups = 0x80000034; // LC_DYLD_CHAINED_FIXUPS
constexpr uint32_t kInitialisers = 0x9;         // S_MOD_INIT_FUNC_POINTERS
constexpr uint32_t kIgnoredCommands[] = {
    0x2,  // LC_SYMTAB: for debuggers
    0xB,  // LC_DYSYMTAB
    0xC,  // LC_LOAD_DYLIB: who offers an import does not matter here
    0x1B, // LC_UUID
    0x1D, // LC_CODE_SIGNATURE
    0x26, // LC_FUNCTION_STARTS
    0x29, // LC_DATA_IN_CODE
    0x2A, // LC_SOURCE_VERSION
    0x32, // LC_BUILD_VERSION
};

constexpr uint8_t kOpcodeMask = 0xF0;
constexpr uint8_t kImmediateMask = 0x0F;
constexpr uint8_t kPointerType = 1; // REBASE_TYPE_POINTER, BIND_TYPE_POINTER
constexpr size_t kPointerSize = 8;

std::string hex(uint64_t number)
{
    std::ostringstream text;
    text << "0x" << std::hex << number;
    return text.str();
}

uint32_t bigEndianAt(const MachoFile::Bytes& bytes, size_t offset)
{
    return __builtin_bswap32(numberAt<uint32_t>(bytes.data(), bytes.size(), offset));
}

/** A name field of 16 bytes, which need not end with a zero. */
std::string nameAt(const MachoFile::Bytes& bytes, size_t offset)
{
    const auto* name = reinterpret_cast<const char*>(bytes.data() + offset);
    return {name, strnlen(name, 16)};
}

/** Literals, pointers, stubs and memory that begins as zeros need nothing done beyond what the
    fixups say; thread-local variables, for one, would. */
bool isKnownSection(uint32_t type)
{
    constexpr uint32_t kLast = 0x9; // S_REGULAR to S_MOD_INIT_FUNC_POINTERS
    return type <= kLast || type == 0xB /* S_COALESCED */ || type == 0xE /* S_16BYTE_LITERALS */;
}

/** Walks through an image as the opcodes say, and tells each place where a pointer goes. */
class Cursor {
public:
    Cursor(const MachoFile& machoFile, const char* ofWhat)
    : file(machoFile)
    , what(ofWhat)
    {
    }

    void moveTo(size_t segment, uint64_t offset)
    {
        if (segment >= file.segments().size())
            throw LoadError(std::string(what) + " in a segment that does not exist");
        address = file.segments()[segment].address + offset;
        isPlaced = true;
    }

    void skip(uint64_t distance) { address += distance; }

    /** The place here, and goes on behind it. */
    uint64_t take(uint64_t distance = 0)
    {
        const uint64_t place = address;
        if (!isPlaced || !isPointerOfImage(place))
            throw LoadError(std::string(what) + " outside of the image's data: " + hex(place));
        address += kPointerSize + distance;
        return place;
    }

private:
    bool isPointerOfImage(uint64_t place) const
    {
        const auto& all = file.segments();
        return std::any_of(all.begin(), all.end(), [place](const Segment& segment) {
            return segment.isWritable && place >= segment.address &&
                   place - segment.address <= segment.size &&
                   segment.size - (place - segment.address) >= kPointerSize;
        });
    }

    const MachoFile& file;
    const char* const what;
    uint64_t address = 0;
    bool isPlaced = false;
};

[[noreturn]] void refuse(const char* what, uint8_t opcode)
{
    throw LoadError(std::string("unknown ") + what + " opcode " + hex(opcode));
}

} // namespace

MachoFile::Bytes MachoFile::sliceOf(const Bytes& file, Processor processor)
{
    if (bigEndianAt(file, 0) != kUniversalMagic)
        return file;
    const uint32_t count = bigEndianAt(file, 4);
    for (uint32_t index = 0; index < count; ++index) {
        const size_t entry = kUniversalHeaderSize + index * kUniversalEntrySize;
        if (bigEndianAt(file, entry) != static_cast<uint32_t>(processor))
            continue;
        const size_t offset = bigEndianAt(file, entry + 8);
        const size_t size = bigEndianAt(file, entry + 12);
        if (offset > file.size() || file.size() - offset < size)
            throw LoadError("the file ends before its part for this processor does");
        return {file.data() + offset, file.data() + offset + size};
    }
    throw LoadError("nothing in the file is for this processor");
}

MachoFile::MachoFile(Bytes slice, Processor processor)
: bytes(std::move(slice))
{
    const auto number = [this](size_t offset) {
        return numberAt<uint32_t>(bytes.data(), bytes.size(), offset);
    };
    if (number(0) != kMagic)
        throw LoadError("no Mach-O file of 64 bits");
    if (number(4) != static_cast<uint32_t>(processor))
        throw LoadError("for another processor");
    if (number(12) != kBundleType)
        throw LoadError("no bundle");
    const uint32_t count = number(16);
    const size_t commandsEnd = kHeaderSize + number(20);
    if (commandsEnd > bytes.size())
        throw LoadError("the file ends before its load commands do");
    size_t offset = kHeaderSize;
    for (uint32_t index = 0; index < count; ++index) {
        const uint32_t size = number(offset + 4);
        if (size < 8 || offset + size > commandsEnd)
            throw LoadError("a load command of the impossible size " + hex(size));
        readCommand(number(offset), offset, size);
        offset += size;
    }
    if (segmentList.empty() || segmentList.front().address != 0)
        throw LoadError("the image does not begin at address 0");
}

void MachoFile::readCommand(uint32_t command, size_t offset, size_t size)
{
    if (command == kSegment)
        return readSegment(offset, size);
    if (command == kChainedFixups)
        throw LoadError("chained fixups, which this loader does not know");
    if (command == kDyldInfo) {
        if (size != 8 + sizeof(DyldInfo))
            throw LoadError("fixups of an unknown layout");
        std::memcpy(&info, bytes.data() + offset + 8, sizeof(info));
        for (const auto& range :
             {info.rebase, info.bind, info.weakBind, info.lazyBind, info.exports})
            if (range.offset > bytes.size() || bytes.size() - range.offset < range.size)
                throw LoadError("the file ends before its fixups do");
        return;
    }
    if (std::count(std::begin(kIgnoredCommands), std::end(kIgnoredCommands), command) == 0)
        throw LoadError("unknown load command " + hex(command));
}

void MachoFile::readSegment(size_t offset, size_t size)
{
    if (size < kSegmentSize)
        throw LoadError("a segment of the impossible size " + hex(size));
    const auto word = [&](size_t at) {
        return numberAt<uint32_t>(bytes.data(), bytes.size(), offset + at);
    };
    const auto longWord = [&](size_t at) {
        return numberAt<uint64_t>(bytes.data(), bytes.size(), offset + at);
    };
    const uint32_t protection = word(60); // VM_PROT_READ 1, VM_PROT_WRITE 2, VM_PROT_EXECUTE 4
    const Segment segment = {
        nameAt(bytes, offset + 8), longWord(24),         longWord(32), longWord(40), longWord(48),
        (protection & 2) != 0,     (protection & 4) != 0};
    if (segment.fileOffset > bytes.size() || bytes.size() - segment.fileOffset < segment.fileSize ||
        segment.fileSize > segment.size)
        throw LoadError("the file ends before segment " + segment.name + " does");
    if (segment.address != end || segment.size > kMostMemory - end)
        throw LoadError("segment " + segment.name + " does not follow the one before it");
    end += segment.size;
    segmentList.push_back(segment);
    const uint32_t sections = word(64);
    if (size != kSegmentSize + uint64_t{sections} * kSectionSize)
        throw LoadError("segment " + segment.name + " has another number of sections than it says");
    for (uint32_t index = 0; index < sections; ++index)
        readSection(offset + kSegmentSize + index * kSectionSize);
}

void MachoFile::readSection(size_t offset)
{
    const auto name = nameAt(bytes, offset);
    const auto address = numberAt<uint64_t>(bytes.data(), bytes.size(), offset + 32);
    const auto size = numberAt<uint64_t>(bytes.data(), bytes.size(), offset + 40);
    const auto type = numberAt<uint32_t>(bytes.data(), bytes.size(), offset + 64) & 0xFF;
    const auto& segment = segmentList.back();
    if (address < segment.address || address - segment.address > segment.size ||
        segment.size - (address - segment.address) < size)
        throw LoadError("section " + name + " is not in its segment");
    if (!isKnownSection(type))
        throw LoadError("section " + name + " is of the unknown kind " + hex(type));
    sectionList.push_back({name, address, size, type == kInitialisers});
}

const Section* MachoFile::section(const std::string& name) const
{
    const auto found = std::find_if(sectionList.begin(), sectionList.end(),
                                    [&](const Section& each) { return each.name == name; });
    return found == sectionList.end() ? nullptr : &*found;
}

const uint8_t* MachoFile::contentOf(const Segment& segment) const
{
    return bytes.data() + segment.fileOffset;
}

std::vector<uint64_t> MachoFile::rebases() const
{
    std::vector<uint64_t> places;
    Cursor cursor(*this, "a rebase");
    OpcodeReader reader(bytes.data() + info.rebase.offset, info.rebase.size);
    const auto take = [&](uint64_t count, uint64_t distance) {
        for (; count > 0; --count)
            places.push_back(cursor.take(distance));
    };
    while (!reader.isAtEnd()) {
        const uint8_t opcode = reader.byte();
        const uint8_t immediate = opcode & kImmediateMask;
        switch (opcode & kOpcodeMask) {
        case 0x00: // REBASE_OPCODE_DONE
            return places;
        case 0x10: // SET_TYPE_IMM
            if (immediate != kPointerType)
                throw LoadError("a rebase of something else than a pointer");
            break;
        case 0x20: // SET_SEGMENT_AND_OFFSET_ULEB
            cursor.moveTo(immediate, reader.unsignedNumber());
            break;
        case 0x30: // ADD_ADDR_ULEB
            cursor.skip(reader.unsignedNumber());
            break;
        case 0x40: // ADD_ADDR_IMM_SCALED
            cursor.skip(immediate * kPointerSize);
            break;
        case 0x50: // DO_REBASE_IMM_TIMES
            take(immediate, 0);
            break;
        case 0x60: // DO_REBASE_ULEB_TIMES
            take(reader.unsignedNumber(), 0);
            break;
        case 0x70: // DO_REBASE_ADD_ADDR_ULEB
            take(1, reader.unsignedNumber());
            break;
        case 0x80: { // DO_REBASE_ULEB_TIMES_SKIPPING_ULEB
            const uint64_t count = reader.unsignedNumber();
            take(count, reader.unsignedNumber());
            break;
        }
        default:
            refuse("rebase", opcode);
        }
    }
    return places;
}

std::vector<Bind> MachoFile::binds() const
{
    std::vector<Bind> result;
    readBindsOf(info.bind, false, result);
    readBindsOf(info.weakBind, false, result);
    readBindsOf(info.lazyBind, true, result);
    return result;
}

void MachoFile::readBindsOf(const Range& range, bool isLazy, std::vector<Bind>& result) const
{
    Cursor cursor(*this, "a bind");
    OpcodeReader reader(bytes.data() + range.offset, range.size);
    std::string symbol;
    bool isWeak = false;
    int64_t addend = 0;
    const auto take = [&](uint64_t count, uint64_t distance) {
        if (symbol.empty())
            throw LoadError("a bind without a symbol");
        for (; count > 0; --count)
            result.push_back({cursor.take(distance), symbol, addend, isWeak});
    };
    while (!reader.isAtEnd()) {
        const uint8_t opcode = reader.byte();
        const uint8_t immediate = opcode & kImmediateMask;
        switch (opcode & kOpcodeMask) {
        case 0x00: // BIND_OPCODE_DONE, which among the lazy ones stands behind each
            if (!isLazy)
                return;
            addend = 0;
            break;
        case 0x10: // SET_DYLIB_ORDINAL_IMM: the libraries are told apart by check_bundle.py
        case 0x30: // SET_DYLIB_SPECIAL_IMM
            break;
        case 0x20: // SET_DYLIB_ORDINAL_ULEB
            reader.unsignedNumber();
            break;
        case 0x40: // SET_SYMBOL_TRAILING_FLAGS_IMM
            symbol = reader.text();
            isWeak = (immediate & 1) != 0; // BIND_SYMBOL_FLAGS_WEAK_IMPORT
            break;
        case 0x50: // SET_TYPE_IMM
            if (immediate != kPointerType)
                throw LoadError("a bind of something else than a pointer");
            break;
        case 0x60: // SET_ADDEND_SLEB
            addend = reader.signedNumber();
            break;
        case 0x70: // SET_SEGMENT_AND_OFFSET_ULEB
            cursor.moveTo(immediate, reader.unsignedNumber());
            break;
        case 0x80: // ADD_ADDR_ULEB
            cursor.skip(reader.unsignedNumber());
            break;
        case 0x90: // DO_BIND
            take(1, 0);
            break;
        case 0xA0: // DO_BIND_ADD_ADDR_ULEB
            take(1, reader.unsignedNumber());
            break;
        case 0xB0: // DO_BIND_ADD_ADDR_IMM_SCALED
            take(1, immediate * kPointerSize);
            break;
        case 0xC0: { // DO_BIND_ULEB_TIMES_SKIPPING_ULEB
            const uint64_t count = reader.unsignedNumber();
            take(count, reader.unsignedNumber());
            break;
        }
        default:
            refuse("bind", opcode);
        }
    }
}

/** A node of the list has a symbol's address if a symbol ends there, and the nodes that go on. */
std::map<std::string, uint64_t> MachoFile::exports() const
{
    std::map<std::string, uint64_t> result;
    if (info.exports.size == 0)
        return result;
    OpcodeReader reader(bytes.data() + info.exports.offset, info.exports.size);
    std::vector<std::pair<uint64_t, std::string>> open = {{0, ""}};
    std::set<uint64_t> seen;
    while (!open.empty()) {
        const auto [position, prefix] = open.back();
        open.pop_back();
        if (!seen.insert(position).second)
            throw LoadError("the export list leads into itself");
        reader.moveTo(position);
        const uint64_t terminalSize = reader.unsignedNumber();
        const uint64_t children = reader.position() + terminalSize;
        if (terminalSize > 0) {
            if (reader.unsignedNumber() != 0)
                throw LoadError("export " + prefix + " is no plain address");
            result[prefix] = reader.unsignedNumber();
            if (result[prefix] >= end)
                throw LoadError("export " + prefix + " is outside of the image");
        }
        reader.moveTo(children);
        for (int left = reader.byte(); left > 0; --left) {
            const auto edge = reader.text();
            open.emplace_back(reader.unsignedNumber(), prefix + edge);
        }
    }
    return result;
}

} // namespace macho
