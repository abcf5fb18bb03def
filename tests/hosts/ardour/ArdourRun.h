// ArdourRun: Ardour without a window: a scan, a session recorded, and the saved session loaded
// twice in processes of their own.
#pragma once

#include "tests/simulator/CommandOutput.h"
#include "tests/tools/ScratchFolder.h"

#include <map>
#include <string>
#include <vector>

namespace hosts {

/** What one script printed, and the simulator's report of that time. */
struct ArdourSession {
    using Values = std::vector<std::string>;

    doubles::CommandOutput output;
    std::multimap<std::string, Values> facts; ///< by name, in order
    std::vector<std::string> report;          ///< lines, as InstrumentReport writes them

    /** The values of each fact with this name. */
    std::vector<Values> all(const std::string& fact) const;
    /** The printed lines that are no facts. */
    std::string messages() const;
    /** The value of the report's line "NAME VALUE"; empty unless there is exactly one. */
    std::string reported(const std::string& name) const;
    /** The report's lines "parameter ID VALUE". */
    Values parameters() const;
    size_t count(const std::string& line) const;
};

/** Runs all of it when constructed, in a home folder that is removed with this object. */
class ArdourRun {
public:
    ArdourRun();

    std::string version; ///< "Ardour 7.3.0~ds0"
    doubles::CommandOutput scan;
    std::string cache;      ///< what the scan wrote into Ardour's cache
    ArdourSession recorded; ///< record.lua
    ArdourSession inactive; ///< load.lua, of the session saved with the plug-in switched off
    ArdourSession active;   ///< load.lua, of the session saved with the plug-in running

private:
    doubles::ScratchFolder folder;

    doubles::CommandOutput command(const std::string& words) const;
    ArdourSession session(const std::string& script, const std::string& snapshot) const;
    std::string cacheText() const;
};

} // namespace hosts
