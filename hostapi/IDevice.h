// IDevice: a node of the host's device tree: the mixer, one of its tracks, an instrument folder or
// an instrument. Children are borrowed; values are new references.
// A host without Unicode offers the same operations under IDeviceNotUnicodeID.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

/** [host main thread, the thread of the update handler's notice, or the library's thread in
    editorPartSyncMidiCh; between initialize and terminate] */
class IDevice : public FUnknown {
public:
    /** The device's type as zero-terminated 8-bit text ("MidiChannel", "Synth", ...); may
        be null. */
    virtual const char* PLUGIN_API getDeviceType() = 0;

    virtual void PLUGIN_API reserved4() = 0;
    virtual void PLUGIN_API reserved5() = 0;
    virtual void PLUGIN_API reserved6() = 0;
    virtual void PLUGIN_API reserved7() = 0;

    /** The value with this name ("selected", "output", "channel", "effectType"): a new reference,
        which the caller releases, or null. */
    virtual IValue* PLUGIN_API getValue(const char* name) = 0;

    virtual void PLUGIN_API reserved9() = 0;

    /** Number of children now; it can change between two calls. */
    virtual int32 PLUGIN_API countChildren() = 0;

    /** The child at an index from 0 to countChildren() - 1, borrowed, or null. */
    virtual IDevice* PLUGIN_API getChild(int32 index) = 0;
    static const FUID iid;
};

} // namespace Steinberg
