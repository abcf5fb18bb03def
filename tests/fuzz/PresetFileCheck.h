// checkPresetFile: compares a preset file with the definition of the format.
#pragma once

#include <string>

namespace fuzz {

/** Ends the run unless file is a whole preset file of the plug-in's processor: header, an empty
    component state, the controller state, attributes, and the list of these. */
void checkPresetFile(const std::string& file, const std::string& controllerState);

} // namespace fuzz
