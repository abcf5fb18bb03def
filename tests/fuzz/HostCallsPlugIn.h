// The plug-in that is tested: this program's own code, or the module of another build. Its virtual
// functions are called through this program's classes, since their tables are the same.
#pragma once

#include "controller/VstK2xController.h"

namespace fuzz {

/** New objects as the factory makes them, with the caller's reference. */
Steinberg::FUnknown* newController();
Steinberg::FUnknown* newProcessor();

/** Whether the controller has an editor connection, or has none, as expected. Always true for the
    module of another build, whose fields cannot be read. */
bool isConnection(const Steinberg::Vst::VstK2xController& controller, bool expected);

} // namespace fuzz
