// ProjectScene: a project of three tracks. The first plays the plug-in and is selected.
#pragma once

#include "tests/unit/TrackScene.h"

#include <string>
#include <vector>

/** The messages of update. */
constexpr Steinberg::int32 kChanged = Steinberg::IDependent::kChanged;
constexpr Steinberg::int32 kDestroyed = Steinberg::IDependent::kDestroyed;

/** What the library is told when the editor is to show the part of channel 3, or 4. */
constexpr auto kSync3 = "library.syncPartToMidiChannel(3)";
constexpr auto kSync4 = "library.syncPartToMidiChannel(4)";

/** An older host with a routed track (index 0), one that is routed elsewhere (1) and an audio track
    (2); the first is selected. */
struct ProjectScene : TrackScene {
    explicit ProjectScene(const doubles::HostFamily& family = olderHost())
    : TrackScene(family)
    , piano(host.devices.addMidiTrack("Piano", kRoutedHere, 3))
    , organ(host.devices.addMidiTrack("Organ", kRoutedElsewhere, 4))
    , audio(host.devices.addAudioTrack("Audio"))
    {
        start();
        host.devices.select(0);
        host.devices.tellTracksChanged();
        trace.clear();
    }

    /** What is observed besides the mixer and its selected value. */
    std::vector<std::string> observed() const
    {
        auto names = host.updates.observed();
        names.erase(names.begin(), names.begin() + 2);
        return names;
    }

    void tell(doubles::HostObject& object, Steinberg::int32 message)
    {
        host.devices.tell(object, message);
    }

    void setOutput(const char* text)
    {
        piano.value("output").text = text;
        tell(piano.value("output"), kChanged);
    }

    doubles::HostDeviceDouble& piano;
    doubles::HostDeviceDouble& organ;
    doubles::HostDeviceDouble& audio;
};
