#include "presets/VstK2xPreset.h"

#include "basics/CallGuard.h"

namespace Steinberg {
namespace Vst {
namespace {

constexpr int32 kPresetMarker = 1;

} // namespace

VstK2xPreset::VstK2xPreset(IBStream* target)
: PresetChunkFile(target)
{
}

bool VstK2xPreset::savePreset(IBStream* stream, const FUID& classID, int bank, int number,
                              const char* xml, int xmlSize) noexcept
{
    return guarded(false, [&] {
        VstK2xPreset file(stream);
        if (!file.writeFront(classID))
            return false;
        file.storeEditControllerPresetData(bank, number);
        return file.writeBack(xml, xmlSize);
    });
}

bool VstK2xPreset::storeComponentPresetData(int /*bank*/, int /*number*/)
{
    writeEmptyComponentState();
    return true;
}

bool VstK2xPreset::storeEditControllerPresetData(int bank, int number)
{
    Entry entry = {};
    if (!stream || !beginChunk(entry, kControllerState))
        return true;
    writeInt32(kPresetMarker);
    writeInt32(bank);
    writeInt32(number);
    endChunk(entry);
    return true;
}

bool VstK2xPreset::loadPreset(IBStream* stream, const FUID& /*classID*/, int& bank,
                              int& number) noexcept
{
    return guarded(false, [&] {
        VstK2xPreset chunk(stream);
        return chunk.restoreEditControllerPresetData(bank, number);
    });
}

bool VstK2xPreset::restoreEditControllerPresetData(int& bank, int& number)
{
    bank = -1;
    number = -1;
    if (!stream)
        return false;
    int32 marker = -1;
    readField(marker);
    if (marker != kPresetMarker)
        return false;
    readField(bank);
    readField(number);
    return true;
}

bool VstK2xPreset::isK2xPreset(IBStream* stream) noexcept
{
    return peekMarker(stream) == kPresetMarker;
}

} // namespace Vst
} // namespace Steinberg
