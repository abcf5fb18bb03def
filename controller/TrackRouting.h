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

class ControllerContext;

/** Each operation is VstK2xController's operation of the same name. No locks: update and
    editorPartSyncMidiCh are expected not to run at the same time. */
class TrackRouting {
public:
    /** @param owner outlives this object */
    explicit TrackRouting(ControllerContext& owner);
    ~TrackRouting();
    TrackRouting(const TrackRouting&) = delete;
    TrackRouting& operator=(const TrackRouting&) = delete;

    /** Reads the host's version, on which it depends how instrument tracks are followed. */
    void readHostVersion();

    /** Finds the host's mixer and its "selected" value and observes both. Called by initialize. */
    void startObserving();

    /** Ends every observation and lets go of the host's values. Called by terminate.
        @param updateHandler the host's, or null: the values are then only let go */
    void stopObserving(IUpdateHandler* updateHandler);

    void update(FUnknown* changedUnknown, int32 message);
    void editorPartSyncMidiCh(unsigned int channel);
    void midiChSyncEditorPart() const;

    bool CheckMIDIOutputRouting(IValue* output, IDevice* track);
    IDevice* getSelectedTrackDevice() const;
    void AddDependent_MIDIOutput(IHostClasses* hostClasses, IDevice* track);
    void AddDependent_MIDIChannel(IHostClasses* hostClasses, IDevice* track);
    void RemoveDependent_MIDIOutput(IHostClasses* hostClasses);
    void RemoveDependent_MIDIChannel(IHostClasses* hostClasses);
    bool isSameIValueString(IValue* value, const std::string& text);

    bool isNewHostVersion() const { return newHostVersion; }

private:
    ControllerContext& context;
    bool newHostVersion = false; ///< Nuendo 6.5, Cubase 7.5 or later: instrument tracks count too
    IDevice* mixerDevice = nullptr; ///< borrowed from findDevice, hence never released
    IPtr<IValue> selectedTrackValue;
    IPtr<IValue> midiOutputValue;
    IPtr<IValue> midiChannelValue;
    int32 trackCount = 0;
};

} // namespace Vst
} // namespace Steinberg
