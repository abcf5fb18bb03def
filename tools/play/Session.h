// Session: one run of play, from the command line's wishes to the report.
#pragma once

#include "tools/common/Instance.h"
#include "tools/play/Host.h"
#include "tools/play/live/Keyboard.h"
#include "tools/play/live/PortWish.h"
#include "tools/play/music/Automation.h"
#include "tools/play/music/Song.h"
#include "tools/play/Options.h"
#include "tools/play/output/Report.h"
#include "tools/play/plugin/ParameterList.h"
#include "tools/play/user/BankStore.h"
#include "tools/play/user/UserTurns.h"

#include <iosfwd>
#include <memory>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** Loads the plug-in into the host that the options ask for and holds one instance of it.
    [host main thread] */
class Session {
public:
    /** @throws Failure, as everything here does for what its user can mend */
    explicit Session(const Options& options);

    /** What the plug-in shows its host. */
    ParameterList parameters() { return ParameterList(instance.controller()); }

    /** What the options ask for about ports and tracks, done now. */
    StudioReport studio();

    /** Plays the song, tries the state on a second instance and writes the files.
        @param terminal where to draw progress; null for nowhere */
    Report play(const Song& song, std::ostream* terminal);

private:
    PortsReport ports();
    void loadPresetInto(Report& report);
    void storeBanksInto(Report& report);
    void prepareControl();
    SimulatorControl& simulatorTo(const std::string& deed) const;
    void playSong(const Song& song, Report& report, std::ostream* terminal);
    void waitForPort();
    void waitUntilAllLeft();
    /** Has the synthesizer choose the sounds of the song's next block: a host sends the plug-in no
        program changes. */
    void choosePrograms(const Song& song, int64 position);
    void describe(Report& report);
    void addControl(Report& report);
    void addLibrarySide(Report& report);
    void tryState(Report& report);
    void writeFiles(const Song& song, Report& report) const;

    Options options;
    Host host;
    tools::PlugIn plugIn;
    PortWish portWish; ///< of the instance that follows
    tools::Instance instance;
    ParameterList list;
    SimulatorControl* simulator; ///< of this instance; null for another library
    std::string binding;
    std::vector<Automation> automations;
    std::vector<UserTurns> turns;
    std::vector<BankPlace> banksToStore;
    std::unique_ptr<Keyboard> keyboard; ///< live, where one is asked for
    size_t nextProgram = 0;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
