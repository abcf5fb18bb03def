// The queue of MIDI events from the library to the host.
#include "processor/MidiOutQueue.h"

#include <deque>
#include <functional>
#include <gmock/gmock.h>
#include <random>
#include <utility>
#include <vector>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::Contains;

MidiBytes message(int number)
{
    return {static_cast<uint8>(number >> 16), static_cast<uint8>(number >> 8),
            static_cast<uint8>(number)};
}

/** The number of the oldest message, or -1. */
template <class Queue>
int popNumber(Queue& queue)
{
    MidiBytes midi;
    return queue.pop(midi) ? midi[0] << 16 | midi[1] << 8 | midi[2] : -1;
}

TEST(MidiOutQueue, SizeIsZeroAtFirst)
{
    MidiOutQueue queue;
    EXPECT_EQ(queue.size(), 0u);
    EXPECT_EQ(popNumber(queue), -1);
}

TEST(MidiOutQueue, PushAndPopKeepAllThreeBytes)
{
    MidiOutQueue queue;
    queue.push({0xFF, 0x80, 0x01});
    queue.push({0x00, 0x00, 0x00});
    MidiBytes midi;
    EXPECT_TRUE(queue.pop(midi));
    EXPECT_EQ(midi, (MidiBytes{0xFF, 0x80, 0x01}));
    EXPECT_TRUE(queue.pop(midi));
    EXPECT_EQ(midi, (MidiBytes{0x00, 0x00, 0x00}));
}

TEST(MidiOutQueue, PushKeepsAHundredEvents)
{
    MidiOutQueue queue;
    for (int number = 0; number < 100; ++number)
        queue.push(message(number));
    EXPECT_EQ(queue.size(), 100u);
    for (int number = 0; number < 100; ++number)
        EXPECT_EQ(popNumber(queue), number);
    EXPECT_EQ(popNumber(queue), -1);
}

TEST(MidiOutQueue, PushDropsAllOfAHundredForOneMore)
{
    MidiOutQueue queue;
    for (int number = 0; number <= 100; ++number)
        queue.push(message(number));
    EXPECT_EQ(queue.size(), 1u);
    EXPECT_EQ(popNumber(queue), 100);
    EXPECT_EQ(popNumber(queue), -1);
}

/** Pushes and pops at random, compared with a deque. The count of events starts at 1, shortly
    before it outgrows its bits, and far beyond. */
TEST(MidiOutQueue, PushAndPopKeepTheRuleHoweverOftenTheQueueGoesRound)
{
    constexpr uint64 kTooLargeForAWord = uint64(1) << 40;
    for (const uint64 begin : {uint64(1), kTooLargeForAWord - 5000, ~uint64(0) >> 1}) {
        MidiOutQueue queue(begin);
        std::deque<int> expected;
        std::mt19937 random(1);
        for (int number = 0; number < 20'000; ++number) {
            for (unsigned pushes = random() % 150; pushes > 0; --pushes) {
                if (expected.size() >= 100)
                    expected.clear();
                expected.push_back(number);
                queue.push(message(number));
            }
            ASSERT_EQ(queue.size(), expected.size());
            for (unsigned pops = random() % 150; pops > 0 && !expected.empty(); --pops) {
                ASSERT_EQ(popNumber(queue), expected.front());
                expected.pop_front();
            }
            ASSERT_EQ(queue.size(), expected.size());
        }
    }
}

/** An atomic word that runs other threads' work before one of its uses. */
class StoppingWord : public std::atomic<uint64> {
public:
    using std::atomic<uint64>::atomic;
    using std::atomic<uint64>::operator=;

    uint64 load(std::memory_order order = std::memory_order_seq_cst) const
    {
        stop();
        return std::atomic<uint64>::load(order);
    }
    void store(uint64 value, std::memory_order order)
    {
        stop();
        std::atomic<uint64>::store(value, order);
    }
    bool compare_exchange_weak(uint64& expected, uint64 value)
    {
        stop();
        return std::atomic<uint64>::compare_exchange_weak(expected, value);
    }

