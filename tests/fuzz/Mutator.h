// Mutator: inputs like those that are kept, for a search where there is no libFuzzer.
//
//   fuzz::Mutator mutator(kept);
//   const std::string input = mutator.next();
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace fuzz {

/** Every object that is made from the same inputs in the same order gives the same row. */
class Mutator {
public:
    static constexpr std::size_t kMaxSize = 1024;

    /** @param keptInputs at least one */
    explicit Mutator(std::vector<std::string> keptInputs);

    /** One of the kept inputs, changed in one to eight places; of kMaxSize bytes at most. */
    std::string next();

private:
    void change(std::string& input);
    void setByte(std::string& input);
    void flipBit(std::string& input);
    void setNumber(std::string& input);
    void addToNumber(std::string& input);
    void insert(std::string& input);
    void repeat(std::string& input);
    void erase(std::string& input);
    void cross(std::string& input);

    std::uint32_t draw(std::size_t below);
    /** A place for so many bytes in an input that has as many. */
    std::size_t placeFor(std::size_t bytes, const std::string& input);

    const std::vector<std::string> kept;
    std::mt19937 random{1}; ///< the standard says what it gives, unlike the distributions
};

} // namespace fuzz
