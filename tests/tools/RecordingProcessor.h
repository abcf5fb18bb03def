// RecordingProcessor: a processor that records what a host sends it.
#pragma once

#include "pluginterfaces/base/funknownimpl.h"
#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivstevents.h"
#include "pluginterfaces/vst/ivstparameterchanges.h"

#include <vector>

namespace doubles {

/** Sends every note back to the host as the plug-in does: as a note-on at the block's first sample,
    with velocity 0 for a note-off. */
class RecordingProcessor final
: public Steinberg::U::Implements<Steinberg::U::Directly<Steinberg::Vst::IAudioProcessor>> {
public:
    struct Received {
        Steinberg::int64 sample; ///< from the first block's start
        Steinberg::Vst::Event event;
    };
    struct Point {
        Steinberg::int64 sample;
        Steinberg::Vst::ParamID id;
        double value;
    };

    std::vector<Received> events;
    std::vector<Point> points;
    std::vector<Steinberg::int64> blockStarts; ///< as the process contexts told them
    std::vector<Steinberg::int32> blockSizes;
    bool everyOffsetInsideItsBlock = true;
    double secondsInTheFirstBlock = 0; ///< how long process takes there at least

    Steinberg::tresult PLUGIN_API process(Steinberg::Vst::ProcessData& data) override;

    Steinberg::tresult PLUGIN_API setBusArrangements(Steinberg::Vst::SpeakerArrangement*,
                                                     Steinberg::int32,
                                                     Steinberg::Vst::SpeakerArrangement*,
                                                     Steinberg::int32) override
    {
        return Steinberg::kNotImplemented;
    }
    Steinberg::tresult PLUGIN_API getBusArrangement(Steinberg::Vst::BusDirection, Steinberg::int32,
                                                    Steinberg::Vst::SpeakerArrangement&) override
    {
        return Steinberg::kNotImplemented;
    }
    Steinberg::tresult PLUGIN_API canProcessSampleSize(Steinberg::int32) override
    {
        return Steinberg::kResultOk;
    }
    Steinberg::uint32 PLUGIN_API getLatencySamples() override { return 0; }
    Steinberg::tresult PLUGIN_API setupProcessing(Steinberg::Vst::ProcessSetup&) override
    {
        return Steinberg::kResultOk;
    }
    Steinberg::tresult PLUGIN_API setProcessing(Steinberg::TBool) override
    {
        return Steinberg::kResultOk;
    }
    Steinberg::uint32 PLUGIN_API getTailSamples() override { return 0; }

private:
    void takeEvents(const Steinberg::Vst::ProcessData& data);
    void takePoints(const Steinberg::Vst::ProcessData& data);

    Steinberg::int64 position = 0;
};

} // namespace doubles
