#include "tools/play/user/PresetArrival.h"

namespace Steinberg {
namespace Vst {
namespace play {

PresetArrival::PresetArrival(SimulatorControl* simulator)
: control(simulator)
{
    if (!control)
        return;
    presets = control->presetsApplied().size();
    banks = control->userBanksApplied().size();
}

Report::LoadedPreset PresetArrival::of(const std::string& file) const
{
    if (!control)
        return {file, "", {}};
    const auto applied = control->presetsApplied();
    const auto loaded = control->userBanksApplied();
    if (applied.size() > presets)
        return {file,
                "voice " + std::to_string(applied.back().number) + " of bank " +
                    std::to_string(applied.back().bank),
                {}};
    if (loaded.size() > banks)
        return {file,
                "user bank " + std::to_string(loaded.back().bank) + ", number " +
                    std::to_string(loaded.back().number) + ", " +
                    std::to_string(loaded.back().data.size()) + " bytes",
                loaded.back().data};
    return {file, "nothing: no voice and no bank arrived", {}};
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
