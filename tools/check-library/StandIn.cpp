#include "tools/check-library/StandIn.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

thread_local bool isAudioThread = false;

/** All objects there are: the context of a callback is an address that need not be of one. */
struct LiveStandIns {
    std::mutex mutex;
    std::set<void*> objects;
    std::string stray; ///< the callback that came with another address; empty for none
};

LiveStandIns& liveStandIns()
{
    static LiveStandIns instance;
    return instance;
}

int32 cutToInt32(double value)
{
    constexpr double low = std::numeric_limits<int32>::min();
    constexpr double high = std::numeric_limits<int32>::max();
    return static_cast<int32>(value > low ? std::min(value, high) : low);
}

std::string nameOf(unsigned id)
{
    return "parameter " + std::to_string(id);
}

} // namespace

AudioThreadMark::AudioThreadMark()
{
    isAudioThread = true;
}

AudioThreadMark::~AudioThreadMark()
{
    isAudioThread = false;
}

StandIn::StandIn()
{
    auto& live = liveStandIns();
    const std::lock_guard<std::mutex> guard(live.mutex);
    live.objects.insert(this);
}

StandIn::~StandIn()
{
    auto& live = liveStandIns();
    const std::lock_guard<std::mutex> guard(live.mutex);
    live.objects.erase(this);
}

// The mirror ---------------------------------------------------------------------------------

void StandIn::mirror(unsigned id, int32 minimum, int32 maximum, int32 value)
{
    const std::lock_guard<std::mutex> guard(mutex);
    parameters[id] = {minimum, maximum, value};
}

void StandIn::refresh(unsigned id, int32 value)
{
    const std::lock_guard<std::mutex> guard(mutex);
    parameters[id].value = value;
}

int32 StandIn::mirrored(unsigned id) const
{
    const std::lock_guard<std::mutex> guard(mutex);
    const auto found = parameters.find(id);
    return found == parameters.end() ? 0 : found->second.value;
}

double StandIn::normalized(unsigned id) const
{
    const std::lock_guard<std::mutex> guard(mutex);
    const auto found = parameters.find(id);
    if (found == parameters.end() || found->second.minimum >= found->second.maximum)
        return 0;
    const double span = static_cast<double>(found->second.maximum) - found->second.minimum;
    return std::clamp((static_cast<double>(found->second.value) - found->second.minimum) / span, 0.,
                      1.);
}

// What was seen ------------------------------------------------------------------------------

size_t StandIn::otherThreads() const
{
    const std::lock_guard<std::mutex> guard(mutex);
    return callbackThreads.size() - callbackThreads.count(ownThread);
}

std::vector<std::string> StandIn::faults() const
{
    std::vector<std::string> all;
    const std::lock_guard<std::mutex> guard(mutex);
    for (const auto& fault : faultsByKind)
        all.push_back(fault.second);
    for (const auto& parameter : parameters)
        if (parameter.second.isBeingEdited) {
            all.push_back("begins an edit of " + nameOf(parameter.first) +
                          " that it never ends: the host takes the knob for held");
            break;
        }
    auto& live = liveStandIns();
    const std::lock_guard<std::mutex> liveGuard(live.mutex);
    if (!live.stray.empty())
        all.push_back("calls back (" + live.stray +
                      ") with another context than the owner that it was given");
    return all;
}

void StandIn::noteFault(const std::string& kind, const std::string& words)
{
    const std::lock_guard<std::mutex> guard(mutex);
    faultsByKind.emplace(kind, words);
}

void StandIn::noteAudioThread(const char* operation)
{
    if (isAudioThread)
        noteFault("audio thread", std::string("calls ") + operation +
                                      " from inside a call on the audio thread, where it may "
                                      "wait for the host or for a disk");
}

void StandIn::noteUse(const char* operation, OnAudioThread where)
{
    if (controllerIsAway)
        noteFault("controller away", std::string("calls ") + operation +
                                         " after setControllerInterface (null) took the "
                                         "controller back");
    if (where == OnAudioThread::mustNotBe)
        noteAudioThread(operation);
}

// The observers' callbacks -------------------------------------------------------------------

StandIn* StandIn::find(void* context, const char* callback)
{
    auto& live = liveStandIns();
    const std::lock_guard<std::mutex> guard(live.mutex);
    if (live.objects.count(context) != 0)
        return static_cast<StandIn*>(context);
    live.stray = callback;
    return nullptr;
}

