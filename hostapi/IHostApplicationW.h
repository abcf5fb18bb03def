// IHostApplicationW: the host's name, version and character set, as hosts of the Cubase family and
// the maker's stand-alone host give them. queryInterface gives it on the host context.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

/** [any thread, between initialize and terminate: a change of a parameter asks for the character
    set on the library's thread] */
class IHostApplicationW : public FUnknown {
public:
    /** The application's name; borrowed, may be null. In a Unicode host UTF-16 up to a zero unit,
        else 8-bit text packed into the 16-bit units (see CharacterConvert), up to a zero byte. */
    virtual const char16* PLUGIN_API getApplicationName() = 0;

    /** The application's version, as "Version 7.5.20 Build 210"; borrowed, may be null, text
        as above. */
    virtual const char16* PLUGIN_API getVersionString() = 0;

    /** 0 (kResultOk) when the host's texts are Unicode, anything else when they are 8-bit texts. */
    virtual tresult PLUGIN_API getCharacterSet() = 0;
    static const FUID iid;
};

} // namespace Steinberg
