// The controller's setState: it takes a preset or a user bank.
#pragma once

namespace Steinberg {

class IBStream;

namespace Vst {

class VstIEditorConnect;

/** Applies a preset file of this plug-in to the library; ignores any other stream.
    Throws what library and stream throw. [host main thread]
    @param editor may be null: nothing is applied
    @param state may be null: nothing is applied */
void applyPresetFile(VstIEditorConnect* editor, IBStream* state);

} // namespace Vst
} // namespace Steinberg
