// Blocks: what a host gives a processor for one block, in the SDK's own host objects.
#pragma once

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "public.sdk/source/vst/hosting/eventlist.h"
#include "public.sdk/source/vst/hosting/parameterchanges.h"

namespace bench {

struct Block {
    Block()
    {
        data.inputParameterChanges = &changes;
        data.inputEvents = &in;
        data.outputEvents = &out;
        data.numSamples = 32;
    }

    void addNote(Steinberg::int16 pitch)
    {
        Steinberg::Vst::Event event = {};
        event.type = Steinberg::Vst::Event::kNoteOnEvent;
        event.noteOn.pitch = pitch;
        event.noteOn.velocity = 0.5f;
        in.addEvent(event);
    }

    void addChange(Steinberg::Vst::ParamID id, int points)
    {
        Steinberg::int32 index = 0;
        auto* queue = changes.addParameterData(id, index);
        for (int point = 0; point < points; ++point)
            queue->addPoint(point, 0.1 * point, index);
    }

    Steinberg::Vst::EventList in{128};
    Steinberg::Vst::EventList out{128};
    Steinberg::Vst::ParameterChanges changes;
    Steinberg::Vst::ProcessData data;
};

} // namespace bench
