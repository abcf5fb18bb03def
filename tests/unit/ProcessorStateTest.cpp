// The library's state in the host's project, as bytes.
#include "tests/doubles/Sanitized.h"
#include "tests/unit/LittleMemory.h"
#include "tests/unit/ProcessorFixture.h"

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::StreamDouble;
using std::string_literals::operator""s;
using testing::ElementsAre;
using testing::IsEmpty;

class ProcessorState : public unit::ProcessorFixture {
protected:
    void SetUp() override { connect(); }

    tresult restore(const std::string& bytes)
    {
        StreamDouble stream(bytes);
        library.statesSet.clear();
        const tresult result = processor->setState(&stream);
        EXPECT_EQ(stream.getReferences(), 1);
        return result;
    }

    std::vector<std::string> restored() const
    {
        std::vector<std::string> result;
        for (const auto& bytes : library.statesSet)
            result.emplace_back(bytes.begin(), bytes.end());
        return result;
    }

    void setLibraryState(const std::string& bytes)
    {
        library.state.assign(bytes.begin(), bytes.end());
    }
};

const std::string kWhole = "\x00\x00\x00\x00\x04\x00\x00\x00Tone"s;

TEST_F(ProcessorState, GetStateWritesVersionLengthAndTheLibrarysBytes)
{
    setLibraryState("Tone");
    for (const int32 format : {0, 1}) { // also for a library that reads text
        library.stateFormat = format;
        trace.clear();
        StreamDouble stream;
        EXPECT_EQ(processor->getState(&stream), kResultOk);
        EXPECT_EQ(stream.data, kWhole);
        EXPECT_EQ(stream.getReferences(), 1);
        EXPECT_THAT(trace.texts(), ElementsAre("library.getStateChunk()"));
    }
}

TEST_F(ProcessorState, GetStateWritesTheLengthLittleEndian)
{
    setLibraryState(std::string(0x010203, 'x'));
    StreamDouble stream;
    EXPECT_EQ(processor->getState(&stream), kResultOk);
    EXPECT_EQ(stream.data.substr(0, 8), "\x00\x00\x00\x00\x03\x02\x01\x00"s);
    EXPECT_EQ(stream.data.size(), 8u + 0x010203u);
}

TEST_F(ProcessorState, GetStateWritesAnEmptyState)
{
    StreamDouble stream;
    EXPECT_EQ(processor->getState(&stream), kResultOk);
    EXPECT_EQ(stream.data, "\x00\x00\x00\x00\x00\x00\x00\x00"s);
    EXPECT_EQ(stream.callCount, 3u);
}

TEST_F(ProcessorState, GetStateWritesAtTheStreamsPosition)
{
    setLibraryState("Tone");
    StreamDouble stream("before");
    stream.position = 6;
    EXPECT_EQ(processor->getState(&stream), kResultOk);
    EXPECT_EQ(stream.data, "before" + kWhole);
}

TEST_F(ProcessorState, GetStateFailsAndWritesNothingWithoutALibrary)
{
    disconnect();
    StreamDouble stream;
    EXPECT_EQ(processor->getState(&stream), kResultFalse);
    EXPECT_EQ(stream.callCount, 0u);
    EXPECT_EQ(processor->getState(nullptr), kResultFalse);
}

TEST_F(ProcessorState, GetStateAndSetStateFailForANullStream)
{
    EXPECT_EQ(processor->getState(nullptr), kResultFalse);
    EXPECT_EQ(processor->setState(nullptr), kResultFalse);
}

TEST_F(ProcessorState, GetStateAndSetStateFailWithEachStreamCallThatFails)
{
    setLibraryState("Tone");
    const std::string written[] = {"", kWhole.substr(0, 4), kWhole.substr(0, 8)};
    for (size_t call = 1; call <= 3; ++call) {
        StreamDouble stream;
        stream.failAtCall = call;
        EXPECT_EQ(processor->getState(&stream), kResultFalse) << call;
        EXPECT_EQ(stream.data, written[call - 1]) << call;
        EXPECT_EQ(stream.callCount, call);
        StreamDouble in(kWhole);
        in.failAtCall = call;
        EXPECT_EQ(processor->setState(&in), kResultFalse) << call;
        EXPECT_THAT(restored(), IsEmpty()) << call;
    }
}

TEST_F(ProcessorState, GetStateDoesNotAskTheLibraryWhenTheVersionCannotBeWritten)
{
    StreamDouble stream;
    stream.failFrom = 1;
    processor->getState(&stream);
    EXPECT_THAT(trace.texts(), IsEmpty());
}

TEST_F(ProcessorState, GetStateAndSetStateFailWithEachStreamCallThatThrows)
{
    setLibraryState("Tone");
    for (size_t call = 1; call <= 3; ++call) {
        StreamDouble out;
        out.throwAtCall = call;
        EXPECT_EQ(processor->getState(&out), kResultFalse) << call;
        StreamDouble in(kWhole);
        in.throwAtCall = call;
        EXPECT_EQ(processor->setState(&in), kResultFalse) << call;
    }
    EXPECT_THAT(restored(), IsEmpty());
}

/** Gives the third write a result. */
class AnsweringStream : public IBStream {
public:
    explicit AnsweringStream(tresult third)
    : answer(third)
    {
    }
    tresult PLUGIN_API read(void*, int32, int32*) override { return kResultFalse; }
    tresult PLUGIN_API write(void*, int32, int32*) override
    {
        return ++calls < 3 ? kResultOk : answer;
    }
    tresult PLUGIN_API seek(int64, int32, int64*) override { return kResultFalse; }
    tresult PLUGIN_API tell(int64*) override { return kResultFalse; }
    tresult PLUGIN_API queryInterface(const TUID, void**) override { return kNoInterface; }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }
    virtual ~AnsweringStream() = default;

