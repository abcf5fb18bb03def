#include "tests/unit/ProcessorFixture.h"

#include <cmath>
#include <limits>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::IsEmpty;

constexpr int32 kMostNegative = std::numeric_limits<int32>::min();
constexpr int32 kMostPositive = std::numeric_limits<int32>::max();

class GetLatencySamples : public unit::ProcessorFixture {
protected:
    void SetUp() override
    {
        connect();
        sayUnicode(1);
    }
};

struct LatencyRow {
    double rate;
    uint32 oneMillisecond;
    uint32 fiveMilliseconds;
};

TEST_F(GetLatencySamples, IsTheModesTimeAtTheSampleRateTruncatedAndNoneInAnotherMode)
{
    const LatencyRow table[] = {{8000, 8, 40},    {11025, 11, 55},    {22050, 22, 110},
                                {44100, 44, 220}, {48000, 48, 240},   {88200, 88, 441},
                                {96000, 96, 480}, {192000, 192, 960}, {999, 0, 4},
                                {1000, 1, 5},     {44199.9, 44, 220}};
    for (const auto& row : table) {
        EXPECT_EQ(setUp(row.rate), kResultOk);
        for (const int32 mode : {0, 1}) {
            library.latencyMode = mode;
            EXPECT_EQ(processor->getLatencySamples(), row.oneMillisecond) << row.rate;
        }
        library.latencyMode = 2;
        EXPECT_EQ(processor->getLatencySamples(), row.fiveMilliseconds) << row.rate;
    }
    setUp(44100);
    for (const int32 mode : {3, 4, -1, 256, kMostNegative, kMostPositive}) {
        library.latencyMode = mode;
        EXPECT_EQ(processor->getLatencySamples(), 0u) << mode;
    }
}

TEST_F(GetLatencySamples, IsNoneInAHostWithoutUnicodeAndTheLibraryIsNotAsked)
{
    setUp(44100);
    library.latencyMode = 2;
    EXPECT_EQ(processor->getLatencySamples(), 220u);
    sayUnicode(0);
    trace.clear();
    EXPECT_EQ(processor->getLatencySamples(), 0u);
    EXPECT_THAT(trace.texts(), IsEmpty());
}

TEST_F(GetLatencySamples, IsNoneWhenTheLibraryThrowsAndWithoutALibrary)
{
    setUp(44100);
    library.throwAt("getLatencyMode");
    EXPECT_EQ(processor->getLatencySamples(), 0u);
    library.clearFaults();
    disconnect();
    EXPECT_EQ(processor->getLatencySamples(), 0u);
}

TEST_F(GetLatencySamples, IsNoneBeforeTheHostSaidASampleRateThatGivesACount)
{
    library.latencyMode = 2;
    EXPECT_EQ(processor->getLatencySamples(), 0u);
    for (const double rate :
         {-44100.0, -1e300, std::nan(""), 1e300, std::numeric_limits<double>::infinity(), 1e15}) {
        setUp(rate);
        EXPECT_EQ(processor->getLatencySamples(), 0u) << rate;
    }
}

/** Shows the set-up that the base class keeps. */
class OpenProcessor : public VstK2x {
public:
    const ProcessSetup& setup() const { return processSetup; }
};

TEST(SetupProcessing, KeepsASetupWhoseSampleSizeCanBeProcessedAndRefusesOthers)
{
    const auto processor = owned(new OpenProcessor);
    ProcessSetup setup{kOffline, kSample32, 4096, 96000};
    EXPECT_EQ(processor->setupProcessing(setup), kResultOk);
    EXPECT_EQ(processor->setup().processMode, kOffline);
    EXPECT_EQ(processor->setup().symbolicSampleSize, kSample32);
    EXPECT_EQ(processor->setup().maxSamplesPerBlock, 4096);
    EXPECT_EQ(processor->setup().sampleRate, 96000.0);
    for (const int32 size : {int32(kSample64), 2, -1}) {
        ProcessSetup other{kRealtime, size, 512, 44100};
        EXPECT_EQ(processor->setupProcessing(other), kResultFalse) << size;
        EXPECT_EQ(processor->setup().processMode, kOffline);
        EXPECT_EQ(processor->setup().maxSamplesPerBlock, 4096);
        EXPECT_EQ(processor->setup().sampleRate, 96000.0);
    }
}

TEST_F(GetLatencySamples, FollowsTheSampleRateOfARefusedSetupProcessingToo)
{
    setUp(44100);
    EXPECT_EQ(setUp(96000, kSample64), kResultFalse);
    EXPECT_EQ(processor->getLatencySamples(), 96u);
}

} // namespace
