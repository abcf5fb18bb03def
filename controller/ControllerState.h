// What the controller takes as its state: a preset or a user bank.
#pragma once

namespace Steinberg {

class IBStream;

namespace Vst {

class VstIEditorConnect;

/** Hands the library what a preset file of this plug-in says; any other stream does nothing.
    Throws what library and stream throw. [host main thread]
    @param editor may be null: nothing is handed on
    @param state may be null */
void applyPresetFile(VstIEditorConnect* editor, IBStream* state);

} // namespace Vst
} // namespace Steinberg
