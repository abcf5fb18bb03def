// Mutator: makes inputs out of the kept ones, for a search without libFuzzer.
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

/** Made from the same kept inputs, it gives the same inputs in the same order. */
class Mutator {
public:
    static constexpr std::size_t kMaxSize = 1024;

    /** @param keptInputs at least one */
    explicit Mutator(std::vector<std::string> keptInputs);

    /** One of the kept inputs, changed in one to eight places; of kMaxSize bytes at most. */
    std::string next();

private:
    void change(std::string& input);
    void changeNumber(std::string& input);
    std::string randomPiece(std::size_t length);
    std::uint32_t draw(std::size_t below);

    const std::vector<std::string> kept;
    std::mt19937 random{1}; ///< the same numbers with every C++ library
};

} // namespace fuzz
