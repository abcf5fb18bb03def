// Bytes of a Mach-O file, read one after the other. Reading beyond their end is a LoadError.
#pragma once

#include "tests/macos/loader/MachoFile.h"

#include <cstring>

namespace macho {

/** A number at a place in memory of the given size, whatever its alignment. */
template <typename Number>
Number numberAt(const uint8_t* bytes, size_t size, size_t offset)
{
    if (offset > size || size - offset < sizeof(Number))
        throw LoadError("the file ends too early");
    Number number;
    std::memcpy(&number, bytes + offset, sizeof(number));
    return number;
}

class OpcodeReader {
public:
    OpcodeReader(const uint8_t* first, size_t size)
    : begin(first)
    , next(first)
    , end(first + size)
    {
    }

    bool isAtEnd() const { return next == end; }
    size_t position() const { return static_cast<size_t>(next - begin); }

    void moveTo(uint64_t position)
    {
        if (position >= static_cast<uint64_t>(end - begin))
            throw LoadError("the export list leads out of itself");
        next = begin + position;
    }

    uint8_t byte()
    {
        if (isAtEnd())
            throw LoadError("opcodes end in the middle of one");
        return *next++;
    }

    /** LEB128, unsigned and signed. */
    uint64_t unsignedNumber()
    {
        unsigned bits = 0;
        return bitsOfNumber(bits);
    }
    int64_t signedNumber()
    {
        unsigned bits = 0;
        uint64_t value = bitsOfNumber(bits);
        const bool isNegative = bits < 64 && (value >> (bits - 1) & 1) != 0;
        if (isNegative)
            value |= ~uint64_t{0} << bits;
        return static_cast<int64_t>(value);
    }

    std::string text()
    {
        std::string result;
        while (const uint8_t character = byte())
            result += static_cast<char>(character);
        return result;
    }

private:
    uint64_t bitsOfNumber(unsigned& bits)
    {
        uint64_t value = 0;
        uint8_t part = 0x80;
        for (; part & 0x80; bits += 7) {
            if (bits > 63)
                throw LoadError("a number of more than 64 bits");
            part = byte();
            value |= static_cast<uint64_t>(part & 0x7F) << bits;
        }
        return value;
    }

    const uint8_t* const begin;
    const uint8_t* next;
    const uint8_t* const end;
};

} // namespace macho
