// process() with notes, automation and MIDI of the library; getLatencySamples.
#include "editorlib/VstIEffectInterface.h"
#include "tests/doubles/EventListDouble.h"
#include "tests/faults/HostBlock.h"
#include "tests/faults/Scenario.h"

namespace faults {
namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::HostFamily;
using testing::ElementsAre;

constexpr unsigned kPan1 = 37013000;

/** The library sends every message back at once, as an instrument's driver does. */
class Playing : public Scenario {
public:
    explicit Playing(const HostFamily& family = HostFamily::cubase("7.5.1"), uint32 expected = 220)
    : Scenario(family)
    , expectedLatency(expected)
    {
    }

    void setUp() override
    {
        Scenario::setUp();
        world.library.latencyMode = 2;
        world.library.onCall = [this](const std::string& text) {
            unsigned bytes[3];
            if (std::sscanf(text.c_str(), "library.receiveHostMidi(%2X %2X %2X)", &bytes[0],
                            &bytes[1], &bytes[2]) != 3)
                return;
            const unsigned char midi[] = {static_cast<unsigned char>(bytes[0]),
                                          static_cast<unsigned char>(bytes[1]),
                                          static_cast<unsigned char>(bytes[2])};
            world.library.effect->writeMidi(midi, 3);
        };
    }

    void act() override
    {
        const FUnknownPtr<IAudioProcessor> processor(world.component);
        world.trace.clear();
        ProcessSetup setup{kRealtime, kSample32, 64, 44100};
        world.step("setupProcessing", [&] { processor->setupProcessing(setup); });
        world.step("setActive", [&] { world.component->setActive(true); });
        world.step("getLatencySamples", [&] { latency = processor->getLatencySamples(); });
        HostBlock block(world.host);
        Event pressure{};
        pressure.type = Event::kPolyPressureEvent;
        block.in.events = {doubles::noteOn(0, 60, 0.5F), doubles::noteOff(1, 62), pressure};
        block.changes.add(kVolume1, 0.5);
        block.changes.add(kPan1, 0.25);
        world.step("process", [&] { result = processor->process(block.data); });
        sent = block.out.events;
        failedInBlock = world.host.faultyText() + world.library.faultyText();
        HostBlock next(world.host); // has none of the events that the host refused before
        world.step("process", [&] { processor->process(next.data); });
        world.step("setActive", [&] { world.component->setActive(false); });
        EXPECT_EQ(block.in.getReferences(), 1);
        EXPECT_EQ(block.out.getReferences(), 1);
        EXPECT_EQ(block.changes.foreignReferences(), 0);
    }

    void expectDone() override
    {
        EXPECT_EQ(result, kResultOk);
        EXPECT_EQ(latency, expectedLatency); // 5 ms at 44100 Hz
        EXPECT_THAT(world.calls({"library.hostParameterChanged", "library.receiveHostMidi"}),
                    ElementsAre("library.hostParameterChanged(37012000, 0.5)",
                                "library.hostParameterChanged(37013000, 0.25)",
                                "library.receiveHostMidi(90 3C 7F)",
                                "library.receiveHostMidi(81 3E 00)",
                                "library.receiveHostMidi(00 00 00)"));
        ASSERT_EQ(sent.size(), 3u);
        const int16 channels[] = {0, 1, 0};
        const int16 pitches[] = {60, 62, 0};
        const float velocities[] = {1, 0, 0};
        for (size_t index = 0; index < sent.size(); ++index) {
            EXPECT_EQ(sent[index].type, Event::kNoteOnEvent);
            EXPECT_EQ(sent[index].noteOn.channel, channels[index]);
            EXPECT_EQ(sent[index].noteOn.pitch, pitches[index]);
            EXPECT_EQ(sent[index].noteOn.velocity, velocities[index]);
        }
    }

