#include "controller/TrackRouting.h"

#include "basics/CallGuard.h"
#include "controller/HostAndLibrary.h"
#include "controller/HostInterface.h"
#include "controller/RoutingCheck.h"
#include "editorlib/VstIEditorConnect.h"
#include "hostapi/IDevice.h"
#include "hostapi/IDeviceList.h"
#include "hostapi/IHostApplicationW.h"
#include "hostapi/IValue.h"
#include "support/DAWInfo.h"

#include <cstring>

namespace Steinberg {
namespace Vst {

namespace {

constexpr auto DeviceClassID = "Mixer";
constexpr auto MIDITrackType = "MidiChannel";
constexpr auto InstrumentTrackType = "Synth";
constexpr unsigned int kLastChannel = 15;
constexpr int32 kNoTrack = -1;

/** How deep requests for a part may be nested: one for each channel. Without a limit a library
    whose parts ask for each other would overflow the stack. */
constexpr int kMostPartRequests = 16;

/** Counts a call until it returns. */
class CallCount {
public:
    explicit CallCount(int& calls)
    : count(calls)
    {
        ++count;
    }
    ~CallCount() { --count; }
    CallCount(const CallCount&) = delete;
    CallCount& operator=(const CallCount&) = delete;

private:
    int& count;
};

/** Queries a value or device. A host without Unicode has other IDs for the same interfaces. */
template <class Interface>
IPtr<Interface> query(FUnknown& object, const TUID iid)
{
    void* result = nullptr;
    if (object.queryInterface(iid, &result) != kResultOk)
        return {};
    return owned(static_cast<Interface*>(result));
}

/** Whether both are the same object; false for a null object. */
bool isSame(const void* object, const void* field)
{
    return object && object == field;
}

} // namespace

TrackRouting::TrackRouting(const HostAndLibrary& hostAndLibrary, IDependent& observer)
: outside(hostAndLibrary)
, dependent(observer)
{
}

TrackRouting::~TrackRouting() = default;

void TrackRouting::readHostVersion()
{
    newHostVersion = false;
    const FUnknownPtr<IHostApplicationW> application(outside.hostContext.get());
    if (!application)
        return;
    const DAWInfo host(application);
    if (host.getHostType() == DAWInfo::kNuendo)
        newHostVersion = host.CompareVersion(6, 5, -1) >= 0;
    else if (host.getHostType() > DAWInfo::kCubaseLE)
        newHostVersion = host.CompareVersion(7, 5, -1) >= 0;
}

void TrackRouting::startObserving()
{
    const FUnknownPtr<IHostClasses> hostClasses(outside.hostContext.get());
    const auto deviceList = hostInterface<IDeviceList>(hostClasses);
    if (!deviceList)
        return;
    mixerDevice = deviceList->findDevice(DeviceClassID, 0);
    if (!mixerDevice)
        return;
    selectedTrackValue = owned(mixerDevice->getValue("selected"));
    if (!selectedTrackValue)
        return;
    const auto updateHandler = hostInterface<IUpdateHandler>(hostClasses);
    if (!updateHandler)
        return;
    // When the host throws for one, the other is still observed.
    guarded([&] { updateHandler->addDependent(mixerDevice, &dependent); });
    guarded([&] { updateHandler->addDependent(selectedTrackValue, &dependent); });
}

void TrackRouting::stopObserving(IUpdateHandler* updateHandler) noexcept
{
    const auto remove = [&](FUnknown* object) {
        if (object && updateHandler)
            guarded([&] { updateHandler->removeDependent(object, &dependent); });
    };
    const auto removeAndRelease = [&](IPtr<IValue>& value) {
        remove(value);
        const auto last = owned(value.take());
    };
    removeAndRelease(selectedTrackValue);
    remove(mixerDevice);
    mixerDevice = nullptr; // a borrowed pointer, so there is no reference to release
    removeAndRelease(midiOutputValue);
    removeAndRelease(midiChannelValue);
    trackCount = 0;
}

void TrackRouting::update(FUnknown* changedUnknown, int32 message)
{
    if (!changedUnknown)
        return;
    RoutingCheck routing(outside, newHostVersion);
    const bool isUnicode = routing.isUnicode();
    const auto value =
        query<IValue>(*changedUnknown, isUnicode ? IValue::iid.toTUID() : IValueNotUnicodeID);
    const auto device =
        query<IDevice>(*changedUnknown, isUnicode ? IDevice::iid.toTUID() : IDeviceNotUnicodeID);
    const FUnknownPtr<IHostClasses> hostClasses(outside.hostContext.get());
    if (!hostClasses)
        return;

    const bool isDestroyed = message == IDependent::kDestroyed;
    if (isSame(value, selectedTrackValue)) {
        if (!isDestroyed)
            selectedTrackChanged(hostClasses, routing);
    } else if (isSame(device, mixerDevice)) {
        if (!isDestroyed)
            mixerChanged(hostClasses);
    } else if (isSame(value, midiOutputValue)) {
        if (isDestroyed) {
            RemoveDependent_MIDIOutput(hostClasses);
            RemoveDependent_MIDIChannel(hostClasses);
        } else {
            midiOutputChanged(hostClasses, routing);
        }
    } else if (isSame(value, midiChannelValue) && !isDestroyed) {
        midiChSyncEditorPart();
    }
}

void TrackRouting::selectedTrackChanged(IHostClasses* hostClasses, RoutingCheck& routing)
{
    RemoveDependent_MIDIOutput(hostClasses);
    RemoveDependent_MIDIChannel(hostClasses);
    AddDependent_MIDIOutput(hostClasses, nullptr);
    followChannel(hostClasses, routing);
}

/** When tracks were removed, the observed one may be among them. */
void TrackRouting::mixerChanged(IHostClasses* hostClasses)
{
    if (trackCount > mixerDevice->countChildren()) {
        RemoveDependent_MIDIOutput(hostClasses);
        RemoveDependent_MIDIChannel(hostClasses);
    }
    trackCount = mixerDevice->countChildren();
}

void TrackRouting::midiOutputChanged(IHostClasses* hostClasses, RoutingCheck& routing)
{
    RemoveDependent_MIDIChannel(hostClasses);
    followChannel(hostClasses, routing);
}

/** If the selected track's output leads to this plug-in, observes its channel and shows
    that part. */
void TrackRouting::followChannel(IHostClasses* hostClasses, RoutingCheck& routing)
{
    if (!routing.isRoutedHere(midiOutputValue, getSelectedTrackDevice()))
        return;
    AddDependent_MIDIChannel(hostClasses, nullptr);
    midiChSyncEditorPart();
}

void TrackRouting::midiChSyncEditorPart() const
{
    VstIEditorConnect* connection = outside.library.getConnection();
    if (!midiChannelValue || !connection)
        return;
    const int32 channel = midiChannelValue->getInteger();
    guarded([&] { connection->syncPartToMidiChannel(channel); });
}

void TrackRouting::editorPartSyncMidiCh(unsigned int channel)
{
    if (partRequests == kMostPartRequests)
        return;
    const CallCount counted(partRequests);
    selectTrackOf(channel);
}

void TrackRouting::selectTrackOf(unsigned int channel)
{
    if (midiChannelValue && static_cast<unsigned int>(midiChannelValue->getInteger()) == channel)
        return;
    if (!mixerDevice || channel > kLastChannel || mixerDevice->countChildren() <= 0)
        return;
    const int32 track = findTrack(static_cast<int32>(channel));
    if (track != kNoTrack && selectedTrackValue)
        selectedTrackValue->setInteger(track, true);
}

/** Index of the first track that plays on channel through this plug-in; kNoTrack when there
    is none. */
int32 TrackRouting::findTrack(int32 channel) const
{
    RoutingCheck routing(outside, newHostVersion);
    for (int32 index = 0; index < mixerDevice->countChildren(); ++index) {
        IDevice* track = mixerDevice->getChild(index);
        if (!track || !qualifies(*track))
            continue;
        const auto output = owned(track->getValue("output"));
        if (!routing.isRoutedHere(output, track))
            continue;
        const auto trackChannel = owned(track->getValue("channel"));
        if (trackChannel && trackChannel->getInteger() == channel)
            return index;
    }
    return kNoTrack;
}

bool TrackRouting::CheckMIDIOutputRouting(IValue* output, IDevice* track)
{
    return RoutingCheck(outside, newHostVersion).isRoutedHere(output, track);
}

bool TrackRouting::isSameIValueString(IValue* value, const std::string& text)
{
    return RoutingCheck(outside, newHostVersion).containsText(value, text);
}

IDevice* TrackRouting::getSelectedTrackDevice() const
{
    if (!selectedTrackValue || !mixerDevice) // untaken: both-or-none
        return nullptr;
    const int32 index = selectedTrackValue->getInteger();
    return index < 0 ? nullptr : mixerDevice->getChild(index);
}

bool TrackRouting::qualifies(IDevice& track) const
{
    const char* type = track.getDeviceType();
    return type && (std::strcmp(type, MIDITrackType) == 0 ||
                    (newHostVersion && std::strcmp(type, InstrumentTrackType) == 0));
}

void TrackRouting::AddDependent_MIDIOutput(IHostClasses* hostClasses, IDevice* track)
{
    observe(midiOutputValue, "output", hostClasses, track);
}

void TrackRouting::AddDependent_MIDIChannel(IHostClasses* hostClasses, IDevice* track)
{
    observe(midiChannelValue, "channel", hostClasses, track);
}

void TrackRouting::observe(IPtr<IValue>& value, const char* name, IHostClasses* hostClasses,
                           IDevice* track)
{
    if (!hostClasses || value)
        return;
    IDevice* observed = track ? track : getSelectedTrackDevice();
    if (!observed || !qualifies(*observed))
        return;
    value = owned(observed->getValue(name));
    if (!value)
        return;
    if (const auto updateHandler = hostInterface<IUpdateHandler>(hostClasses))
        updateHandler->addDependent(value, &dependent);
}

void TrackRouting::RemoveDependent_MIDIOutput(IHostClasses* hostClasses)
{
    endObservation(midiOutputValue, hostClasses);
}

void TrackRouting::RemoveDependent_MIDIChannel(IHostClasses* hostClasses)
{
    endObservation(midiChannelValue, hostClasses);
}

void TrackRouting::endObservation(IPtr<IValue>& value, IHostClasses* hostClasses)
{
    if (!hostClasses || !value)
        return;
    const auto updateHandler = hostInterface<IUpdateHandler>(hostClasses);
    if (!updateHandler)
        return;
    updateHandler->removeDependent(value, &dependent);
    const auto last = owned(value.take());
}

} // namespace Vst
} // namespace Steinberg
