#include "controller/ControllerState.h"

#include "basics/PlugInInfo.h"
#include "editorlib/VstIEditorConnect.h"
#include "presets/VstK2xPreset.h"
#include "presets/VstK2xUserBank.h"

namespace Steinberg {
namespace Vst {

namespace {

void applyPreset(VstIEditorConnect* editor, IBStream* state)
{
    int bank = -1;
    int number = -1;
    const bool loaded = VstK2xPreset::loadPreset(state, kProcessorUID, bank, number);
    if (loaded && editor)
        editor->applyPreset(bank, number);
}

void applyUserBank(VstIEditorConnect* editor, IBStream* state)
{
    if (!editor)
        return;
    int bank = -1;
    int number = -1;
    int size = 0;
    std::vector<char> data;
    if (VstK2xUserBank::loadUserBank(state, kProcessorUID, bank, number, size, data))
        editor->applyUserBank(bank, number, data.data(), size);
}

} // namespace

void applyPresetFile(VstIEditorConnect* editor, IBStream* state)
{
    if (VstK2xPreset::isK2xPreset(state))
        applyPreset(editor, state);
    else if (VstK2xUserBank::isK2xUserBank(state))
        applyUserBank(editor, state);
}

} // namespace Vst
} // namespace Steinberg
