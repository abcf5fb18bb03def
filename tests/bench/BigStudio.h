// BigStudio: many tracks, instruments and ports of play's host.
#pragma once

#include "base/source/updatehandler.h"
#include "tools/host/studio/DeviceTree.h"
#include "tools/host/studio/PortRegistry.h"

namespace bench {

constexpr Steinberg::int32 kOurChannel = 5;

/** MIDI tracks. The last one plays this plug-in on kOurChannel, the others play other instruments.
    @param withRack whether each track has an instrument of its own; the last one is this plug-in */
inline Steinberg::Vst::play::Project projectOf(size_t tracks, bool withRack)
{
    using Steinberg::Vst::play::Project;
    Project project;
    for (size_t number = 0; number < tracks; ++number) {
        project.tracks.push_back({Project::TrackType::midi, "",
                                  "Microphone Synthesizer " + std::to_string(number),
                                  static_cast<Steinberg::int32>(number % 16)});
        if (withRack)
            project.rack.push_back({"", "Microphone Synthesizer", {number}});
    }
    project.tracks.back().output = "RDL 1 - RDL3/RDL5 VST";
    project.tracks.back().channel = kOurChannel;
    if (withRack)
        project.rack.back().effectType = "RDL3/RDL5 VST";
    return project;
}

/** The devices of such a project. The plug-in is not told of selections, so that nothing else is
    measured. */
struct Tracks {
    explicit Tracks(size_t count, bool withRack = false)
    : tree(Steinberg::owned(
          new Steinberg::Vst::play::DeviceTree(projectOf(count, withRack), true, *updates)))
    {
    }

    Steinberg::IPtr<Steinberg::UpdateHandler> updates =
        Steinberg::owned(new Steinberg::UpdateHandler);
    Steinberg::IPtr<Steinberg::Vst::play::DeviceTree> tree;
};

/** Visible audio inputs. */
inline Steinberg::IPtr<Steinberg::Vst::play::PortRegistry> audioInputs(int count)
{
    using Steinberg::Vst::play::PortDescription;
    std::vector<PortDescription> ports;
    for (int number = 0; number < count; ++number)
        ports.push_back({"audio-interface/in/" + std::to_string(number),
                         "Audio Interface Input " + std::to_string(number),
                         PortDescription::Type::audio, true});
    return Steinberg::owned(new Steinberg::Vst::play::PortRegistry(ports, true));
}

} // namespace bench
