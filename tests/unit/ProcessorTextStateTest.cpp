// setState for a library whose state format is text.
#include "tests/doubles/Sanitized.h"
#include "tests/unit/LittleMemory.h"
#include "tests/unit/ProcessorFixture.h"

#include <limits>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::StreamDouble;
using std::string_literals::operator""s;
using testing::ElementsAre;
using testing::IsEmpty;

class ProcessorSetStateText : public unit::ProcessorFixture {
protected:
    void SetUp() override
    {
        connect();
        library.stateFormat = 1;
    }

    tresult restore(const std::string& bytes)
    {
        StreamDouble stream(bytes);
        library.stateTextsSet.clear();
        const tresult result = processor->setState(&stream);
        EXPECT_EQ(stream.getReferences(), 1);
        return result;
    }
};

TEST_F(ProcessorSetStateText, HandsTheLibraryUtf16UpToTheFirstZeroUnit)
{
    EXPECT_EQ(restore("T\0o\0\xAC\x20"s), kResultOk);
    EXPECT_THAT(library.stateTextsSet, ElementsAre(u"To\u20AC"));
    EXPECT_THAT(library.statesSet, IsEmpty());
    // A text without a terminator gets one; half a unit is filled up with zero.
    const std::u16string texts[] = {u"", u"A", u"A", u"AB", u"AB", u"ABC"};
    const std::string bytes = "A\0B\0C"s;
    for (size_t size = 0; size <= 5; ++size) {
        EXPECT_EQ(restore(bytes.substr(0, size)), kResultOk) << size;
        EXPECT_THAT(library.stateTextsSet, ElementsAre(texts[size])) << size;
    }
    EXPECT_EQ(restore("A\0\0\0B\0"s), kResultOk);
    EXPECT_THAT(library.stateTextsSet, ElementsAre(u"A"));
}

TEST_F(ProcessorSetStateText, TakesALongText)
{
    std::string bytes;
    for (int unit = 0; unit < 100000; ++unit)
        bytes += "x\0"s;
    EXPECT_EQ(restore(bytes), kResultOk);
    EXPECT_THAT(library.stateTextsSet, ElementsAre(std::u16string(100000, u'x')));
}

TEST_F(ProcessorSetStateText, ReadsTheWholeStreamWhereverItsPosition)
{
    StreamDouble stream("A\0B\0"s);
    stream.position = 3;
    EXPECT_EQ(processor->setState(&stream), kResultOk);
    EXPECT_THAT(library.stateTextsSet, ElementsAre(u"AB"));
}

TEST_F(ProcessorSetStateText, AnswersWhetherTheLibraryTookIt)
{
    EXPECT_EQ(restore("A\0"s), kResultOk);
    for (const int32 answer : {1, 2, -1}) {
        library.stateTextResult = answer;
        EXPECT_EQ(restore("A\0"s), kResultFalse) << answer;
        EXPECT_THAT(library.stateTextsSet, ElementsAre(u"A")) << answer;
    }
    library.throwAt("setStateText");
    EXPECT_EQ(restore("A\0"s), kResultFalse);
}

TEST_F(ProcessorSetStateText, AcceptsANullStreamAndFailsForOneWithoutASize)
{
    EXPECT_EQ(processor->setState(nullptr), kResultOk);
    EXPECT_THAT(library.stateTextsSet, IsEmpty());
    StreamDouble stream("A\0"s);
    stream.seekable = false;
    EXPECT_EQ(processor->setState(&stream), kResultFalse);
    EXPECT_THAT(library.stateTextsSet, IsEmpty());
}

TEST_F(ProcessorSetStateText, FailsWithEachStreamCallThatFailsOrThrows)
{
    StreamDouble counting("A\0"s);
    ASSERT_EQ(processor->setState(&counting), kResultOk);
    ASSERT_GE(counting.callCount, 1u);
    library.stateTextsSet.clear();
    for (size_t call = 1; call <= counting.callCount; ++call) {
        StreamDouble failing("A\0"s);
        failing.failAtCall = call;
        EXPECT_EQ(processor->setState(&failing), kResultFalse) << call;
        StreamDouble throwing("A\0"s);
        throwing.throwAtCall = call;
        EXPECT_EQ(processor->setState(&throwing), kResultFalse) << call;
    }
    EXPECT_THAT(library.stateTextsSet, IsEmpty());
}

TEST_F(ProcessorSetStateText, PutsZerosBehindAShortRead)
{
    StreamDouble stream("A\0B\0"s);
    stream.shortRead = 2;
    EXPECT_EQ(processor->setState(&stream), kResultOk);
    EXPECT_THAT(library.stateTextsSet, ElementsAre(u"A"));
}

/** Tells a size and gives no bytes. */
class BoastingStream : public IBStream {
public:
    explicit BoastingStream(int64 claimed)
    : size(claimed)
    {
    }
    size_t reads = 0;

    tresult PLUGIN_API read(void*, int32, int32*) override
    {
        ++reads;
        return kResultFalse;
    }
    tresult PLUGIN_API write(void*, int32, int32*) override { return kResultFalse; }
    tresult PLUGIN_API seek(int64, int32, int64* result) override
    {
        if (result)
            *result = size;
        return kResultOk;
    }
    tresult PLUGIN_API tell(int64* result) override
    {
        *result = size;
        return kResultOk;
    }
    tresult PLUGIN_API queryInterface(const TUID, void**) override { return kNoInterface; }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }
    virtual ~BoastingStream() = default;

private:
    const int64 size;
};

TEST_F(ProcessorSetStateText, FailsForASizeThatNoReadCanTake)
{
    for (const int64 size :
         {int64(-1), int64(1) << 31, int64(1) << 62, std::numeric_limits<int64>::max()}) {
        BoastingStream stream(size);
        EXPECT_EQ(processor->setState(&stream), kResultFalse) << size;
        EXPECT_EQ(stream.reads, 0u) << size;
    }
}

// Sanitizers need more address space than the limit leaves.
#ifndef VSTK2X_SANITIZED
TEST_F(ProcessorSetStateText, FailsForMoreThanThereIsMemory)
{
    BoastingStream stream(std::numeric_limits<int32>::max());
    {
        const unit::LittleMemory little;
        EXPECT_EQ(processor->setState(&stream), kResultFalse);
    }
    EXPECT_EQ(stream.reads, 0u);
    EXPECT_THAT(library.stateTextsSet, IsEmpty());
}
#endif

} // namespace
