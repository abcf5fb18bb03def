// The processor's state in the host's project: the editor library's state with a header.
//
//   offset  size  content, integers little-endian
//   0       4     format version, always 0
//   4       4     N, the number of bytes that follow
//   8       N     the library's own bytes
//
// It is always written like this. To restore it, a library may ask for the whole stream as text.
#pragma once

#include "pluginterfaces/base/funknown.h"

namespace Steinberg {

class IBStream;

namespace Vst {

class VstIEditorConnect;

// Both throw what library and stream throw. [host main thread]
/** Writes the state. @return the stream's result for the library's bytes; kResultFalse when a field
    before them failed or the library gave more than 2^31 - 1 bytes */
tresult saveLibraryState(VstIEditorConnect& editor, IBStream& state);

/** Restores the state.
    @param state may be null: kResultFalse, but kResultOk when the library wants text
    @return kResultOk also for a state of a later version, which is ignored */
tresult restoreLibraryState(VstIEditorConnect& editor, IBStream* state);

} // namespace Vst
} // namespace Steinberg