void StandIn::callBack(void* context, unsigned id, const char* callback, const Judge& judge)
{
    auto* standIn = find(context, callback);
    if (!standIn)
        return;
    if (standIn->observersAreAway)
        standIn->noteFault("observers away",
                           std::string("calls back (") + callback +
                               ") after its observers were removed and destroyed");
    standIn->noteAudioThread(callback);
    const std::lock_guard<std::mutex> guard(standIn->mutex);
    standIn->callbackThreads.insert(std::this_thread::get_id());
    const auto found = standIn->parameters.find(id);
    if (found == standIn->parameters.end())
        standIn->faultsByKind.emplace("unknown parameter", std::string("calls back (") + callback +
                                                               ") for " + nameOf(id) +
                                                               ", of which it has no observer");
    else
        judge(*standIn, found->second);
}

void StandIn::valueChanged(void* context, unsigned id, int value)
{
    callBack(context, id, "valueChanged", [&](StandIn& standIn, Parameter& parameter) {
        ++standIn.values;
        if (value < parameter.minimum || value > parameter.maximum)
            standIn.faultsByKind.emplace("value outside", "changes " + nameOf(id) + " to " +
                                                              std::to_string(value) +
                                                              ", which is outside its range");
        parameter.value = value;
    });
}

void StandIn::beginEdit(void* context, unsigned id)
{
    callBack(context, id, "beginEdit", [&](StandIn& standIn, Parameter& parameter) {
        if (std::exchange(parameter.isBeingEdited, true))
            standIn.faultsByKind.emplace("begun twice", "begins an edit of " + nameOf(id) +
                                                            " while another one of it is open");
    });
}

void StandIn::endEdit(void* context, unsigned id)
{
    callBack(context, id, "endEdit", [&](StandIn& standIn, Parameter& parameter) {
        if (!std::exchange(parameter.isBeingEdited, false))
            standIn.faultsByKind.emplace("not begun",
                                         "ends an edit of " + nameOf(id) + " that it never began");
    });
}

// VstIControllerInterface --------------------------------------------------------------------

std::vector<VSTiAudioPort::AudioPortInfo>* StandIn::getAudioPortList()
{
    noteUse("getAudioPortList", OnAudioThread::mustNotBe);
    return SilentController::getAudioPortList();
}

void StandIn::setAudioPortList(const char** /*ids*/)
{
    noteUse("setAudioPortList", OnAudioThread::mustNotBe);
}

std::vector<VSTiMidiPort::MidiOutPortInfo>* StandIn::getMidiOutPortList()
{
    noteUse("getMidiOutPortList", OnAudioThread::mustNotBe);
    return SilentController::getMidiOutPortList();
}

void StandIn::setMidiOutPort(const char* /*id*/)
{
    noteUse("setMidiOutPort", OnAudioThread::mustNotBe);
}

void StandIn::editorPartSyncMidiCh(unsigned int /*channel*/)
{
    noteUse("editorPartSyncMidiCh", OnAudioThread::mustNotBe);
}

void StandIn::storeUserBank(VoiceBank::Bank /*bank*/, int /*index*/)
{
    noteUse("storeUserBank", OnAudioThread::mustNotBe);
}

void StandIn::setVSTManageParameter(unsigned int id, int value)
{
    noteUse("setVSTManageParameter", OnAudioThread::mayBe);
    const std::lock_guard<std::mutex> guard(mutex);
    const auto found = parameters.find(id);
    if (found != parameters.end())
        found->second.value = value;
}

void StandIn::setInitialStartFileLoad(bool /*state*/)
{
    noteUse("setInitialStartFileLoad", OnAudioThread::mayBe);
}

bool StandIn::isConnectAudioPort()
{
    noteUse("isConnectAudioPort", OnAudioThread::mayBe);
    return false;
}

bool StandIn::isSetVSTValue(unsigned int id, double value, int& out)
{
    noteUse("isSetVSTValue", OnAudioThread::mayBe);
    out = 0;
    const std::lock_guard<std::mutex> guard(mutex);
    const auto found = parameters.find(id);
    if (found == parameters.end())
        return false;
    auto& parameter = found->second;
    const auto span = static_cast<double>(parameter.maximum) - parameter.minimum;
    const auto asked = cutToInt32(parameter.minimum + (span * value + 0.5));
    if (asked == parameter.value)
        return false;
    parameter.value = out = asked;
    return true;
}

void StandIn::changeLatencyTrigger()
{
    noteUse("changeLatencyTrigger", OnAudioThread::mustNotBe);
}

bool StandIn::isConnectAudioPortHost()
{
    noteUse("isConnectAudioPortHost", OnAudioThread::mayBe);
    return true; // as in every host of no special family
}

bool StandIn::isHostReadyForSetPort()
{
    noteUse("isHostReadyForSetPort", OnAudioThread::mayBe);
    return false;
}

// VstIEffectInterface ------------------------------------------------------------------------

void StandIn::writeMidi(const void* data, int length)
{
    constexpr int kTaken = 3;
    if (effectIsAway)
        noteFault("effect away",
                  "calls writeMidi after setEffectInterface (null) took the processor back");
    ++(data && length == kTaken ? messages : dropped);
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
