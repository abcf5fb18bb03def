// What the library hands out may be longer than a size field can say.
#include "tests/unit/FoldedMemory.h"
#include "tests/unit/PresetCreaterFixture.h"
#include "tests/unit/ProcessorFixture.h"

#ifndef VSTK2X_SANITIZED

namespace {

using namespace Steinberg;

constexpr size_t kTooMany = size_t(1) << 31; ///< bytes; the largest size field says one less

class HugeLibrary final : public doubles::ScriptedLibrary {
public:
    using ScriptedLibrary::ScriptedLibrary;

    std::vector<char> getStateChunk() override { return std::vector<char>(kTooMany); }
};

using HugeState = unit::ProcessorFixture;

TEST_F(HugeState, OfTheLibraryFailsBehindTheVersion)
{
    HugeLibrary huge(trace);
    connect(&huge);
    doubles::StreamDouble stream;
    const unit::FoldedMemory folded;
    EXPECT_EQ(processor->getState(&stream), kResultFalse);
    EXPECT_EQ(stream.data, std::string(4, '\0'));
}

using HugeUserBank = PresetCreaterTest;

TEST_F(HugeUserBank, IsNotWritten)
{
    makeFolder();
    library.userBank = [](int32, int32) { return std::vector<char>(kTooMany); };
    const unit::FoldedMemory folded;
    EXPECT_EQ(createFile("a", 8, 1), 1);
    EXPECT_EQ(home.content("a.vstpreset"), "");
}

} // namespace

#endif
