#include "tests/fuzz/Mutator.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace fuzz {

namespace {

constexpr std::size_t kMostChanges = 8;
constexpr std::size_t kLongestPiece = 32;

/** Numbers at which the meaning of size fields, codes and characters changes. */
constexpr std::int64_t kEdges[] = {
    0,   1,   -1,     2,      16,     100,        101,         127,        128,
    255, 256, 0x7FFF, 0x8000, 0xD800, 0x7FFFFFFF, -2147483648, 0xFFFFFFFF, 0x7FF0000000000000};
constexpr std::size_t kWidths[] = {1, 2, 4, 8};

} // namespace

Mutator::Mutator(std::vector<std::string> keptInputs)
: kept(std::move(keptInputs))
{
}

std::string Mutator::next()
{
    std::string input = kept[draw(kept.size())];
    for (std::size_t changes = 1 + draw(kMostChanges); changes > 0; --changes)
        change(input);
    input.resize(std::min(input.size(), kMaxSize));
    return input;
}

void Mutator::change(std::string& input)
{
    const std::size_t place = draw(input.size() + 1);
    const std::size_t length = 1 + draw(kLongestPiece);
    switch (draw(8)) {
    case 0:
        return void(input.erase(place, length));
    case 1:
        return void(input.insert(place, randomPiece(length)));
    case 2:
        return void(input.insert(place, std::string(input, draw(place + 1), length)));
    case 3: {
        const std::string& other = kept[draw(kept.size())];
        return void(input.replace(place, input.size(), other, draw(other.size() + 1)));
    }
    default:
        return changeNumber(input);
    }
}

void Mutator::changeNumber(std::string& input)
{
    const std::size_t width = kWidths[draw(std::size(kWidths))];
    if (input.size() < width)
        return;
    char* place = &input[draw(input.size() - width + 1)];
    std::uint64_t number = 0;
    std::memcpy(&number, place, width);
    switch (draw(4)) {
    case 0:
        number = static_cast<std::uint64_t>(kEdges[draw(std::size(kEdges))]);
        break;
    case 1:
        number += draw(33);
        number -= 16;
        break;
    case 2:
        number ^= std::uint64_t{1} << draw(8 * width);
        break;
    default:
        number ^= draw(256);
    }
    std::memcpy(place, &number, width);
}

std::string Mutator::randomPiece(std::size_t length)
{
    std::string piece(length, '\0');
    for (char& byte : piece)
        byte = static_cast<char>(draw(256));
    return piece;
}

std::uint32_t Mutator::draw(std::size_t below)
{
    return static_cast<std::uint32_t>(random() % below);
}

} // namespace fuzz