    /** An event that cannot be read is skipped; the rest are still forwarded. A list without a
        length counts as empty. An event that the host refuses or that finds no memory is lost. */
    void expectStated(const Fault& anyFault) override
    {
        Fault fault = anyFault;
        fault.text = failedInBlock;
        EXPECT_EQ(result, kResultOk);
        size_t notes = 3;
        if (fault.hit("getEventCount"))
            notes = 0;
        else if (fault.hit("getEvent("))
            notes = 2;
        EXPECT_EQ(world.calls({"library.receiveHostMidi"}).size(), notes);
        size_t changes = 2;
        if (fault.hit("getParameterCount"))
            changes = 0;
        else if (fault.hit("getParameterData") || fault.hit("getPoint") ||
                 (fault.hit("getParameterId") && fault.is(Kind::kHostThrows)))
            changes = 1;
        EXPECT_EQ(world.calls({"library.hostParameterChanged"}).size(), changes);
        uint32 samples = expectedLatency;
        if (fault.hit("getLatencyMode")) // mode 0 is 1 ms; after an exception there is no latency
            samples = fault.is(Kind::kLibraryAnswers) ? 44 : 0;
        EXPECT_EQ(latency, samples);
        EXPECT_GE(sent.size() + (fault.hit("addEvent") || fault.is(Kind::kNoMemory) ? 3 : 0),
                  notes - (fault.hit("receiveHostMidi") ? 1 : 0));
    }

    /** Events beyond the list's end are skipped, and a negative length counts as 0. An unknown mode
        has no latency. */
    void expectBelieved(const Fault& anyFault) override
    {
        Fault fault = anyFault;
        fault.text = failedInBlock;
        EXPECT_EQ(result, kResultOk);
        const bool isTooFew = fault.is(Kind::kHostNonsense);
        EXPECT_EQ(world.calls({"library.receiveHostMidi"}).size(),
                  fault.hit("getEventCount") && isTooFew ? 0u : 3u);
        size_t changes = 2;
        if (fault.hit("getParameterCount"))
            changes = isTooFew ? 0 : 2;
        else if (fault.hit("getPointCount"))
            changes = 1;
        EXPECT_EQ(world.calls({"library.hostParameterChanged"}).size(), changes);
        EXPECT_EQ(latency, anyFault.hit("getLatencyMode") ? 0u : expectedLatency);
    }

private:
    const uint32 expectedLatency;
    tresult result = kResultFalse;
    uint32 latency = 0;
    std::vector<Event> sent;
    std::string failedInBlock; ///< the call that failed in the first block
};

/** The library sends more in one block than the queue holds. */
class Overflow : public Scenario {
public:
    void act() override
    {
        const FUnknownPtr<IAudioProcessor> processor(world.component);
        world.step("setActive", [&] { world.component->setActive(true); });
        world.step("writeMidi", [&] {
            for (unsigned char pitch = 0; pitch <= 100; ++pitch) {
                const unsigned char midi[] = {0x90, pitch, 127};
                world.library.effect->writeMidi(midi, 3);
            }
        });
        HostBlock block(world.host);
        world.step("process", [&] { processor->process(block.data); });
        world.step("setActive", [&] { world.component->setActive(false); });
        sent = block.out.events;
    }

    /** The queue drops the hundred events in it for the newest one. */
    void expectDone() override
    {
        ASSERT_EQ(sent.size(), 1u);
        EXPECT_EQ(sent[0].noteOn.pitch, 100);
    }

    /** Without memory events are lost, and the queue may not overflow. */
    void expectStated(const Fault& fault) override
    {
        if (fault.isOutOfMemory()) {
            EXPECT_LE(sent.size(), 100u);
            return;
        }
        EXPECT_EQ(sent.size(), fault.hit("addEvent") ? 0u : 1u);
    }

private:
    std::vector<Event> sent;
};

TEST(Faults, ProcessInOtherHosts)
{
    injectFaults("notes, host without Unicode",
                 scenario<Playing>(HostFamily::withoutUnicode("Cubase", "7.5.1"), 0), hostKinds());
    injectFaults("notes, plain host", scenario<Playing>(HostFamily::plain(), 0), hostKinds());
    injectFaults("notes, stand-alone host", scenario<Playing>(HostFamily::standalone(), 220),
                 hostKinds());
}

TEST(Faults, WriteMidiMoreThanTheQueueHolds)
{
    injectFaults<Overflow>("more MIDI than the queue holds");
}

TEST(Faults, ProcessNotesAutomationAndMidiOut)
{
    injectFaults<Playing>("notes, automation, MIDI out");
}

} // namespace
} // namespace faults
