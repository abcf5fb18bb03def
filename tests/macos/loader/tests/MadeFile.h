// MadeFile: a small Mach-O bundle for a test, in which anything can be made wrong.
//
//   MadeFile made;
//   made.binds = {0x40, '_', 'x', 0, ...};
//   const MachoFile file(made.bytes());
//
// Its image has 4 KB of text, of constant data, and of data, and what dyld reads behind them.
#pragma once

#include "tests/macos/loader/MachoFile.h"

#include <cstring>

namespace macho {

class MadeFile {
public:
    static constexpr uint64_t kPage = 0x1000;
    static constexpr uint64_t kConstants = kPage;
    static constexpr uint64_t kData = 2 * kPage;

    MachoFile::Bytes rebases;
    MachoFile::Bytes binds;
    MachoFile::Bytes lazyBinds;
    MachoFile::Bytes exports;
    uint32_t sectionType = 0;      ///< of the one section, __data
    uint64_t dataFileSize = kPage; ///< of the data segment
    uint64_t dataAddress = kData;
    std::vector<MachoFile::Bytes> commands;         ///< more load commands
    std::vector<std::pair<size_t, uint32_t>> words; ///< written over what stands there
    size_t size = SIZE_MAX;                         ///< what is beyond is cut off

    MachoFile::Bytes bytes() const
    {
        MachoFile::Bytes dyld;
        MachoFile::Bytes info;
        put<uint32_t>(info, 0x80000022);
        put<uint32_t>(info, 48);
        for (const auto* part : {&rebases, &binds, &noWeakBinds, &lazyBinds, &exports}) {
            put(info, static_cast<uint32_t>(3 * kPage + dyld.size()));
            put(info, static_cast<uint32_t>(part->size()));
            dyld.insert(dyld.end(), part->begin(), part->end());
        }
        auto all = commands;
        all.push_back(segment("__TEXT", 0, kPage, 0, kPage, 5));
        all.push_back(segment("__DATA_CONST", kConstants, kPage, kConstants, kPage, 3));
        all.push_back(segment("__DATA", dataAddress, kPage, kData, dataFileSize, 3, true));
        all.push_back(info);
        auto result = header(all);
        result.resize(3 * kPage);
        result.insert(result.end(), dyld.begin(), dyld.end());
        for (const auto& [offset, word] : words)
            std::memcpy(result.data() + offset, &word, sizeof(word));
        if (result.size() > size)
            result.resize(size);
        return result;
    }

    /** A load command with nothing in it. */
    static MachoFile::Bytes command(uint32_t number, uint32_t sizeOfIt = 16)
    {
        MachoFile::Bytes result;
        put(result, number);
        put(result, sizeOfIt);
        result.resize(16);
        return result;
    }

private:
    template <typename Number>
    static void put(MachoFile::Bytes& bytes, Number number)
    {
        const auto* first = reinterpret_cast<const uint8_t*>(&number);
        bytes.insert(bytes.end(), first, first + sizeof(number));
    }

    static void putName(MachoFile::Bytes& bytes, const char* name)
    {
        char field[16] = {};
        std::memcpy(field, name, std::strlen(name));
        bytes.insert(bytes.end(), field, field + sizeof(field));
    }

    static MachoFile::Bytes header(const std::vector<MachoFile::Bytes>& all)
    {
        MachoFile::Bytes body;
        for (const auto& each : all)
            body.insert(body.end(), each.begin(), each.end());
        MachoFile::Bytes result;
        for (const uint32_t word :
             {0xFEEDFACFu, static_cast<uint32_t>(kThisProcessor), 0u, 8u,
              static_cast<uint32_t>(all.size()), static_cast<uint32_t>(body.size()), 0u, 0u})
            put(result, word);
        result.insert(result.end(), body.begin(), body.end());
        return result;
    }

    MachoFile::Bytes segment(const char* name, uint64_t address, uint64_t memorySize,
                             uint64_t offset, uint64_t fileSize, uint32_t protection,
                             bool hasSection = false) const
    {
        MachoFile::Bytes result;
        put<uint32_t>(result, 0x19);
        put<uint32_t>(result, hasSection ? 152 : 72);
        putName(result, name);
        for (const uint64_t word : {address, memorySize, offset, fileSize})
            put(result, word);
        for (const uint32_t word : {protection, protection, hasSection ? 1u : 0u, 0u})
            put(result, word);
        if (!hasSection)
            return result;
        putName(result, "__data");
        putName(result, name);
        put(result, address);
        put<uint64_t>(result, 64);
        for (const uint32_t word : {0u, 0u, 0u, 0u, sectionType, 0u, 0u, 0u})
            put(result, word);
        return result;
    }

    const MachoFile::Bytes noWeakBinds;
};

} // namespace macho
