// LongInstance: one instance in a long session, and what its user does there.
#pragma once

#include "tests/endurance/LongHost.h"
#include "tools/common/Instance.h"
#include "tools/common/LoadedSimulator.h"

#include "public.sdk/source/vst/hosting/eventlist.h"
#include "public.sdk/source/vst/hosting/parameterchanges.h"

#include <random>

namespace endurance {

/** What went in and what came out. */
struct Counts {
    uint64_t blocks = 0;
    uint64_t notesIn = 0;    ///< note-ons and note-offs to the plug-in
    uint64_t notesOut = 0;   ///< through the event output
    uint64_t wrongNotes = 0; ///< those that are not the note that went in at their place
    uint64_t automation = 0;
    uint64_t gestures = 0;
    uint64_t presets = 0;
    uint64_t views = 0;
    uint64_t states = 0;   ///< saved and restored
    uint64_t failures = 0; ///< calls of the plug-in that did not answer as they must

    Counts& operator+=(const Counts& more);
};

/** Created, initialised, connected and active; the destructor goes all the way back. Its random
    choices follow from the seed, so that a run can be repeated. Throws when it cannot start. */
class LongInstance {
public:
    static constexpr int kBlockSize = 512; ///< samples
    static constexpr double kSampleRate = 48000;

    LongInstance(LongHost& longHost, unsigned seed);
    LongInstance(const LongInstance&) = delete;
    LongInstance& operator=(const LongInstance&) = delete;

    /** A block with notes and automation in it, and what came of it. */
    void playBlock();
    void turnKnob();
    void changePreset();
    void openAndCloseView();
    void saveAndRestore();
    /** Adds to failures whatever was lost on the way to the library. Once, at the end. */
    void settle();

    Counts counts;
    EditCounter edits;

private:
    void fillBlock();
    void checkOutput();
    void expect(bool condition) { counts.failures += condition ? 0 : 1; }
    int draw(int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); }
    Steinberg::Vst::ParamID drawKnob();

    LongHost& host;
    std::minstd_rand random;
    Steinberg::Vst::tools::Instance instance;
    Steinberg::Vst::SimulatorControl* user; ///< of the instrument behind it
    Steinberg::Vst::EventList in{64};
    Steinberg::Vst::EventList out{128};
    Steinberg::Vst::ParameterChanges changes{8};
    Steinberg::Vst::ProcessContext time = {};
};

} // namespace endurance
