// The plug-in's fixed names, version and class IDs. Hosts store the IDs in projects and presets:
// they never change.
#pragma once

#include "pluginterfaces/base/funknown.h"

namespace Steinberg {
namespace Vst {

constexpr const char* kPlugInName = "RDL3/RDL5 VST";
constexpr const char* kControllerName = "RDL3/RDL5 VST Controller";
constexpr const char* kPlugInVendor = "Tavrin Corporation";
constexpr const char* kPlugInVersion = "1.6.6";
constexpr const char* kPlugInSdkVersion = "VST 3.5.0";
constexpr const char* kPlugInSubCategories = "Instrument|External|OnlyRT|DSPBased";

inline const FUID kProcessorUID(0x13EEE348, 0x4D664261, 0xB90352CE, 0x35DD18B4);
inline const FUID kControllerUID(0x31DFD31B, 0xDBB84D12, 0x8E0ABBC9, 0x4E1BB134);

} // namespace Vst
} // namespace Steinberg
