// IHostPort: one port of the host's IPortRegistry. Never reference counted by the plug-in.
// Returned texts are borrowed, zero-terminated, and may be null: UTF-16 in a Unicode host, else
// 8-bit text packed into the 16-bit units.
#pragma once

#include "base/source/fstring.h"
#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

/** [host main thread, or the library's thread in a port operation; from initialize to terminate] */
class IHostPort : public FUnknown {
public:
    /** Reads the port's ID into out, as wide text in a Unicode host, else as 8-bit text.
        @return false when the port has none; out must then not be used */
    virtual bool PLUGIN_API getPortId(StringObject& out) = 0;

    /** Whether the port carries this type of data: "audio" or "midi". */
    virtual bool PLUGIN_API isPortType(const char* type) = 0;

    /** Whether the port has this attribute: "virtual" or "proxy". */
    virtual bool PLUGIN_API hasPortAttribute(const char* attribute) = 0;

    /** True for a port that brings signal into the computer. */
    virtual bool PLUGIN_API isInputPort() = 0;

    /** The name that the driver gives the port. */
    virtual const char16* PLUGIN_API getSystemName() = 0;

    virtual void PLUGIN_API reserved8() = 0;

    /** The name that the user sees. */
    virtual const char16* PLUGIN_API getDisplayName() = 0;

    virtual void PLUGIN_API reserved10() = 0;

    /** Whether the host shows the port in its own lists. */
    virtual bool PLUGIN_API isDisplayed() = 0;

    /** Shows (true) or hides (false) the port in the host's own lists. */
    virtual void PLUGIN_API setDisplayed(bool state) = 0;
    static const FUID iid;
};

} // namespace Steinberg
