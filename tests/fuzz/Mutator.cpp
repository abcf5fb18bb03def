#include "tests/fuzz/Mutator.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace fuzz {

namespace {

constexpr std::size_t kMostChanges = 8;
constexpr std::size_t kLongestPiece = 32;

/** Where size fields, codes and characters turn. */
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
    constexpr void (Mutator::*kinds[])(std::string&) = {
        &Mutator::setByte, &Mutator::flipBit, &Mutator::setNumber, &Mutator::addToNumber,
        &Mutator::insert,  &Mutator::repeat,  &Mutator::erase,     &Mutator::cross};
    (this->*kinds[draw(std::size(kinds))])(input);
}

void Mutator::setByte(std::string& input)
{
    if (!input.empty())
        input[placeFor(1, input)] = static_cast<char>(draw(256));
}

void Mutator::flipBit(std::string& input)
{
    if (input.empty())
        return;
    char& byte = input[placeFor(1, input)];
    byte = static_cast<char>(byte ^ (1 << draw(8)));
}

void Mutator::setNumber(std::string& input)
{
    const std::size_t width = kWidths[draw(std::size(kWidths))];
    if (input.size() < width)
        return;
    const std::int64_t number = kEdges[draw(std::size(kEdges))];
    std::memcpy(&input[placeFor(width, input)], &number, width);
}

void Mutator::addToNumber(std::string& input)
{
    const std::size_t width = kWidths[draw(std::size(kWidths))];
    if (input.size() < width)
        return;
    char* place = &input[placeFor(width, input)];
    std::uint64_t number = 0;
    std::memcpy(&number, place, width);
    number += draw(33);
    number -= 16;
    std::memcpy(place, &number, width);
}

void Mutator::insert(std::string& input)
{
    std::string piece(1 + draw(kLongestPiece), '\0');
    for (char& byte : piece)
        byte = static_cast<char>(draw(256));
    input.insert(draw(input.size() + 1), piece);
}

void Mutator::repeat(std::string& input)
{
    if (input.empty())
        return;
    const std::string piece = input.substr(draw(input.size()), 1 + draw(kLongestPiece));
    input.insert(draw(input.size() + 1), piece);
}

void Mutator::erase(std::string& input)
{
    if (!input.empty())
        input.erase(draw(input.size()), 1 + draw(kLongestPiece));
}

void Mutator::cross(std::string& input)
{
    const std::string& other = kept[draw(kept.size())];
    input.resize(draw(input.size() + 1));
    input += other.substr(draw(other.size() + 1));
}

std::uint32_t Mutator::draw(std::size_t below)
{
    return static_cast<std::uint32_t>(random() % below);
}

std::size_t Mutator::placeFor(std::size_t bytes, const std::string& input)
{
    return draw(input.size() - bytes + 1);
}

} // namespace fuzz
