// The plug-in whose calls are searched: this program's own code, or the module in the place of the
// build's bundle. The operations go through the classes' virtual functions, which are in the same
// places in both.
#pragma once

#include "controller/VstK2xController.h"

namespace fuzz {

/** New objects as the factory makes them, with the caller's reference. */
Steinberg::FUnknown* newController();
Steinberg::FUnknown* newProcessor();

/** Whether the controller has an editor connection, or has none, as expected. Where the code is
    another build's nobody can look into it, and whatever is expected holds. */
bool isConnection(const Steinberg::Vst::VstK2xController& controller, bool expected);

} // namespace fuzz
