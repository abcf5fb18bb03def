#include "tests/hosts/juce/JuceHost.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace hosts {

namespace {

const char* const kLibraryFile = "/Library/Application Support/Tavrin/VST/RDL3_RDL5/"
                                 "libvst_rdl3_rdl5_vstserver.1.dylib";

} // namespace

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

Steinberg::Vst::SimulatorControl* newestSimulator()
{
    void* library = dlopen(kLibraryFile, RTLD_LAZY | RTLD_NOLOAD);
    if (!library)
        return nullptr;
    const auto get = reinterpret_cast<Steinberg::Vst::GetSimulatorControl>(
        dlsym(library, Steinberg::Vst::getSimulatorControlName));
    dlclose(library); // the plug-in holds it
    return get ? get(-1) : nullptr;
}

bool isLibraryLoaded()
{
    void* library = dlopen(kLibraryFile, RTLD_LAZY | RTLD_NOLOAD);
    if (library)
        dlclose(library);
    return library != nullptr;
}

} // namespace hosts
