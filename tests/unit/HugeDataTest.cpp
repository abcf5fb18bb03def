// A library that gives more bytes than a size field can hold.
#include "tests/unit/FoldedMemory.h"
#include "tests/unit/PresetCreaterFixture.h"
#include "tests/unit/ProcessorFixture.h"

#ifndef VSTK2X_SANITIZED

namespace {

using namespace Steinberg;

constexpr size_t kTooMany = size_t(1) << 31; ///< bytes: one more than a size field holds

class HugeLibrary final : public doubles::ScriptedLibrary {
public:
    using ScriptedLibrary::ScriptedLibrary;

    std::vector<char> getStateChunk() override { return std::vector<char>(kTooMany); }
};

using HugeStateTest = unit::ProcessorFixture;

TEST_F(HugeStateTest, GetStateFailsBehindTheVersion)
{
    HugeLibrary huge(trace);
    connect(&huge);
    doubles::StreamDouble stream;
    const unit::FoldedMemory folded;
    EXPECT_EQ(processor->getState(&stream), kResultFalse);
    EXPECT_EQ(stream.data, std::string(4, '\0'));
}

using HugeUserBankTest = PresetCreaterTest;

TEST_F(HugeUserBankTest, CreatePresetFileWritesNothing)
{
    makeFolder();
    library.userBank = [](int32, int32) { return std::vector<char>(kTooMany); };
    const unit::FoldedMemory folded;
    EXPECT_EQ(createFile("a", 8, 1), 1);
    EXPECT_EQ(home.content("a.vstpreset"), "");
}

} // namespace

#endif
