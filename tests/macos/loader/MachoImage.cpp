#include "tests/macos/loader/MachoImage.h"

#include "tests/macos/loader/CompactUnwind.h"

#include <cstring>
#include <sys/mman.h>

// The unwinder's, and the C library's for what __cxa_atexit was told of a module.
extern "C" void __register_frame(void* frames);
extern "C" void __deregister_frame(void* frames);
extern "C" void __cxa_finalize(void* module);

namespace macho {
namespace {

void addTo(uint8_t* pointer, uint64_t distance)
{
    uint64_t value;
    std::memcpy(&value, pointer, sizeof(value));
    value += distance;
    std::memcpy(pointer, &value, sizeof(value));
}

int protectionOf(const Segment& segment)
{
    // macOS's loader takes the right to write away when everything is bound.
    if (segment.isWritable && segment.name != "__DATA_CONST")
        return PROT_READ | PROT_WRITE;
    return segment.isExecutable ? PROT_READ | PROT_EXEC : PROT_READ;
}

} // namespace

MachoImage::Memory::Memory(size_t bytes)
: begin(nullptr)
, size(bytes)
{
    void* mapped = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED)
        throw LoadError("no memory for the image");
    begin = static_cast<uint8_t*>(mapped);
}

MachoImage::Memory::~Memory()
{
    munmap(begin, size);
}

MachoImage::Frames::Frames(std::vector<uint8_t> frames)
: bytes(std::move(frames))
{
    __register_frame(bytes.data());
}

MachoImage::Frames::~Frames()
{
    __deregister_frame(bytes.data());
}

MachoImage::MachoImage(const MachoFile& file, const Resolver& resolver)
: memory(file.span())
, exports(file.exports())
{
    for (const auto& segment : file.segments())
        if (segment.fileSize > 0)
            std::memcpy(memory.begin + segment.address, file.contentOf(segment), segment.fileSize);
    rebase(file);
    bind(file, resolver);
    if (auto bytes = makeFrames(file); !bytes.empty())
        frames = std::make_unique<Frames>(std::move(bytes));
    protect(file);
    initialise(file);
}

MachoImage::~MachoImage()
{
    // The image told __cxa_atexit that it is the module which begins at its header.
    __cxa_finalize(memory.begin);
}

void* MachoImage::exported(const std::string& symbol) const
{
    const auto found = exports.find(symbol);
    if (found == exports.end())
        throw LoadError("no export " + symbol);
    return memory.begin + found->second;
}

void MachoImage::rebase(const MachoFile& file)
{
    // It was linked for address 0.
    for (const uint64_t place : file.rebases()) {
        addTo(memory.begin + place, reinterpret_cast<uint64_t>(memory.begin));
        ++done.rebases;
    }
}

void MachoImage::bind(const MachoFile& file, const Resolver& resolver)
{
    for (const auto& bind : file.binds()) {
        const auto address = reinterpret_cast<uint64_t>(resolver(bind.symbol));
        if (address == 0 && !bind.isWeak)
            throw LoadError("nobody offers the import " + bind.symbol);
        const uint64_t value = address + static_cast<uint64_t>(bind.addend);
        std::memcpy(memory.begin + bind.address, &value, sizeof(value));
        ++done.binds;
    }
}

void MachoImage::protect(const MachoFile& file) const
{
    for (const auto& segment : file.segments()) {
        const int protection = protectionOf(segment);
        uint8_t* const begin = memory.begin + segment.address;
        if (mprotect(begin, segment.size, protection) != 0)
            throw LoadError("segment " + segment.name + " does not begin at a page");
    }
    auto* const text = reinterpret_cast<char*>(memory.begin);
    __builtin___clear_cache(text, text + memory.size);
}

std::vector<uint8_t> MachoImage::makeFrames(const MachoFile& file)
{
    const Section* section = file.section("__unwind_info");
    if (!section)
        return {};
    const auto entries = readUnwindInfo(memory.begin + section->address, section->size);
    done.unwindEntries = entries.size();
    return framesOf(entries, memory.begin);
}

void MachoImage::initialise(const MachoFile& file)
{
    using Initialiser = void (*)(int, const char**, const char**, const char**);
    const char* nothing[] = {nullptr};
    for (const auto& section : file.sections()) {
        if (!section.hasInitialisers)
            continue;
        for (uint64_t at = 0; at + sizeof(Initialiser) <= section.size; at += sizeof(Initialiser)) {
            Initialiser initialiser;
            std::memcpy(&initialiser, memory.begin + section.address + at, sizeof(initialiser));
            initialiser(0, nothing, nothing, nothing);
            ++done.initialisers;
        }
    }
}

} // namespace macho
