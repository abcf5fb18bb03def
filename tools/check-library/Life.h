// Life: one use of the editor library, from loading to destroy(), as by an instance of the plug-in.
#pragma once

#include "tools/check-library/MirroredParameters.h"
#include "tools/check-library/StandIn.h"
#include "tools/check-library/WatchedLibrary.h"
#include "tools/common/LibraryHandle.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

/** The loaded file; empty when it does not load. The journal names its loading and unloading. */
class WatchedFile {
public:
    /** @param mode of dlopen */
    WatchedFile(const std::string& path, Journal& newJournal, int mode);
    ~WatchedFile();
    WatchedFile(const WatchedFile&) = delete;
    WatchedFile& operator=(const WatchedFile&) = delete;

    const tools::LibraryHandle& operator*() const { return *file; }
    const tools::LibraryHandle* operator->() const { return &*file; }

private:
    Journal& journal;
    std::optional<tools::LibraryHandle> file; ///< made while the journal names its loading
};

/** Exceptions of the library end only the call that they came from, as in the plug-in; the journal
    tells them. [the step's own thread] */
class Life {
public:
    /** Loads the library, connects and starts it.
        @throws Failure when it gives no connection */
    Life(const std::string& file, Journal& newJournal);
    /** Ends it, in the plug-in's order. */
    ~Life();
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;

    WatchedLibrary& library() { return *watched; }
    StandIn& plugIn() { return standIn; }

    /** Has the library watch a parameter, if it can. @return whether it gave an observer */
    bool observe(const MirroredParameter& parameter);
    /** The same for all parameters, each with its range and its value. */
    void observeAll();
    /** What the plug-in's timer does, several times. */
    void tick(int times = 1);

    /** Sends a parameter's new value, 0 to 1, as the plug-in's processor does: on an audio thread,
        which ends with the call. */
    void automate(unsigned id, double value);
    /** Sends a note-on and its note-off in the same way. */
    void playNote(uint8 pitch);

    void giveEffect();
    /** Takes back what the library uses of the plug-in, and removes and destroys the observers. */
    void takeBack();
    /** Ends the connection, after takeBack. The library stays loaded for this object's life. */
    void destroy();
    /** Forgets a connection that another life has too and will end. */
    void leaveToOther();

private:
    template <typename Call>
    static void onAudioThread(Call&& call);

    Journal& journal;
    StandIn standIn; ///< outlives the library, which may call back to its end
    WatchedFile handle;
    std::optional<WatchedLibrary> watched; ///< until destroy
    std::vector<std::pair<unsigned, VstIObserver*>> observers;
    bool hasEffect = false;
    bool isTakenBack = false;
};

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
