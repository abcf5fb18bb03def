// TrackRouting: keeps the part that the editor shows and the host's selected track the same, by
// observing the host's mixer and the values of the selected track.
#pragma once

#include "pluginterfaces/base/ftypes.h"
#include "pluginterfaces/base/iupdatehandler.h"
#include "pluginterfaces/base/smartpointer.h"

#include <string>

namespace Steinberg {

class IDevice;
class IHostClasses;
class IValue;

namespace Vst {

class RoutingCheck;
struct HostAndLibrary;

/** Does the work of VstK2xController's operations of the same names.

    When an object of the host is missing, the operation ends without an error. No locks: [host
    main thread, the update handler's thread, or the library's; one at a time]. Where nothing else
    is said, an operation may throw std::bad_alloc and what the host throws; the controller
    catches it. */
class TrackRouting {
public:
    /** Both must outlive this object.
        @param observer is told of changes by the host, and must pass them on to update */
    TrackRouting(const HostAndLibrary& hostAndLibrary, IDependent& observer);
    ~TrackRouting();
    TrackRouting(const TrackRouting&) = delete;
    TrackRouting& operator=(const TrackRouting&) = delete;

    /** Reads the host's version, which decides how routing is read and whether instrument tracks
        are followed. initialize calls it before startObserving. */
    void readHostVersion();

    /** Finds the host's mixer and its "selected" value, and observes both. Called by initialize. */
    void startObserving();

    /** Stops observing and releases the host's values. Goes through all steps even when one fails.
        Called by terminate.
        @param updateHandler the host's; null: the values are only released */
    void stopObserving(IUpdateHandler* updateHandler) noexcept;

    /** The host tells that an observed object changed.
        @param changedUnknown borrowed; null does nothing
        @param message an IDependent::ChangeMessage; all but kDestroyed count as a change */
    void update(FUnknown* changedUnknown, int32 message);

    /** Makes the host select the first track that plays on channel through this plug-in, unless the
        selected track does. The host may call update before this returns, and the library may then
        call this again. Does nothing for a channel above 15, and inside sixteen nested calls. */
    void editorPartSyncMidiCh(unsigned int channel);

    /** If the selected track's channel is observed, has the editor show the part of
        that channel. */
    void midiChSyncEditorPart() const;

    /** Whether a track's MIDI goes to this plug-in. For an older host the text of output decides,
        for a newer one the instrument that is connected to track. Either may be null. */
    bool CheckMIDIOutputRouting(IValue* output, IDevice* track);

    /** The host's selected track, borrowed; null when there is none. */
    IDevice* getSelectedTrackDevice() const;

    /** Observes the "output" or the "channel" value of a track. Does nothing when one is observed
        already, or when the track is no MIDI track (in a newer host: nor an instrument track).
        @param track null for the selected track */
    void AddDependent_MIDIOutput(IHostClasses* hostClasses, IDevice* track);
    void AddDependent_MIDIChannel(IHostClasses* hostClasses, IDevice* track);

    /** Stops observing and releases the value. Without the host's update handler
        nothing happens. */
    void RemoveDependent_MIDIOutput(IHostClasses* hostClasses);
    void RemoveDependent_MIDIChannel(IHostClasses* hostClasses);

    /** Whether text occurs in the value's text. It need not be the same, in spite of the name. */
    bool isSameIValueString(IValue* value, const std::string& text);

    bool isNewHostVersion() const { return newHostVersion; }

private:
    bool qualifies(IDevice& track) const;
    void observe(IPtr<IValue>& value, const char* name, IHostClasses* hostClasses, IDevice* track);
    void endObservation(IPtr<IValue>& value, IHostClasses* hostClasses);
    void selectedTrackChanged(IHostClasses* hostClasses, RoutingCheck& routing);
    void mixerChanged(IHostClasses* hostClasses);
    void midiOutputChanged(IHostClasses* hostClasses, RoutingCheck& routing);
    void followChannel(IHostClasses* hostClasses, RoutingCheck& routing);
    void selectTrackOf(unsigned int channel);
    int32 findTrack(int32 channel) const;

    const HostAndLibrary& outside;
    IDependent& dependent;
    bool newHostVersion = false;    ///< Nuendo 6.5, Cubase 7.5 or later
    IDevice* mixerDevice = nullptr; ///< borrowed from findDevice, never released
    IPtr<IValue> selectedTrackValue;
    IPtr<IValue> midiOutputValue;
    IPtr<IValue> midiChannelValue;
    int32 trackCount = 0; ///< the mixer's children when it last changed
    int partRequests = 0; ///< nested calls of editorPartSyncMidiCh
};

} // namespace Vst
} // namespace Steinberg
