// Failure: a reason to end the program that its user can act on.
#pragma once

#include <stdexcept>

namespace Steinberg {
namespace Vst {
namespace makepresets {

/** what() is one whole sentence for the user. Thrown anywhere in make-presets, printed once by
   main, after which the program ends with a status other than 0. */
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
