// MachoFile: what a Mach-O bundle of one architecture says of itself: its segments, what has to be
// written into them before it runs, and what it exports.
//
//   const MachoFile file(MachoFile::sliceOf(bytes, kThisProcessor));
//   for (const auto& bind : file.binds()) ...
//
// It reads what the linker of this project's builds writes and refuses everything else: whatever is
// malformed or of an unknown kind is a LoadError that names it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace macho {

class LoadError : public std::runtime_error {
public:
    explicit LoadError(const std::string& what)
    : std::runtime_error("Mach-O: " + what)
    {
    }
};

enum class Processor : uint32_t { kX86_64 = 0x01000007, kArm64 = 0x0100000C };

#if defined(__x86_64__)
constexpr Processor kThisProcessor = Processor::kX86_64;
#elif defined(__aarch64__)
constexpr Processor kThisProcessor = Processor::kArm64;
#endif

/** Addresses are those that the linker gave: the image begins at 0. */
struct Segment {
    std::string name;
    uint64_t address;
    uint64_t size;
    uint64_t fileOffset;
    uint64_t fileSize; ///< what is beyond is zero
    bool isWritable;
    bool isExecutable;
};

struct Section {
    std::string name;
    uint64_t address;
    uint64_t size;
    bool hasInitialisers; ///< pointers to functions that run when it is loaded
};

/** A pointer that gets a symbol's address. */
struct Bind {
    uint64_t address;
    std::string symbol; ///< as the linker sees it, with its leading underscore
    int64_t addend;
    bool isWeak; ///< null when nobody offers the symbol
};

class MachoFile {
public:
    using Bytes = std::vector<uint8_t>;

    /** The processor's part of a universal file, or the file itself if it is none. Throws. */
    static Bytes sliceOf(const Bytes& file, Processor processor);

    /** Throws when it is no bundle for the processor or any load command is not as it must be. */
    explicit MachoFile(Bytes slice, Processor processor = kThisProcessor);

    /** One behind the last address. */
    uint64_t span() const { return end; }
    const std::vector<Segment>& segments() const { return segmentList; }
    const std::vector<Section>& sections() const { return sectionList; }
    /** Null when there is none. */
    const Section* section(const std::string& name) const;
    /** The bytes that the file has for a segment. */
    const uint8_t* contentOf(const Segment& segment) const;

    /** Where there are pointers into the image itself. Throws. */
    std::vector<uint64_t> rebases() const;
    /** Pointers to what others offer; those that macOS may bind at their first use, too. Throws. */
    std::vector<Bind> binds() const;
    /** Addresses by symbol. Throws. */
    std::map<std::string, uint64_t> exports() const;

private:
    struct Range {
        uint32_t offset = 0;
        uint32_t size = 0;
    };
    struct DyldInfo {
        Range rebase;
        Range bind;
        Range weakBind;
        Range lazyBind;
        Range exports;
    };

    void readCommand(uint32_t command, size_t offset, size_t size);
    void readSegment(size_t offset, size_t size);
    void readSection(size_t offset);
    void readBindsOf(const Range& range, bool isLazy, std::vector<Bind>& result) const;

    Bytes bytes;
    std::vector<Segment> segmentList;
    std::vector<Section> sectionList;
    DyldInfo info;
    uint64_t end = 0;
};

} // namespace macho
