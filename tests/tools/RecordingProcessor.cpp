#include "tests/tools/RecordingProcessor.h"

#include <chrono>
#include <thread>

namespace doubles {

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

Event answerTo(const Event& event)
{
    Event answer{};
    answer.type = Event::kNoteOnEvent;
    const bool on = event.type == Event::kNoteOnEvent;
    answer.noteOn.channel = on ? event.noteOn.channel : event.noteOff.channel;
    answer.noteOn.pitch = on ? event.noteOn.pitch : event.noteOff.pitch;
    answer.noteOn.velocity = on ? 1.F : 0.F;
    answer.noteOn.noteId = -1;
    return answer;
}

} // namespace

tresult PLUGIN_API RecordingProcessor::process(ProcessData& data)
{
    if (blockStarts.empty())
        std::this_thread::sleep_for(std::chrono::duration<double>(secondsInTheFirstBlock));
    blockStarts.push_back(data.processContext->projectTimeSamples);
    blockSizes.push_back(data.numSamples);
    takePoints(data);
    takeEvents(data);
    position += data.numSamples;
    return kResultOk;
}

void RecordingProcessor::takeEvents(const ProcessData& data)
{
    for (int32 i = 0; i < data.inputEvents->getEventCount(); ++i) {
        Event event{};
        data.inputEvents->getEvent(i, event);
        if (event.sampleOffset < 0 || event.sampleOffset >= data.numSamples)
            everyOffsetInsideItsBlock = false;
        events.push_back({position + event.sampleOffset, event});
        auto answer = answerTo(event);
        data.outputEvents->addEvent(answer);
    }
}

void RecordingProcessor::takePoints(const ProcessData& data)
{
    for (int32 i = 0; i < data.inputParameterChanges->getParameterCount(); ++i) {
        auto* queue = data.inputParameterChanges->getParameterData(i);
        for (int32 p = 0; p < queue->getPointCount(); ++p) {
            int32 offset = 0;
            ParamValue value = 0;
            queue->getPoint(p, offset, value);
            points.push_back({position + offset, queue->getParameterId(), value});
        }
    }
}

} // namespace doubles
