// LinkedInstance: one of the plug-in's, as a host has it while it plays.
#pragma once

#include "controller/VstK2xController.h"
#include "processor/VstK2x.h"
#include "tests/bench/BenchHost.h"

#include "pluginterfaces/vst/ivstaudioprocessor.h"

#include <memory>
#include <vector>

namespace bench {

/** A controller and a processor: made, initialised and connected; ended in the reverse order. */
class LinkedInstance {
public:
    /** @param host outlives this object */
    explicit LinkedInstance(BenchHost& host);
    ~LinkedInstance();
    LinkedInstance(const LinkedInstance&) = delete;
    LinkedInstance& operator=(const LinkedInstance&) = delete;

    /** The host's call for one block. */
    tresult process(Steinberg::Vst::ProcessData& data) { return audio->process(data); }

    /** What the library calls. */
    void writeMidi(const void* data, int length) { processor().writeMidi(data, length); }

    Steinberg::Vst::VstK2xController& controller() { return *editController; }
    Steinberg::Vst::VstK2x& processor() { return *component; }

    Steinberg::IPtr<EditSum> handler = Steinberg::owned(new EditSum);

private:
    Steinberg::IPtr<Steinberg::Vst::VstK2x> component;
    Steinberg::IPtr<Steinberg::Vst::VstK2xController> editController;
    Steinberg::Vst::IAudioProcessor* audio; ///< component's face, so that calls are the host's
};

/** One instance with a library and a host of its own. */
struct LinkedScene {
    explicit LinkedScene(bool unicode = true)
    : host(library, unicode)
    {
    }

    LeanLibrary library;
    BenchHost host;
    LinkedInstance instance{host};
};

/** Many instances in one host, which outlives them. */
std::vector<std::unique_ptr<LinkedInstance>> linkedInstances(BenchHost& host, int count);

/** Sets up what the first instance in a process sets up for all of them, and gives the rest of its
    memory back. */
void warmUp(BenchHost& host);

} // namespace bench
