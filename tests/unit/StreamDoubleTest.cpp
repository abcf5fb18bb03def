#include "tests/doubles/StreamDouble.h"
#include "tests/doubles/CallScript.h"
#include "tests/doubles/EventListDouble.h"
#include "tests/doubles/ParameterChangesDouble.h"

#include <gmock/gmock.h>

using namespace Steinberg;
using doubles::StreamDouble;

namespace {

std::string readFrom(StreamDouble& stream, int32 size, int32& count)
{
    std::string buffer(static_cast<size_t>(size), '#');
    EXPECT_EQ(stream.read(buffer.data(), size, &count), kResultOk);
    return buffer;
}

} // namespace

TEST(StreamDouble, ReadsWhatIsThereAndLeavesTheRestOfTheBufferAlone)
{
    StreamDouble stream("abcde");
    int32 count = 0;
    EXPECT_EQ(readFrom(stream, 3, count), "abc");
    EXPECT_EQ(readFrom(stream, 4, count), "de##");
    EXPECT_EQ(count, 2);
    EXPECT_EQ(readFrom(stream, 1, count), "#");
    EXPECT_EQ(count, 0);
}

TEST(StreamDouble, ReadsShortWithAGoodResult)
{
    StreamDouble stream("abcde");
    stream.shortRead = 2;
    int32 count = 0;
    EXPECT_EQ(readFrom(stream, 4, count), "ab##");
    EXPECT_EQ(count, 2);
}

TEST(StreamDouble, FailsAtItsCallOrFromIt)
{
    StreamDouble stream("abcde");
    char byte = 0;
    stream.failAtCall = 2;
    EXPECT_EQ(stream.read(&byte, 1, nullptr), kResultOk);
    EXPECT_EQ(stream.seek(0, IBStream::kIBSeekSet, nullptr), kResultFalse);
    EXPECT_EQ(stream.tell(&stream.position), kResultOk);
    stream.failFrom = 4;
    EXPECT_EQ(stream.read(&byte, 1, nullptr), kResultFalse);
    EXPECT_EQ(stream.read(&byte, 1, nullptr), kResultFalse);
    stream.failFrom = 0;
    stream.throwAtCall = 6;
    EXPECT_THROW(stream.read(&byte, 1, nullptr), doubles::ScriptedFailure);
    EXPECT_EQ(stream.position, 1);
}

TEST(StreamDouble, TakesNoMoreThanItsLimit)
{
    StreamDouble stream;
    std::string text = "abcdef";
    stream.writeLimit = 4;
    int32 count = 0;
    EXPECT_EQ(stream.write(text.data(), 3, &count), kResultOk);
    EXPECT_EQ(stream.write(text.data(), 3, &count), kResultFalse);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(stream.data, "abca");
    stream.shortWrites = true;
    EXPECT_EQ(stream.write(text.data(), 3, &count), kResultOk);
    EXPECT_EQ(count, 0);
}

TEST(StreamDouble, SeeksFromEachEndAndCountsReferences)
{
    StreamDouble stream("abcde");
    int64 at = 0;
    EXPECT_EQ(stream.seek(-2, IBStream::kIBSeekEnd, &at), kResultOk);
    EXPECT_EQ(at, 3);
    EXPECT_EQ(stream.seek(1, IBStream::kIBSeekCur, &at), kResultOk);
    EXPECT_EQ(at, 4);
    EXPECT_NE(stream.seek(-9, IBStream::kIBSeekCur, &at), kResultOk);
    void* found = nullptr;
    EXPECT_EQ(stream.queryInterface(IBStream::iid, &found), kResultOk);
    EXPECT_EQ(stream.getReferences(), 2);
}

TEST(EventListDouble, RefusesWhatIsOverItsLimitAndWhatIsUnreadable)
{
    doubles::EventListDouble list;
    list.limit = 1;
    auto event = doubles::noteOn(1, 60, 0.5f);
    EXPECT_EQ(list.addEvent(event), kResultOk);
    EXPECT_EQ(list.addEvent(event), kResultFalse);
    EXPECT_EQ(list.getEventCount(), 1);
    Vst::Event read{};
    EXPECT_EQ(list.getEvent(0, read), kResultOk);
    EXPECT_EQ(read.noteOn.pitch, 60);
    EXPECT_EQ(list.getEvent(1, read), kResultFalse);
    list.unreadable = {0};
    EXPECT_EQ(list.getEvent(0, read), kResultFalse);
}

TEST(ParameterChangesDouble, HoldsQueuesNullQueuesAndUnreadablePoints)
{
    doubles::ParameterChangesDouble changes;
    changes.add(37012000, {{0, 0.25}, {64, 0.5}}).unreadable = {0};
    changes.addNull();
    ASSERT_EQ(changes.getParameterCount(), 2);
    EXPECT_EQ(changes.getParameterData(1), nullptr);
    auto* queue = changes.getParameterData(0);
    ASSERT_NE(queue, nullptr);
    EXPECT_EQ(queue->getParameterId(), 37012000u);
    int32 offset = -1;
    double value = -1;
    EXPECT_EQ(queue->getPoint(0, offset, value), kResultFalse);
    EXPECT_EQ(queue->getPoint(1, offset, value), kResultOk);
    EXPECT_EQ(offset, 64);
    EXPECT_EQ(value, 0.5);
    EXPECT_EQ(changes.foreignReferences(), 0);
    queue->addRef();
    EXPECT_EQ(changes.foreignReferences(), 1);
}
