// DAWInfo: which application the host is, and its version.
#pragma once

#include "pluginterfaces/base/ftypes.h"

namespace Steinberg {

class IHostApplicationW;

namespace Vst {

/** Built on the stack, used and dropped. [host main thread] */
class DAWInfo {
public:
    /** Host types; the numbers are fixed, and not in the order of the products. */
    enum HostType : int32 {
        kCubaseLE = 0,
        kCubaseAI = 1,
        kCubaseEssential = 2, ///< Essential and Elements
        kCubaseStudio = 3,    ///< Studio and Artist
        kCubase = 4,
        kNuendo = 5,
        kUnknownHost = 6
    };

    /** @param host borrowed, no reference taken; must outlive this object. Null leaves everything
        unknown. */
    explicit DAWInfo(IHostApplicationW* host);
    virtual ~DAWInfo() = default;
    DAWInfo(const DAWInfo&) = delete;
    DAWInfo& operator=(const DAWInfo&) = delete;

    /** Reads the host's name and version. The versions go through the host of the constructor, so
        an object built without one learns the type only. A host without Unicode has no version.
        @return false for a null host */
    bool AnalyzeDAWInfo(IHostApplicationW* host);

    /** Reads "Version 7.5.20 Build 210" into the three fields, each as strtol reads it.
        @param text UTF-16 up to a zero unit. Without a dot behind its first digit it changes
        nothing, and with one dot only it sets the major version alone. */
    void SetVersionInfoFromString(const uint16* text);

    /** Compares the version, field by field, with the given one.
        @param major, minor, sub negative for a field that does not count
        @return 1 newer, 0 equal, -1 older; an unknown field is older than any given */
    int CompareVersion(int major, int minor, int sub) const;

    /** Index of the first digit 0 to 9 in a zero-terminated UTF-16 text, -1 without one or for
        null. */
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
