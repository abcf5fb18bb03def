// Failure: a reason to end the program that its user can act on.
#pragma once

#include <stdexcept>

namespace Steinberg {
namespace Vst {
namespace play {

/** what() is one whole sentence for the user. Thrown anywhere in play, printed once by main, after
    which the program ends with a status other than 0. */
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
