// The processor's part of the host's project: the editor library's state.
//
//   offset  size  content, integers little-endian
//   0       4     format version, always 0
//   4       4     N, the number of bytes that follow
//   8       N     the library's own bytes
//
// A library may ask for its state as text instead when it is restored; it is written as above all
// the same.
#pragma once

#include "pluginterfaces/base/funknown.h"

namespace Steinberg {

class IBStream;

namespace Vst {

class VstIEditorConnect;

// Both throw what library and stream throw. [host main thread]
/** @return the stream's answer to the library's bytes, or kResultFalse where it came less far */
tresult saveLibraryState(VstIEditorConnect& editor, IBStream& state);

/** @param state may be null: that fails as a state, but not as a text
    @return kResultOk also for a later version's state, which the library does not get */
tresult restoreLibraryState(VstIEditorConnect& editor, IBStream* state);

} // namespace Vst
} // namespace Steinberg
