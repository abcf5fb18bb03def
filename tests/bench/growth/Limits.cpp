// What users notice, by the length of a block. Time is counted in samples and not on a clock, so
// that the figures are the same on every machine.
#include "tests/bench/Blocks.h"
#include "tests/bench/growth/Growth.h"
#include "tests/bench/LinkedInstance.h"

#include <algorithm>
#include <cstdio>

namespace bench::growth {

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

constexpr double kSampleRate = 48'000;
constexpr double kSeconds = 20;
constexpr uint8 kNote[] = {0x90, 60, 100};
const std::vector<int> kLengths = steps(64, 2, 8192);
const std::vector<int> kRates = {1'000, 3'000}; ///< events a second
constexpr int kHighestRate = 100'000;

/** An instance that processes one block after another. */
class Session : LinkedScene {
public:
    explicit Session(int length)
    : samples(length)
    {
        block.data.numSamples = length;
    }

    /** What the library sends at a constant rate while kSeconds pass.
        @return the share that arrives, 0 to 1 */
    double shareThatArrives(int rate)
    {
        long sent = 0;
        long arrived = 0;
        for (double end = samples; end < kSeconds * kSampleRate; end += samples) {
            for (; static_cast<double>(sent) * kSampleRate < end * rate; ++sent)
                instance.writeMidi(kNote, sizeof(kNote));
            arrived += static_cast<long>(sendBlock());
        }
        return static_cast<double>(arrived) / static_cast<double>(sent);
    }

    /** The most events a second of which none is lost. */
    int safeRate()
    {
        int safe = 0;
        int lossy = kHighestRate;
        while (safe + 1 < lossy) {
            const int rate = (safe + lossy) / 2;
            (shareThatArrives(rate) < 1 ? lossy : safe) = rate;
        }
        return safe;
    }

    /** The library sends a note at every sample of a block. By how many seconds the one that waits
        longest for its place in the host's time waits longer than the one that waits shortest. */
    double jitter()
    {
        double shortest = kSeconds;
        double longest = 0;
        for (int sample = 0; sample < samples; ++sample) {
            instance.writeMidi(kNote, sizeof(kNote));
            sendBlock();
            Event event;
            block.out.getEvent(0, event);
            const double wait = (samples - sample + event.sampleOffset) / kSampleRate;
            shortest = std::min(shortest, wait);
            longest = std::max(longest, wait);
        }
        return longest - shortest;
    }

    /** The values a second that reach the library, of a parameter with one for every sample. */
    double automationValues()
    {
        block.changes.clearQueue();
        block.addChange(37012000, samples);
        library.changes = 0;
        int blocks = 0;
        for (double end = samples; end < kSeconds * kSampleRate; end += samples, ++blocks)
            sendBlock();
        return library.changes / (blocks * samples / kSampleRate);
    }

private:
    /** @return the events that it brought to the host */
    int32 sendBlock()
    {
        block.out.clear();
        instance.process(block.data);
        return block.out.getEventCount();
    }

    Block block;
    int samples;
};

} // namespace

void printLimits()
{
    std::printf("samples\tseconds\tjitter\tautomation values a second\tsafe rate");
    for (const int rate : kRates)
        std::printf("\tof %d events a second", rate);
    std::printf("\n");
    for (const int length : kLengths) {
        Session session(length);
        std::printf("%d\t%.9g\t%.9g\t%.9g\t%d", length, length / kSampleRate, session.jitter(),
                    session.automationValues(), session.safeRate());
        for (const int rate : kRates)
            std::printf("\t%.9g", session.shareThatArrives(rate));
        std::printf("\n");
    }
}

} // namespace bench::growth
