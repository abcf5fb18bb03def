// FuzzInput: the bytes of one input, read piece by piece; and the check that ends the run.
//
//   FuzzInput input(data, size);
//   const bool unicode = input.flag();    const auto text = input.units(40);
//   FUZZ_CHECK(controller->setState(&stream) == kResultOk);
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace fuzz {

/** Once the bytes have run out, every number is 0 and every text empty. The bytes outlive it. */
class FuzzInput {
public:
    FuzzInput(const uint8_t* bytes, size_t count)
    : next(bytes)
    , left(count)
    {
    }

    bool empty() const { return left == 0; }
    size_t remaining() const { return left; }

    template <class Number>
    Number number()
    {
        Number result{};
        take(&result, sizeof(result));
        return result;
    }
    uint8_t byte() { return number<uint8_t>(); }
    bool flag() { return (byte() & 1) != 0; }

    /** From 0 to count - 1; count is 1 to 256. */
    size_t below(size_t count) { return byte() % count; }

    template <class Entry, size_t count>
    const Entry& oneOf(const Entry (&entries)[count])
    {
        return entries[below(count)];
    }

    /** A length byte and at most as many bytes; with at most `most` of them. Zero bytes are bytes
        like any other. */
    std::string bytes(size_t most);

    /** The same in 16-bit units. */
    std::u16string units(size_t most);

    /** Everything that is left. */
    std::string rest();

private:
    /** What is missing stays as it was. */
    size_t take(void* out, size_t count);

    const uint8_t* next;
    size_t left;
};

/** Says what did not hold and aborts, which every fuzzer and CTest take for a failure. */
[[noreturn]] void checkFailed(const char* condition, const char* file, int line);

} // namespace fuzz

#define FUZZ_CHECK(condition)                                                                      \
    ((condition) ? static_cast<void>(0) : fuzz::checkFailed(#condition, __FILE__, __LINE__))
