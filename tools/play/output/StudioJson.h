// StudioJson: the parts that play's reports in JSON share.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

struct StudioReport;

/** Adds what there is of "ports" and "tracks". */
void addTo(nlohmann::ordered_json& json, const StudioReport& report);

} // namespace play
} // namespace Vst
} // namespace Steinberg
