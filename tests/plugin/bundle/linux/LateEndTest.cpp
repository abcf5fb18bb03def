// A host ends its plug-in after main, when the statics of module and editor library have been
// destroyed. The address sanitizer finds a use of them.
#include "tests/simulator/CommandOutput.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <unistd.h>

namespace {

/** Checks what late-host prints and what the simulator reports. */
class LateEnd : public testing::Test {
protected:
    ~LateEnd() override { std::filesystem::remove(report); }

    /** @param runLoop late-host's argument */
    void expect(const std::string& runLoop, const std::string& printed) const
    {
        // Freed memory is overwritten, so that its use is found without a sanitizer too.
        const auto output = doubles::runCommand("MALLOC_PERTURB_=165 SIMULATOR_REPORT='" +
                                                report.string() + "' " LATE_HOST " " + runLoop);
        EXPECT_EQ(output.status, 0);
        EXPECT_EQ(output.text, printed);
        std::ifstream file(report);
        const std::string reported{std::istreambuf_iterator<char>(file), {}};
        EXPECT_THAT(reported, testing::HasSubstr("begin 1\nend 1\n"));
    }

    const std::filesystem::path report =
        std::filesystem::temp_directory_path() / ("late-end." + std::to_string(getpid()));
};

TEST_F(LateEnd, TerminateWithoutARunLoopEndsTheInstrumentToo)
{
    expect("", "main ends\nending\nended\n");
}

TEST_F(LateEnd, TakesTheTimerOutAndTicksUntilThen)
{
    expect("own", "main ends\nknob turned\nending\ntimer taken out\nended\nrun loop deleted\n");
}

TEST_F(LateEnd, FindsTheRunLoopThatTheHostLetGoOf)
{
    expect("lent", "main ends\nending\ntimer taken out\nrun loop deleted\nended\n");
}

TEST_F(LateEnd, TicksAfterTerminateDoNothing)
{
    expect("refusing", "main ends\nknob turned\nending\nended\nrun loop deleted\n");
}

} // namespace
