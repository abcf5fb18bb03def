// IValue: a value of a device. The host's update handler tells dependents when it changes.
// A host without Unicode offers the same operations under IValueNotUnicodeID.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

/** Threads as at IDevice. */
class IValue : public FUnknown {
public:
    virtual void PLUGIN_API reserved3() = 0;
    virtual void PLUGIN_API reserved4() = 0;

    /** The value as a number: the selected track's index, a MIDI channel from 0 to 15. */
    virtual int32 PLUGIN_API getInteger() = 0;

    virtual void PLUGIN_API reserved6() = 0;
    virtual void PLUGIN_API reserved7() = 0;
    virtual void PLUGIN_API reserved8() = 0;
    virtual void PLUGIN_API reserved9() = 0;
    virtual void PLUGIN_API reserved10() = 0;
    virtual void PLUGIN_API reserved11() = 0;
    virtual void PLUGIN_API reserved12() = 0;
    virtual void PLUGIN_API reserved13() = 0;
    virtual void PLUGIN_API reserved14() = 0;
    virtual void PLUGIN_API reserved15() = 0;
    virtual void PLUGIN_API reserved16() = 0;

    /** Reads the value as text, UTF-16 or, in a host without Unicode, packed 8-bit text.
        @param[out] buffer room for *size units; a text that fills it may lack its terminator
        @param[in,out] size in: units of room; out: what the host sets, which is not used */
    virtual void PLUGIN_API getString(char16* buffer, int32* size) = 0;

    virtual void PLUGIN_API reserved18() = 0;

    /** Sets the value; with notify the host tells dependents, possibly before this call returns. */
    virtual void PLUGIN_API setInteger(int32 value, bool notify) = 0;
    static const FUID iid;
};

} // namespace Steinberg
