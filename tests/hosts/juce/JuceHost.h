// JuceHost: the built bundle in JUCE's plug-in host.
#pragma once

#include <juce_audio_processors/juce_audio_processors.h>
#include <memory>
#include <string>

namespace hosts {

extern const std::string kJuceHost; ///< its name in the table

/** JUCE's VST 3 host. The thread that makes this object becomes JUCE's message thread and makes all
    calls but an instance's processBlock. One object at a time. */
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
