// Instrument: one simulated instrument. SimulatedLibrary and SimulatedUser share it.
#pragma once

#include "simulator/CallLog.h"
#include "simulator/ControllerLink.h"
#include "simulator/EditorObserver.h"
#include "simulator/InstrumentParameters.h"
#include "simulator/MidiLink.h"
#include "simulator/SimulatorControl.h"
#include "simulator/SoundState.h"
#include "simulator/UserBanks.h"

#include <array>
#include <atomic>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Observers hold it while they are attached, so it may outlive the object that the plug-in
    destroyed. [any thread, but where noted] */
class Instrument : public std::enable_shared_from_this<Instrument> {
public:
    Instrument();
    ~Instrument();
    Instrument(const Instrument&) = delete;
    Instrument& operator=(const Instrument&) = delete;

    /** @return false when the observer is not of this library, does not exist any more, or is
        already attached */
    bool addObserver(VstIObserver* observer);
    /** After this its callbacks are not called any more. @return false when it was not attached to
        this instrument */
    bool removeObserver(VstIObserver* observer);
    /** The end: detaches all observers, and calls neither controller nor processor from now on. */
    void letGo();

    /** The user turns a knob to each value in turn. @return false as SimulatorControl::turnKnob */
    bool turnKnob(uint32 id, const std::vector<int32>& newValues);

    /** Stores a value that the host automates; passHostValueOn asks the controller about it at the
        next tick. Waits for nothing. [audio thread] */
    void automate(uint32 id, double normalized);
    /** If the host has automated the parameter since the last call, asks the controller about the
        value. [host main thread] */
    void passHostValueOn(uint32 id);

    /** Selects a voice for the shown part, and reports its parameters as if the user had turned the
        knobs. @return false for an unknown voice */
    bool applyVoice(int32 bank, int32 number);

    // Changes that come from the instrument's own panel. The callbacks are called at once. [the
    // MIDI port's thread]
    void takeValue(size_t index, int32 value);
    /** @param part 0 to 15 @return false for an unknown voice */
    bool takeVoice(int32 part, int32 bank, int32 number);

    /** Stores a user bank. @return false for an unknown slot, and without data */
    bool applyUserBank(int32 bank, int32 number, std::vector<char> data);
    /** The newest calls of applyVoice and applyUserBank, oldest first. */
    std::vector<SimulatorControl::Applied> voicesApplied() const;
    std::vector<SimulatorControl::Applied> userBanksApplied() const;

    /** The whole sound, without the edit flag. */
    SoundState sound() const;
    /** Restores a sound. The controller stores the values without telling the host. Unknown
        parameters and slots are ignored. */
    void restore(const SoundState& state);
    /** Clears the edit flag, because the sound was stored or loaded. */
    void markUnedited();

    InstrumentParameters parameters;
    UserBanks userBanks;
    MidiLink midi{*this};
    ControllerLink controller;
    CallLog log;
    std::atomic<int32> shownPart{0};
    std::atomic<uint32> lastKnob{0}; ///< the parameter that the wheel turns; 0: none yet
    std::atomic<uint32> automationCount{0};
    std::atomic<uint32> channelsTold{0}; ///< calls of syncPartToMidiChannel
    std::atomic<int32> lastChannelTold{-1};

private:
    struct HostValue {
        std::atomic<double> normalized{0.};
        std::atomic<bool> waiting{false};
    };

    using AppliedList = std::deque<SimulatorControl::Applied>;

    using Raise = void (Instrument::*)(uint32 id, const Gesture& gesture);

    bool addGesture(uint32 id, const Gesture& gesture);
    void raiseLater(uint32 id, const Gesture& gesture) { addGesture(id, gesture); }
    void raiseNow(uint32 id, const Gesture& gesture);
    /** Sets the edit flag, and reports it if it was not set. */
    void markEdited(Raise raise);
    bool selectVoice(int32 part, int32 bank, int32 number, Raise raise);
    /** The part whose parameters have most of a voice's values; the user may have changed some of
        them. @return -1 when no part has more than half, and for an unknown voice */
    int32 partThatPlays(int32 bank, int32 number) const;
    void record(AppliedList& list, SimulatorControl::Applied applied);

    std::array<HostValue, InstrumentParameters::size> hostValues;
    mutable std::mutex observersMutex; ///< taken before the mutex of an observer
    std::vector<EditorObserver*> observers;
    mutable std::mutex voiceMutex; ///< guards everything below
    int32 voiceBank = -1;
    int32 voiceNumber = -1;
    AppliedList appliedVoices;
    AppliedList appliedUserBanks;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
