#include "tests/unit/ProcessorFixture.h"

#include "public.sdk/source/vst/utility/stringconvert.h"

#include <array>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::ElementsAre;
using testing::IsEmpty;

class ProcessorBuses : public unit::ProcessorFixture {
protected:
    /** The numbers of audio inputs, audio outputs, event inputs and event outputs. */
    std::array<int32, 4> counts() const
    {
        return {processor->getBusCount(kAudio, kInput), processor->getBusCount(kAudio, kOutput),
                processor->getBusCount(kEvent, kInput), processor->getBusCount(kEvent, kOutput)};
    }

    void expectBus(MediaType type, BusDirection direction, int32 index, const std::string& name,
                   int32 channels) const
    {
        BusInfo info{};
        ASSERT_EQ(processor->getBusInfo(type, direction, index, info), kResultOk) << name;
        EXPECT_EQ(VST3::StringConvert::convert(info.name, 128), name);
        EXPECT_EQ(info.mediaType, type) << name;
        EXPECT_EQ(info.direction, direction) << name;
        EXPECT_EQ(info.channelCount, channels) << name;
        EXPECT_EQ(info.busType, kMain) << name;
        EXPECT_EQ(info.flags, static_cast<uint32>(BusInfo::kDefaultActive)) << name;
    }

    doubles::ScriptedHost host{trace, doubles::HostFamily::plain()};
    static constexpr std::array<int32, 4> kNone{0, 0, 0, 0};
    static constexpr std::array<int32, 4> kAll{0, 2, 1, 1};
};

TEST_F(ProcessorBuses, InitializeMakesTwoStereoOutputsAndMidiInAndOut)
{
    ASSERT_EQ(processor->initialize(&host.context), kResultOk);
    EXPECT_EQ(counts(), kAll);
    expectBus(kAudio, kOutput, 0, "RDL3/RDL5 1", 2);
    expectBus(kAudio, kOutput, 1, "RDL3/RDL5 2", 2);
    expectBus(kEvent, kInput, 0, "Midi In", 16);
    expectBus(kEvent, kOutput, 0, "Midi Out", 16);
    for (int32 index : {0, 1}) {
        SpeakerArrangement arrangement = 0;
        EXPECT_EQ(processor->getBusArrangement(kOutput, index, arrangement), kResultOk);
        EXPECT_EQ(arrangement, 3u);
    }
    processor->terminate();
}

TEST_F(ProcessorBuses, InitializeASecondTimeAddsNone)
{
    ASSERT_EQ(processor->initialize(&host.context), kResultOk);
    EXPECT_EQ(processor->initialize(&host.context), kResultFalse);
    EXPECT_EQ(counts(), kAll);
    processor->terminate();
}

TEST_F(ProcessorBuses, InitializeASecondTimeWithoutContextAddsNone)
{
    ASSERT_EQ(processor->initialize(nullptr), kResultOk);
    EXPECT_EQ(processor->initialize(nullptr), kResultOk);
    EXPECT_EQ(counts(), kAll);
    EXPECT_EQ(processor->initialize(&host.context), kResultOk);
    EXPECT_EQ(counts(), kAll);
    processor->terminate();
    EXPECT_EQ(counts(), kNone);
}

TEST_F(ProcessorBuses, TerminateRemovesThemHoweverOftenItIsCalled)
{
    EXPECT_EQ(counts(), kNone);
    EXPECT_EQ(processor->terminate(), kResultOk);
    processor->initialize(&host.context);
    EXPECT_EQ(processor->terminate(), kResultOk);
    EXPECT_EQ(processor->terminate(), kResultOk);
    EXPECT_EQ(counts(), kNone);
    EXPECT_EQ(processor->initialize(&host.context), kResultOk);
    EXPECT_EQ(counts(), kAll);
    processor->terminate();
}

TEST_F(ProcessorBuses, InitializeAndTerminateBalanceTheHostsReferences)
{
    processor->initialize(&host.context);
    processor->terminate();
    processor = nullptr;
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(ProcessorBuses, TerminateRemovesThemThoughAPeerThatIsStillConnectedThrows)
{
    processor->initialize(&host.context);
    EXPECT_EQ(processor->connect(&host.peer), kResultOk);
    host.throwAt("peer.disconnect");
    tresult result = kResultOk;
    EXPECT_NO_THROW(result = processor->terminate());
    EXPECT_EQ(result, kResultFalse);
    EXPECT_EQ(counts(), kNone);
    processor = nullptr;
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(ProcessorBuses, GetControllerClassIdNamesTheController)
{
    TUID id{};
    ASSERT_EQ(processor->getControllerClassId(id), kResultOk);
    const std::vector<unsigned char> bytes(id, id + sizeof(id));
    EXPECT_THAT(bytes, ElementsAre(0x31, 0xDF, 0xD3, 0x1B, 0xDB, 0xB8, 0x4D, 0x12, 0x8E, 0x0A, 0xBB,
                                   0xC9, 0x4E, 0x1B, 0xB1, 0x34));
}

TEST_F(ProcessorBuses, CreateInstanceGivesTheProcessorsInterface)
{
    int ignored = 0;
    FUnknown* created = VstK2x::createInstance(&ignored);
    ASSERT_NE(created, nullptr);
    IAudioProcessor* face = nullptr;
    ASSERT_EQ(created->queryInterface(IAudioProcessor::iid, reinterpret_cast<void**>(&face)),
              kResultOk);
    EXPECT_EQ(static_cast<void*>(face), static_cast<void*>(created));
    EXPECT_EQ(face->release(), 1u);
    EXPECT_EQ(created->release(), 0u);
}

} // namespace
