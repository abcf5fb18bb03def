// Instrument: one simulated instrument, shared by the library's face and the user's face.
#pragma once

#include "simulator/CallLog.h"
#include "simulator/ControllerLink.h"
#include "simulator/EditorObserver.h"
#include "simulator/MidiLink.h"
#include "simulator/ParameterModel.h"
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

/** Observers hold it while they are attached, so it may outlive the object that the plug-in ended.
    [any thread, but where noted] */
class Instrument : public std::enable_shared_from_this<Instrument> {
public:
    Instrument();
    ~Instrument();
    Instrument(const Instrument&) = delete;
    Instrument& operator=(const Instrument&) = delete;

    /** @return false unless the pointer is a living observer of this library, not attached yet */
    bool addObserver(VstIObserver* observer);
    /** @return false unless it was attached to this instrument. Nothing is raised afterwards. */
    bool removeObserver(VstIObserver* observer);
    /** The end: no observer, no controller, no effect from now on. */
    void letGo();

    /** The user moves a knob to each value in turn. @return false: see SimulatorControl::turnKnob
     */
    bool turnKnob(uint32 id, const std::vector<int32>& newValues);

    /** Takes a host's value over at once; the controller is asked about it at the next tick. Waits
        for nothing. [audio thread] */
    void automate(uint32 id, double normalized);
    /** Asks the controller about the last automated value of a parameter, if one came. [host main
        thread] */
    void passHostValueOn(uint32 id);

    /** Selects a voice for the shown part, whose parameters move as if by hand.
        @return false for an unknown voice */
    bool applyVoice(int32 bank, int32 number);
    /** The same from the instrument's own panel: a value of a parameter, and a voice for any part.
        The callbacks are raised at once. [the MIDI port's thread] */
    void takeValue(size_t index, int32 value);
    bool takeVoice(int32 part, int32 bank, int32 number);
    /** @return false for what is no slot, or without data */
    bool applyUserBank(int32 bank, int32 number, std::vector<char> data);
    /** The newest calls of these two, oldest first. */
    std::vector<SimulatorControl::Applied> voicesApplied() const;
    std::vector<SimulatorControl::Applied> userBanksApplied() const;

    /** The whole sound; the edit flag is no part of it. */
    SoundState sound() const;
    /** Restores it. The controller takes the values over without telling the host, which gave them.
        Unknown parameters and slots are passed over. */
    void restore(const SoundState& state);
    /** The sound was stored or loaded: the edit flag falls. */
    void markUnedited();

    ParameterModel parameters;
    UserBanks userBanks;
    MidiLink midi{*this};
    ControllerLink controller;
    CallLog log;
    std::atomic<int32> shownPart{0};
    std::atomic<uint32> lastKnob{0}; ///< what the wheel turns; 0 before any knob was turned
    std::atomic<uint32> automationCount{0};
    std::atomic<uint32> channelsTold{0}; ///< by the plug-in, as those that a track plays on
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
    /** The edit flag rises, unless it is up. */
    void markEdited(Raise raise);
    bool selectVoice(int32 part, int32 bank, int32 number, Raise raise);
    /** The part that has most of a voice's values, of which the user may have moved some since.
        @return -1 where none has, and for an unknown voice */
    int32 partThatPlays(int32 bank, int32 number) const;
    void record(AppliedList& list, SimulatorControl::Applied applied);

    std::array<HostValue, ParameterModel::size> hostValues;
    mutable std::mutex observersMutex; ///< taken before an observer's own
    std::vector<EditorObserver*> observers;
    mutable std::mutex voiceMutex; ///< guards all below
    int32 voiceBank = -1;
    int32 voiceNumber = -1;
    AppliedList appliedVoices;
    AppliedList appliedUserBanks;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