private:
    const tresult answer;
    int calls = 0;
};

TEST_F(ProcessorState, GetStateAnswersTheResultOfTheLastWrite)
{
    setLibraryState("Tone");
    for (const tresult answer : {kResultOk, kResultFalse, kNotImplemented, kOutOfMemory}) {
        AnsweringStream stream(answer);
        EXPECT_EQ(processor->getState(&stream), answer);
    }
}

TEST_F(ProcessorState, GetStateAndSetStateFailWhenTheLibraryThrows)
{
    library.throwAt("getStateChunk");
    StreamDouble stream;
    EXPECT_EQ(processor->getState(&stream), kResultFalse);
    library.throwAt("setStateChunk");
    EXPECT_EQ(restore(kWhole), kResultFalse);
    library.throwAt("getStateFormat");
    EXPECT_EQ(restore(kWhole), kResultFalse);
}

TEST_F(ProcessorState, SetStateRestoresWhatGetStateWroteForAnyFormatButText)
{
    const std::string every = [] {
        std::string bytes;
        for (int byte = 0; byte < 256; ++byte)
            bytes.push_back(static_cast<char>(byte));
        return bytes;
    }();
    setLibraryState(every);
    StreamDouble stream;
    ASSERT_EQ(processor->getState(&stream), kResultOk);
    EXPECT_EQ(restore(stream.data), kResultOk);
    EXPECT_THAT(restored(), ElementsAre(every));
    for (const int32 format : {0, 2, -1}) {
        library.stateFormat = format;
        EXPECT_EQ(restore(kWhole), kResultOk) << format;
        EXPECT_THAT(restored(), ElementsAre("Tone")) << format;
    }
}

TEST_F(ProcessorState, SetStateReadsFromTheStreamsPosition)
{
    StreamDouble stream("before" + kWhole + "after");
    stream.position = 6;
    EXPECT_EQ(processor->setState(&stream), kResultOk);
    EXPECT_THAT(restored(), ElementsAre("Tone"));
    EXPECT_EQ(stream.position, 6 + 12);
}

TEST_F(ProcessorState, SetStateAcceptsAndReadsNothingWithoutALibrary)
{
    disconnect();
    trace.clear();
    StreamDouble stream(kWhole);
    EXPECT_EQ(processor->setState(&stream), kResultOk);
    EXPECT_EQ(stream.callCount, 0u);
    EXPECT_EQ(processor->setState(nullptr), kResultOk);
    EXPECT_THAT(trace.texts(), IsEmpty());
}

TEST_F(ProcessorState, SetStateAcceptsAnotherVersionAndIgnoresIt)
{
    for (const auto& version :
         {"\x01\x00\x00\x00"s, "\xFF\xFF\xFF\xFF"s, "\x00\x00\x00\x80"s, "\x00\x00\x00\x01"s}) {
        StreamDouble stream(version + "\x04\x00\x00\x00Tone"s);
        EXPECT_EQ(processor->setState(&stream), kResultOk);
        EXPECT_EQ(stream.callCount, 1u);
    }
    EXPECT_THAT(restored(), IsEmpty());
}

TEST_F(ProcessorState, SetStateFailsWithoutAPositiveLength)
{
    for (const auto& length : {"\x00\x00\x00\x00"s, "\xFF\xFF\xFF\xFF"s, "\x00\x00\x00\x80"s}) {
        EXPECT_EQ(restore("\x00\x00\x00\x00"s + length + "Tone"), kResultFalse);
        EXPECT_THAT(restored(), IsEmpty());
    }
}

TEST_F(ProcessorState, SetStateOfACutStateTakesMissingBytesForZeros)
{
    // Missing bytes of the version stay 0xFF, so that it is not a version that we know.
    for (size_t size = 0; size < 4; ++size) {
        EXPECT_EQ(restore(kWhole.substr(0, size)), kResultOk) << size;
        EXPECT_THAT(restored(), IsEmpty()) << size;
    }
    // A missing length is 0.
    EXPECT_EQ(restore(kWhole.substr(0, 4)), kResultFalse);
    EXPECT_THAT(restored(), IsEmpty());
    // Missing bytes of length and data are zeros.
    for (size_t size = 5; size < 12; ++size) {
        std::string expected = size > 8 ? kWhole.substr(8, size - 8) : "";
        expected.resize(4);
        EXPECT_EQ(restore(kWhole.substr(0, size)), kResultOk) << size;
        EXPECT_THAT(restored(), ElementsAre(expected)) << size;
    }
}

TEST_F(ProcessorState, SetStateSurvivesALengthOfTwoGigabytesBeforeFourBytes)
{
    library.failAt("setStateChunk"); // so that the library makes no copy of two gigabytes
    const std::string bytes = "\x00\x00\x00\x00\xFF\xFF\xFF\x7FTone"s;
    trace.clear();
    if (restore(bytes) == kResultOk)
        EXPECT_EQ(trace.count("library.setStateChunk(2147483647 bytes)"), 1u);
    else // there was no memory for it
        EXPECT_EQ(trace.count("library.setStateChunk(2147483647 bytes)"), 0u);
}

// Sanitizers need more address space than the limit leaves.
#ifndef VSTK2X_SANITIZED
TEST_F(ProcessorState, SetStateFailsForMoreThanThereIsMemory)
{
    {
        const unit::LittleMemory little;
        EXPECT_EQ(restore("\x00\x00\x00\x00\xFF\xFF\xFF\x7FTone"s), kResultFalse);
    }
    EXPECT_THAT(restored(), IsEmpty());
}
#endif

} // namespace
