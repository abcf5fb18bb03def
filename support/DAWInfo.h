// DAWInfo: which application the host is, and its version.
#pragma once

#include "pluginterfaces/base/ftypes.h"

namespace Steinberg {

class IHostApplicationW;

namespace Vst {

/** Made on the stack for one question. [host main thread] */
class DAWInfo {
public:
    /** Host types. Their numbers are fixed and say nothing about which product is larger. */
    enum HostType : int32 {
        kCubaseLE = 0,
        kCubaseAI = 1,
        kCubaseEssential = 2, ///< Essential and Elements
        kCubaseStudio = 3,    ///< Studio and Artist
        kCubase = 4,
        kNuendo = 5,
        kUnknownHost = 6
    };

    /** Reads the host's name and version.
        @param host borrowed; must outlive this object. With null everything stays unknown */
    explicit DAWInfo(IHostApplicationW* host);
    virtual ~DAWInfo() = default;
    DAWInfo(const DAWInfo&) = delete;
    DAWInfo& operator=(const DAWInfo&) = delete;

    /** Reads this host's name and version. An object that was made without a host reads the name
        only. A host without Unicode has no version.
        @return false for a null host */
    bool AnalyzeDAWInfo(IHostApplicationW* host);

    /** Reads a version such as "Version 7.5.20 Build 210"; strtol reads each of the three fields.
        @param text UTF-16 up to a zero unit. Without a dot after its first digit nothing changes;
        with one dot only the major version is set */
    void SetVersionInfoFromString(const uint16* text);

    /** Compares the version, field by field, with the given one.
        @param major, minor, sub negative for a field that is not compared
        @return 1 newer, 0 equal, -1 older; an unknown field is older than any number */
    int CompareVersion(int major, int minor, int sub) const;

    /** Index of the first digit 0 to 9 in a zero-terminated UTF-16 text, -1 without one or
        for null. */
    int GetNumberStringIndex(const uint16* text) const;

    int32 getHostType() const { return hostType; }
    /** The version's fields; -1 when unknown. */
    int32 getMajorVersion() const { return majorVersion; }
    int32 getMinorVersion() const { return minorVersion; }
    int32 getSubVersion() const { return subVersion; }

private:
    IHostApplicationW* const host;
    int32 hostType = kUnknownHost;
    int32 majorVersion = -1;
    int32 minorVersion = -1;
    int32 subVersion = -1;
};

} // namespace Vst
} // namespace Steinberg
