#include "tests/fuzz/FuzzInput.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace fuzz {

size_t FuzzInput::take(void* out, size_t count)
{
    const size_t taken = std::min(count, left);
    if (taken == 0)
        return 0;
    std::memcpy(out, next, taken);
    next += taken;
    left -= taken;
    return taken;
}

std::string FuzzInput::bytes(size_t most)
{
    std::string result(std::min({static_cast<size_t>(byte()), most, left}), '\0');
    take(result.data(), result.size());
    return result;
}

std::u16string FuzzInput::units(size_t most)
{
    std::u16string result(std::min({static_cast<size_t>(byte()), most, left / 2}), u'\0');
    take(result.data(), result.size() * sizeof(char16_t));
    return result;
}

std::string FuzzInput::rest()
{
    std::string result(left, '\0');
    take(result.data(), result.size());
    return result;
}

void checkFailed(const char* condition, const char* file, int line)
{
    std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, condition);
    std::abort();
}

} // namespace fuzz
