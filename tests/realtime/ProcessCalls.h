// ProcessCalls: a processor whose calls of the allocator and of the locks are recorded while it
// processes a block: the one in this program, or the one in the bundle that ships.
#pragma once

#include "processor/VstK2x.h"
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

/** The host's list of events, which takes no memory and looks whether the caller holds a lock. */
class FixedEventList final : public IEventList {
public:
    virtual ~FixedEventList() = default;

    int32 PLUGIN_API getEventCount() override { return count; }
    tresult PLUGIN_API getEvent(int32 index, Event& event) override
    {
        look();
        event = events[static_cast<size_t>(index)];
        return kResultOk;
    }
    tresult PLUGIN_API addEvent(Event& event) override
    {
        look();
        events[static_cast<size_t>(count++)] = event;
        if (onAdd)
            onAdd();
        return kResultOk;
    }
    tresult PLUGIN_API queryInterface(const TUID, void** obj) override
    {
        *obj = nullptr;
        return kNoInterface;
    }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }

    void look() { callsUnderLock += watched && watched->getHeld() > 0 ? 1 : 0; }

    std::array<Event, 512> events = {};
    int32 count = 0;
    std::function<void()> onAdd;
    const CallRecord* watched = nullptr;
    int callsUnderLock = 0;
};

/** The editor library on the audio thread: counts, and may answer. */
class LiveLibrary final : public ScriptedLibrary {
public:
    using ScriptedLibrary::ScriptedLibrary;

    void receiveHostMidi(const uint8* data, int32 length) override
    {
        callsUnderLock += watched && watched->getHeld() > 0 ? 1 : 0;
        ++received;
        if (answers)
            effect->writeMidi(data, length);
    }
    void hostParameterChanged(uint32 /*id*/, double /*value*/) override
    {
        callsUnderLock += watched && watched->getHeld() > 0 ? 1 : 0;
        ++changed;
    }

    const CallRecord* watched = nullptr;
    bool answers = false;
    int callsUnderLock = 0;
    int received = 0;
    int changed = 0;
};

inline Event note(uint16 type, int16 pitch)
{
    Event event = {};
    event.type = type;
    if (type == Event::kNoteOnEvent)
        event.noteOn = {0, pitch, 0, 1, 0, -1};
    else
        event.noteOff = {0, pitch, 0, -1, 0};
    return event;
}

/** The processor as linked into this program, or as the bundle's factory makes it. */
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
        library.watched = in.watched = out.watched = &record;
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

    /** writeMidi tries the queue's lock and no other, which tells which one that is. */
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
        FixedEventList list;
        drain.outputEvents = &list;
        processor->process(drain);
        EXPECT_EQ(list.count, 1);
        return lock;
    }

    void fillInput()
    {
        for (int16 pitch = 0; pitch < 128; ++pitch) {
            in.events[static_cast<size_t>(in.count++)] = note(Event::kNoteOnEvent, pitch);
            in.events[static_cast<size_t>(in.count++)] = note(Event::kNoteOffEvent, pitch);
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

    /** The block asked for nothing but the queue's lock, which it took at the first try and gave
        back, again and again; gives how often. */
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
        for (int32 index = 0; index < out.count; ++index)
            result.push_back(out.events[static_cast<size_t>(index)].noteOn.pitch);
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
    FixedEventList in;
    FixedEventList out;
    ParameterChangesDouble changes;
    ProcessData data;
    const void* midiLock = nullptr;
};

inline std::string placeOf(const testing::TestParamInfo<bool>& tested)
{
    return tested.param ? "InTheBundle" : "InThisProgram";
}

} // namespace doubles
