// ProcessCalls: records which functions of the allocator and of the locks a processor calls in
// process(): the processor that is linked into this program, or the one in the bundle that ships.
#pragma once

#include "processor/VstK2x.h"
#include "tests/doubles/EventListDouble.h"
#include "tests/doubles/ParameterChangesDouble.h"
#include "tests/doubles/ScriptedLibrary.h"
#include "tests/realtime/CallRecord.h"
#include "tests/realtime/SystemCalls.h"

#include "public.sdk/source/vst/hosting/hostclasses.h"
#include "public.sdk/source/vst/hosting/module.h"

#include <functional>
#include <gmock/gmock.h>

namespace doubles {

using namespace Steinberg;
using namespace Steinberg::Vst;

/** Counts the calls that a thread makes while it holds a lock. */
class LockWatch {
public:
    const CallRecord* calls = nullptr; ///< of that thread
    int callsUnderLock = 0;

protected:
    void look() { callsUnderLock += calls && calls->getHeld() > 0 ? 1 : 0; }
};

class WatchedEventList final : public EventListDouble, public LockWatch {
public:
    tresult PLUGIN_API getEvent(int32 index, Event& event) override
    {
        look();
        return EventListDouble::getEvent(index, event);
    }
    tresult PLUGIN_API addEvent(Event& event) override
    {
        look();
        const auto result = EventListDouble::addEvent(event);
        if (onAdd)
            onAdd();
        return result;
    }

    std::function<void()> onAdd;
};

/** The editor library on the audio thread: counts what it is given and may send it back. */
class LiveLibrary final : public ScriptedLibrary, public LockWatch {
public:
    using ScriptedLibrary::ScriptedLibrary;

    void receiveHostMidi(const uint8* data, int32 length) override
    {
        look();
        ++received;
        if (answers)
            effect->writeMidi(data, length);
    }
    void hostParameterChanged(uint32 /*id*/, double /*value*/) override
    {
        look();
        ++changed;
    }

    bool answers = false;
    int received = 0;
    int changed = 0;
};

/** Parameter: false for the processor in this program, true for the bundle's. */
class ProcessCalls : public testing::TestWithParam<bool> {
protected:
    void SetUp() override
    {
        {
            const Recording recording(preparing);
            make();
        }
        ASSERT_TRUE(processor);
        const auto component = FUnknownPtr<IComponent>(processor);
        component->initialize(nullptr);
        connect(&library);
        component->setActive(true);
        data.numSamples = 64;
        data.inputEvents = &in;
        data.outputEvents = &out;
        data.inputParameterChanges = &changes;
        library.calls = in.calls = out.calls = &record;
        midiLock = lockOfWriteMidi();
    }

    void make()
    {
        if (!GetParam()) {
            processor = owned(static_cast<IAudioProcessor*>(new VstK2x));
            return;
        }
        std::string error;
        module = VST3::Hosting::Module::create(BUNDLE_FOLDER, error);
        ASSERT_TRUE(module) << error;
        const auto id = VST3::UID::fromString(std::string("13EEE3484D664261B90352CE35DD18B4"));
        ASSERT_TRUE(id);
        processor = module->getFactory().createInstance<IAudioProcessor>(*id);
    }

    void connect(VstIEditorConnect* editor)
    {
        const auto message = owned(new HostMessage);
        message->setMessageID("VST_CONNECT_MESSAGE_ID");
        message->getAttributes()->setBinary("VST_CONNECT_BINARY_ID", &editor, sizeof(editor));
        FUnknownPtr<IConnectionPoint>(processor)->notify(message);
    }

    void writeMidi(int number)
    {
        const uint8 bytes[] = {0x90, static_cast<uint8>(number % 128), 127};
        const Recording recording(preparing);
        library.effect->writeMidi(bytes, sizeof(bytes));
    }

    /** The lock of the outgoing queue: the only one that writeMidi tries. */
    const void* lockOfWriteMidi()
    {
        const size_t before = preparing.size();
        writeMidi(0);
        const void* lock = nullptr;
        for (size_t index = before; index < preparing.size(); ++index) {
            if (preparing[index].kind != CallRecord::kTryLock)
                continue;
            EXPECT_EQ(lock, nullptr);
            lock = preparing[index].object;
        }
        EXPECT_NE(lock, nullptr);
        ProcessData drain;
        WatchedEventList list;
        drain.outputEvents = &list;
        processor->process(drain);
        EXPECT_EQ(list.events.size(), 1u);
        return lock;
    }

    void fillInput()
    {
        for (int16 pitch = 0; pitch < 128; ++pitch) {
            in.add(noteOn(0, pitch, 1));
            in.add(noteOff(0, pitch));
            changes.add(37012000u + static_cast<ParamID>(pitch), {{0, 0.25}, {63, 0.5}});
        }
    }

    void fillQueue()
    {
        for (int number = 0; number < 100; ++number)
            writeMidi(number);
    }

    void process()
    {
        const Recording recording(record);
        EXPECT_EQ(processor->process(data), kResultOk);
    }

    /** How often the block took the queue's lock. Fails if it did anything else, needed a second
        try, or did not release the lock before it took it again. */
    size_t turnsOfTheLock() const
    {
        size_t turns = 0;
        bool isHeld = false;
        for (const auto& entry : record) {
            EXPECT_EQ(entry.object, midiLock);
            EXPECT_EQ(entry.kind, isHeld ? CallRecord::kUnlock : CallRecord::kTryLock);
            isHeld = !isHeld;
            turns += isHeld ? 1 : 0;
        }
        EXPECT_FALSE(isHeld);
        return turns;
    }

    std::vector<int> pitches() const
    {
        std::vector<int> result;
        for (const Event& event : out.events)
            result.push_back(event.noteOn.pitch);
        return result;
    }

    std::vector<long> systemCalls()
    {
        const auto calls = systemCallsOf([this] { processor->process(data); });
        EXPECT_TRUE(calls);
        return calls.value_or(std::vector<long>{-1});
    }

    CallRecord record;    ///< of process
    CallRecord preparing; ///< of construction and writeMidi
    Trace trace;
    LiveLibrary library{trace};
    VST3::Hosting::Module::Ptr module;
    IPtr<IAudioProcessor> processor;
    WatchedEventList in;
    WatchedEventList out;
    ParameterChangesDouble changes;
    ProcessData data;
    const void* midiLock = nullptr;
};

inline std::string placeOf(const testing::TestParamInfo<bool>& tested)
{
    return tested.param ? "InTheBundle" : "InThisProgram";
}

} // namespace doubles
