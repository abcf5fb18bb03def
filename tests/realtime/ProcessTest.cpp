// The processor's block on the audio thread takes no memory.
#include "tests/realtime/AllocationCount.h"
#include "tests/unit/ProcessorFixture.h"

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

class ProcessMemory : public unit::ProcessorFixture {
protected:
    void SetUp() override
    {
        connectAndActivate();
        library.quiet = true; // the scripted library's own record would take some
    }

    size_t takenBy(ProcessData& data)
    {
        const size_t before = doubles::allocationCount();
        const tresult result = processor->process(data);
        const size_t taken = doubles::allocationCount() - before;
        EXPECT_EQ(result, kResultOk);
        return taken;
    }
};

TEST_F(ProcessMemory, CounterSeesWhatIsTaken)
{
    const size_t before = doubles::allocationCount();
    const std::string text(1000, 'x');
    EXPECT_EQ(text.size(), 1000u);
    EXPECT_EQ(doubles::allocationCount() - before, 1u);
}

TEST_F(ProcessMemory, IsNotTakenForNotesAndAutomation)
{
    unit::Block block;
    for (int16 pitch = 0; pitch < 128; ++pitch) {
        block.in.add(doubles::noteOn(0, pitch, 1));
        block.in.add(doubles::noteOff(0, pitch));
        block.changes.add(37012000u + static_cast<ParamID>(pitch), {{0, 0.25}, {63, 0.5}});
    }
    EXPECT_EQ(takenBy(block.data), 0u);
    EXPECT_EQ(library.quietCalls, 3u * 128u);
}

TEST_F(ProcessMemory, IsNotTakenForAFullQueueOnItsWayOut)
{
    for (int note = 0; note < 100; ++note)
        writeMidi(0x90, note, 127);
    unit::Block block;
    EXPECT_EQ(takenBy(block.data), 0u);
    EXPECT_EQ(block.out.events.size(), 100u);
}

TEST_F(ProcessMemory, IsNotTakenWithoutALibrary)
{
    disconnect();
    unit::Block block;
    block.in.add(doubles::noteOn(0, 60, 1));
    EXPECT_EQ(takenBy(block.data), 0u);
}

} // namespace
