// What every preset file of ours is, read from its bytes without the code that wrote it.
#pragma once

#include <cstdint>
#include <string>

namespace fuzz {

/** Ends the run unless file is a whole preset file of the plug-in's processor: header, an empty
    component state, the controller state given, attributes, and the list of these.
    @param controllerState what must stand behind the marker and the fields, all of it */
void checkPresetFile(const std::string& file, const std::string& controllerState);

/** The bytes of a 32-bit integer, as files hold it. */
std::string integerBytes(int32_t value);

} // namespace fuzz
