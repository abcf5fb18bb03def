#include "tests/hosts/juce/JuceHost.h"

#include <gtest/gtest.h>

namespace hosts {

const std::string kJuceHost = juce::SystemStats::getJUCEVersion().replace(" v", " ").toStdString();

juce::OwnedArray<juce::PluginDescription> JuceHost::scan()
{
    juce::OwnedArray<juce::PluginDescription> found;
    format.findAllTypesForFile(found, BUNDLE_FOLDER);
    return found;
}

std::unique_ptr<juce::AudioPluginInstance> JuceHost::create()
{
    const auto found = scan();
    juce::String error = "not found";
    std::unique_ptr<juce::AudioPluginInstance> instance;
    if (!found.isEmpty())
        instance = format.createInstanceFromDescription(*found[0], sampleRate, blockSize, error);
    EXPECT_TRUE(instance) << error;
    if (instance)
        instance->prepareToPlay(sampleRate, blockSize);
    return instance;
}

} // namespace hosts
