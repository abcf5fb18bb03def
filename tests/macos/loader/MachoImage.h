// MachoImage: a Mach-O bundle's own machine code, mapped into this process and ready to be called.
#pragma once

#include "tests/macos/loader/MachoFile.h"

#include <functional>
#include <memory>

namespace macho {

/** Address of what an import's symbol ("_malloc") names; null when nobody offers it. */
using Resolver = std::function<void*(const std::string& symbol)>;

/** Loaded and unloaded by one thread; its functions are called by any. */
class MachoImage {
public:
    /** Maps the file, binds every import at once, makes constant data read-only and runs the
        initialisers. Throws LoadError, also for an import that nobody offers. */
    MachoImage(const MachoFile& file, const Resolver& resolver);
    /** Runs what the image registered for its end. Nothing of it may be running or be called. */
    ~MachoImage();
    MachoImage(const MachoImage&) = delete;
    MachoImage& operator=(const MachoImage&) = delete;

    /** An exported function ("_bundleEntry"). Throws LoadError when there is none. */
    template <typename Function>
    Function* function(const std::string& symbol) const
    {
        return reinterpret_cast<Function*>(exported(symbol));
    }

    const uint8_t* begin() const { return memory.begin; }
    size_t size() const { return memory.size; }

    /** How many pointers were moved and bound, and how many initialisers have run. */
    struct Counts {
        size_t rebases = 0;
        size_t binds = 0;
        size_t initialisers = 0;
        size_t unwindEntries = 0;
    };
    const Counts& counts() const { return done; }

private:
    struct Memory {
        explicit Memory(size_t bytes);
        ~Memory();
        Memory(const Memory&) = delete;
        Memory& operator=(const Memory&) = delete;

        uint8_t* begin;
        const size_t size;
    };
    /** What the unwinder reads for as long as it lives. */
    struct Frames {
        explicit Frames(std::vector<uint8_t> frames);
        ~Frames();
        Frames(const Frames&) = delete;
        Frames& operator=(const Frames&) = delete;

        std::vector<uint8_t> bytes;
    };

    void* exported(const std::string& symbol) const;
    void rebase(const MachoFile& file);
    void bind(const MachoFile& file, const Resolver& resolver);
    void protect(const MachoFile& file) const;
    std::vector<uint8_t> makeFrames(const MachoFile& file);
    void initialise(const MachoFile& file);

    Memory memory;
    Counts done;
    const std::map<std::string, uint64_t> exports;
    std::unique_ptr<Frames> frames;
};

} // namespace macho
