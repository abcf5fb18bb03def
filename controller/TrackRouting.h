// TrackRouting: keeps the editor's part and the host's selected track in step, by observing the
// host's mixer and the values of its selected track.
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

/** Each operation is VstK2xController's operation of the same name.

    A missing host object ends the step, and nobody is told. No locks: [host main thread, the update
    handler's or the library's; one at a time], so update and editorPartSyncMidiCh are expected not
    to run at the same time. Where nothing else is said an operation may throw std::bad_alloc or
    what the host throws; who calls it for the host or the library stops that. */
class TrackRouting {
public:
    /** Both outlive this object.
        @param observer whom the host tells of changes; it passes them on to update */
    TrackRouting(const HostAndLibrary& hostAndLibrary, IDependent& observer);
    ~TrackRouting();
    TrackRouting(const TrackRouting&) = delete;
    TrackRouting& operator=(const TrackRouting&) = delete;

    /** Reads the host's version, on which it depends how instrument tracks are followed. Called by
        initialize, first. */
    void readHostVersion();

    /** Finds the host's mixer and its "selected" value and observes both. Called by initialize. */
    void startObserving();

    /** Ends every observation and lets go of the host's values, whatever of it fails. Called by
        terminate.
        @param updateHandler the host's, or null: the values are then only let go */
    void stopObserving(IUpdateHandler* updateHandler) noexcept;

    /** A host object that we observe changed.
        @param changedUnknown borrowed; null does nothing
        @param message an IDependent::ChangeMessage; only kDestroyed differs from the others */
    void update(FUnknown* changedUnknown, int32 message);

    /** Makes the host select the first track that plays on channel (0 to 15, else nothing happens)
        through this plug-in, unless the selected one does. The host may call update from inside,
        and a library that hears of the track there may ask for another part at once. A call from
        inside sixteen others does nothing. */
    void editorPartSyncMidiCh(unsigned int channel);

    /** Shows the editor's part of the selected track's channel, when that is observed. */
    void midiChSyncEditorPart() const;

    /** Whether a track's MIDI goes to this plug-in: an older host says so in the text of output, a
        newer one by the instrument that feeds track. Either may be null. */
    bool CheckMIDIOutputRouting(IValue* output, IDevice* track);

    /** The host's selected track, borrowed, or null. */
    IDevice* getSelectedTrackDevice() const;

    /** Observes the "output" or the "channel" value of a track that we follow, unless one is
        observed already. @param track null for the selected track */
    void AddDependent_MIDIOutput(IHostClasses* hostClasses, IDevice* track);
    void AddDependent_MIDIChannel(IHostClasses* hostClasses, IDevice* track);

    /** Ends it; without the host's update handler the value stays. */
    void RemoveDependent_MIDIOutput(IHostClasses* hostClasses);
    void RemoveDependent_MIDIChannel(IHostClasses* hostClasses);

    /** Whether text occurs in the value's text: containment in spite of its name, kept so. */
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
    bool newHostVersion = false; ///< Nuendo 6.5, Cubase 7.5 or later: instrument tracks count too
    IDevice* mixerDevice = nullptr; ///< borrowed from findDevice, hence never released
    IPtr<IValue> selectedTrackValue;
    IPtr<IValue> midiOutputValue;
    IPtr<IValue> midiChannelValue;
    int32 trackCount = 0; ///< the mixer's children when last seen
    int partRequests = 0; ///< calls of editorPartSyncMidiCh that are under way
};

} // namespace Vst
} // namespace Steinberg
