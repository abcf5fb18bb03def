// The host's tracks, its instrument rack and its ports.
#include "hostapi/IBusDescriptor.h"
#include "hostapi/IComponentPortHandler.h"
#include "tests/bench/growth/Growth.h"
#include "tests/bench/growth/LeanRack.h"
#include "tests/bench/Instance.h"
#include "tests/bench/LeanStudio.h"

#include <cmath>
#include <stdexcept>

namespace bench::growth {

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

/** A search that finds the last of all tracks. */
double search(LeanHost& host, LeanMixer& mixer)
{
    Instance instance(host);
    VstIControllerInterface& controller = instance.controller();
    const double seconds = timeOf([&] { controller.editorPartSyncMidiCh(LeanMixer::kChannel); });
    if (mixer.selected.integer != mixer.countChildren() - 1)
        throw std::runtime_error("the search did not find the last track");
    return seconds;
}

double searchTracks(int count)
{
    LeanLibrary library;
    LeanHost host(library, true);
    LeanMixer mixer(static_cast<size_t>(count));
    LeanDevices devices;
    devices.mixer = &mixer;
    host.add(IDeviceList::iid, &devices);
    return search(host, mixer);
}

/** @param pairs of a track and an instrument, a square number */
double searchRack(int pairs)
{
    LeanLibrary library;
    LeanHost host(library, true);
    host.setVersion(STR16("Version 8.0.0"));
    LeanInstrumentDevices devices(static_cast<size_t>(std::lround(std::sqrt(pairs))));
    host.add(IDeviceList::iid, &devices);
    return search(host, devices.mixer);
}

double listPorts(int count)
{
    LeanLibrary library;
    LeanHost host(library, true);
    LeanPorts ports(static_cast<size_t>(count));
    host.add(IPortRegistry::iid, &ports);
    Instance instance(host);
    VstIControllerInterface& controller = instance.controller();
    if (controller.getAudioPortList()->size() != ports.ports.size())
        throw std::runtime_error("not every port was listed");
    return timeOf([&] { controller.getAudioPortList(); });
}

class LeanPortHandler final : public Lean<IComponentPortHandler> {
public:
    tresult PLUGIN_API setAudioInputBuses(int32, int32, IBusDescriptor**, int32) override
    {
        ++connections;
        return kResultOk;
    }
    tresult PLUGIN_API setMidiOutputPorts(IHostPort**, int32, IHostPort**, int32) override
    {
        return kResultOk;
    }

    int connections = 0;
};

class HandlerWithPorts final : public Lean<IComponentHandler> {
public:
    tresult PLUGIN_API queryInterface(const TUID wanted, void** obj) override
    {
        if (FUnknownPrivate::iidEqual(wanted, IComponentPortHandler::iid))
            return ports.queryInterface(wanted, obj);
        return Lean::queryInterface(wanted, obj);
    }
    tresult PLUGIN_API beginEdit(ParamID) override { return kResultOk; }
    tresult PLUGIN_API performEdit(ParamID, ParamValue) override { return kResultOk; }
    tresult PLUGIN_API endEdit(ParamID) override { return kResultOk; }
    tresult PLUGIN_API restartComponent(int32) override { return kResultOk; }

    LeanPortHandler ports;
};

/** Connects four inputs that are not there, for each of which all ports are looked through. */
double connectPorts(int count)
{
    LeanLibrary library;
    LeanHost host(library, true);
    LeanPorts ports(static_cast<size_t>(count));
    host.add(IPortRegistry::iid, &ports);
    Instance instance(host);
    HandlerWithPorts handler;
    instance.controller().setComponentHandler(&handler);
    VstIControllerInterface& controller = instance.controller();
    const char* ids[] = {"none", "none", "none", "none"};
    const double seconds = timeOf([&] { controller.setAudioPortList(ids); });
    instance.controller().setComponentHandler(nullptr);
    if (handler.ports.connections == 0)
        throw std::runtime_error("no ports were connected");
    return seconds;
}

} // namespace

void addStudioSeries()
{
    addSeries(
        {"tracks", "older host", "tracks", Cost::seconds, steps(10, 10, 100'000), searchTracks});
    addSeries({"tracks and rack", "newer host", "pairs of a track and an instrument", Cost::seconds,
               steps(16 * 16, 4, 2048 * 2048), searchRack});
    addSeries(
        {"ports", "audio inputs listed", "ports", Cost::seconds, steps(10, 10, 10'000), listPorts});
    addSeries({"ports", "four audio inputs connected", "ports", Cost::seconds,
               steps(10, 10, 10'000), connectPorts});
}

} // namespace bench::growth
