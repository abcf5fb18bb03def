// Failure: a reason to end the program that its user can act on.
#pragma once

#include <stdexcept>

namespace Steinberg {
namespace Vst {
namespace tools {

/** what() is one whole sentence for the user. Thrown anywhere in a tool, printed once by
    runProgram, after which the program ends with a status other than 0. */
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace tools
} // namespace Vst
} // namespace Steinberg