    static inline int stepsToGo = -1; ///< uses before that one
    static inline std::function<void()> meanwhile;

private:
    static void stop()
    {
        if (stepsToGo-- == 0)
            meanwhile();
    }
};

using StoppingQueue = BasicMidiOutQueue<StoppingWord>;

/** Runs an operation, and the others' work before its step of that number, counted from 0.
    @return false when it does not have so many */
bool runStopped(int step, const std::function<void()>& operation,
                const std::function<void()>& others)
{
    StoppingWord::stepsToGo = step;
    StoppingWord::meanwhile = others;
    operation();
    return std::exchange(StoppingWord::stepsToGo, -1) < 0;
}

/** The queue's rule on a vector. */
void add(std::vector<int>& waiting, int number)
{
    if (waiting.size() >= 100)
        waiting.clear();
    waiting.push_back(number);
}

void addNumbers(std::vector<int>& waiting, int from, int to)
{
    for (int number = from; number < to; ++number)
        add(waiting, number);
}

template <class Queue>
void pushNumbers(Queue& queue, int from, int to)
{
    for (int number = from; number < to; ++number)
        queue.push(message(number));
}

template <class Queue>
std::vector<int> popAll(Queue& queue)
{
    std::vector<int> numbers;
    for (int number = popNumber(queue); number >= 0; number = popNumber(queue))
        numbers.push_back(number);
    return numbers;
}

constexpr int kWaiting[] = {0, 1, 70, 99, 100};
constexpr int kOthers[] = {1, 2, 30, 99, 100, 101, 250};

/** Stops an operation at each of its steps while others push. The result must be that of the
    operation before, between or after the others' pushes.
    @param operation on the queue; gives the number that it took, if any
    @param expected what is taken and left when so many of the others come before the operation
    @param steps that the operation has at least */
void expectPossible(
    const std::function<std::vector<int>(StoppingQueue&)>& operation,
    const std::function<std::vector<int>(int waiting, int before, int others)>& expected, int steps)
{
    for (const int waiting : kWaiting)
        for (const int others : kOthers) {
            std::vector<std::vector<int>> possible;
            for (int before = 0; before <= others; ++before)
                possible.push_back(expected(waiting, before, others));
            int step = 0;
            for (;; ++step) {
                StoppingQueue queue;
                pushNumbers(queue, 0, waiting);
                std::vector<int> numbers;
                if (!runStopped(
                        step, [&] { numbers = operation(queue); },
                        [&] { pushNumbers(queue, waiting, waiting + others); }))
                    break;
                const size_t size = queue.size();
                const auto left = popAll(queue);
                EXPECT_EQ(left.size(), size);
                numbers.insert(numbers.end(), left.begin(), left.end());
                EXPECT_THAT(possible, Contains(numbers))
                    << waiting << " waiting, " << others << " others, step " << step;
            }
            EXPECT_GE(step, steps);
        }
}

TEST(MidiOutQueue, PushAddsAMessageWhoseWriterIsStoppedAtAnyStep)
{
    constexpr int kMessage = 10'000;
    const auto push = [](StoppingQueue& queue) {
        queue.push(message(kMessage));
        return std::vector<int>();
    };
    const auto expected = [](int waiting, int before, int others) {
        std::vector<int> left;
        addNumbers(left, 0, waiting + before);
        add(left, kMessage);
        addNumbers(left, waiting + before, waiting + others);
        return left;
    };
    expectPossible(push, expected, 4);
}

TEST(MidiOutQueue, PopGivesAMessageThoughItsReaderIsStoppedAtAnyStep)
{
    const auto pop = [](StoppingQueue& queue) { return std::vector<int>{popNumber(queue)}; };
    const auto expected = [](int waiting, int before, int others) {
        std::vector<int> left;
        addNumbers(left, 0, waiting + before);
        const int taken = left.empty() ? -1 : left.front();
        left.erase(left.begin(), left.begin() + (left.empty() ? 0 : 1));
        addNumbers(left, waiting + before, waiting + others);
        left.insert(left.begin(), taken);
        return left;
    };
    expectPossible(pop, expected, 2);
}

} // namespace
