// The host's tracks, its instrument rack and its ports.
#include "tests/bench/BigStudio.h"
#include "tests/bench/growth/Growth.h"
#include "tests/bench/LinkedInstance.h"
#include "tools/host/ComponentHandler.h"
#include "tools/host/studio/PortHandler.h"

#include <cmath>
#include <stdexcept>

namespace bench::growth {

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

/** A search that finds the last of all tracks.
    @param version of the host, which is newer from 7.5.0 on and searches its rack */
double search(size_t count, bool withRack, const std::string& version)
{
    LeanLibrary library;
    BenchHost host(library, true, version);
    const Tracks tracks(count, withRack);
    host.add(IDeviceList::iid, tracks.tree);
    LinkedInstance instance(host);
    VstIControllerInterface& controller = instance.controller();
    const double seconds = timeOf([&] { controller.editorPartSyncMidiCh(kOurChannel); });
    if (static_cast<size_t>(tracks.tree->selectedTrack()) != count - 1)
        throw std::runtime_error("the search did not find the last track");
    return seconds;
}

double searchTracks(int count)
{
    return search(static_cast<size_t>(count), false, "7.0.0");
}

/** @param pairs of a track and an instrument, a square number */
double searchRack(int pairs)
{
    return search(static_cast<size_t>(std::lround(std::sqrt(pairs))), true, "8.0.0");
}

double listPorts(int count)
{
    LeanLibrary library;
    BenchHost host(library, true);
    const auto ports = audioInputs(count);
    host.add(IPortRegistry::iid, ports);
    LinkedInstance instance(host);
    VstIControllerInterface& controller = instance.controller();
    if (controller.getAudioPortList()->size() != ports->ports().size())
        throw std::runtime_error("not every port was listed");
    return timeOf([&] { controller.getAudioPortList(); });
}

/** Connects four inputs that do not exist: all ports are searched for each of them. */
double connectPorts(int count)
{
    LeanLibrary library;
    BenchHost host(library, true);
    const auto ports = audioInputs(count);
    host.add(IPortRegistry::iid, ports);
    LinkedInstance instance(host);
    const auto portHandler = owned(new play::PortHandler(ports));
    const auto handler = owned(new play::ComponentHandler(portHandler));
    instance.controller().setComponentHandler(handler);
    VstIControllerInterface& controller = instance.controller();
    const char* ids[] = {"none", "none", "none", "none"};
    const double seconds = timeOf([&] { controller.setAudioPortList(ids); });
    instance.controller().setComponentHandler(nullptr);
    if (portHandler->connections() == 0)
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
