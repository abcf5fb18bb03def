// JuceHost: the built bundle in JUCE's plug-in host.
#pragma once

#include <juce_audio_processors/juce_audio_processors.h>
#include <memory>
#include <string>

namespace hosts {

extern const std::string kJuceHost; ///< its name in the table

/** JUCE's message thread, which is the thread that makes this object, and its VST 3 format. One at
    a time; every call but JuceInstance's process is that thread's. */
class JuceHost {
public:
    static constexpr double sampleRate = 48000;
    static constexpr int blockSize = 256;

    /** What a scan of the bundle lists. */
    juce::OwnedArray<juce::PluginDescription> scan();

    /** A new instance of the first plug-in that the scan lists, ready to process; null, and a
        failed test, if there is none. */
    std::unique_ptr<juce::AudioPluginInstance> create();

private:
    juce::ScopedJuceInitialiser_GUI messageThread;
    juce::VST3PluginFormat format;
};

} // namespace hosts
