// ProcessorFixture: the processor alone, with a scripted library and a controller's messages.
#pragma once

#include "processor/VstK2x.h"
#include "tests/doubles/EventListDouble.h"
#include "tests/doubles/ParameterChangesDouble.h"
#include "tests/doubles/ScriptedHost.h"
#include "tests/doubles/ScriptedLibrary.h"
#include "tests/doubles/StreamDouble.h"

#include "public.sdk/source/vst/hosting/hostclasses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace unit {

/** A message as the SDK's own hosts make it. */
inline Steinberg::IPtr<Steinberg::Vst::IMessage> makeMessage(const char* id)
{
    auto message = Steinberg::owned(new Steinberg::Vst::HostMessage);
    message->setMessageID(id);
    return message;
}

/** One call of process: set the members, run it, look at them. */
struct Block {
    doubles::EventListDouble in;
    doubles::EventListDouble out;
    doubles::ParameterChangesDouble changes;
    Steinberg::Vst::ProcessData data;

    Block()
    {
        data.processMode = Steinberg::Vst::kRealtime;
        data.symbolicSampleSize = Steinberg::Vst::kSample32;
        data.numSamples = 64;
        data.inputEvents = &in;
        data.outputEvents = &out;
        data.inputParameterChanges = &changes;
    }
};

class ProcessorFixture : public ::testing::Test {
protected:
    using Trace = doubles::Trace;
    using Texts = std::vector<std::string>;

    Trace trace;
    doubles::ScriptedLibrary library{trace};
    Steinberg::IPtr<Steinberg::Vst::VstK2x> processor =
        Steinberg::owned(new Steinberg::Vst::VstK2x);

    /** Sends the controller's connect message, and clears the trace. */
    void connect(Steinberg::Vst::VstIEditorConnect* editor)
    {
        const auto message = makeMessage("VST_CONNECT_MESSAGE_ID");
        message->getAttributes()->setBinary("VST_CONNECT_BINARY_ID", &editor, sizeof(editor));
        processor->notify(message);
        trace.clear();
    }

    void connect() { connect(&library); }

    void connectAndActivate()
    {
        connect();
        processor->setActive(true);
    }

    void disconnect() { processor->notify(makeMessage("VST_DISCONNECT_MESSAGE_ID")); }

    void sayUnicode(Steinberg::int64 flag)
    {
        const auto message = makeMessage("VST_ISUNICODE_HOST_MESSAGE_ID");
        message->getAttributes()->setInt("VST_ISUNICODE_HOST_BINARY_ID", flag);
        processor->notify(message);
    }

    Steinberg::tresult setUp(double sampleRate,
                             Steinberg::int32 sampleSize = Steinberg::Vst::kSample32)
    {
        Steinberg::Vst::ProcessSetup setup{Steinberg::Vst::kRealtime, sampleSize, 512, sampleRate};
        return processor->setupProcessing(setup);
    }

    void writeMidi(int status, int first, int second)
    {
        const unsigned char bytes[] = {static_cast<unsigned char>(status),
                                       static_cast<unsigned char>(first),
                                       static_cast<unsigned char>(second)};
        processor->writeMidi(bytes, 3);
    }

    /** The events that the next block gives the host. */
    std::vector<Steinberg::Vst::Event> drained()
    {
        Block block;
        EXPECT_EQ(processor->process(block.data), Steinberg::kResultOk);
        return block.out.events;
    }
};

} // namespace unit
