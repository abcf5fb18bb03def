// A host that ends its plug-in after main, when the statics of the module and of the editor library
// have been destroyed. The address sanitizer sees what of them is still used.
#ifdef LATE_HOST

#include "tests/simulator/CommandOutput.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <unistd.h>

namespace {

using testing::HasSubstr;

class LateEnd : public testing::Test {
protected:
    ~LateEnd() override { std::filesystem::remove(report); }

    /** @param runLoop late-host's argument */
    doubles::CommandOutput run(const std::string& runLoop) const
    {
        // What was freed is overwritten, so that its use shows without a sanitizer too.
        return doubles::runCommand("MALLOC_PERTURB_=165 SIMULATOR_REPORT='" + report.string() +
                                   "' " LATE_HOST " " + runLoop);
    }

    std::string reported() const
    {
        std::ifstream file(report);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const std::filesystem::path report =
        std::filesystem::temp_directory_path() / ("late-end." + std::to_string(getpid()));
};

TEST_F(LateEnd, OfAnInstanceWithoutTicksEndsTheInstrumentToo)
{
    const auto output = run("");
    EXPECT_EQ(output.status, 0) << output.text;
    EXPECT_EQ(output.text, "main ends\nending\nended\n");
    EXPECT_THAT(reported(), HasSubstr("begin 1\nend 1\n"));
}

TEST_F(LateEnd, TakesTheTimerOutAndTicksUntilThen)
{
    const auto output = run("own");
    EXPECT_EQ(output.status, 0) << output.text;
    EXPECT_EQ(output.text, "main ends\nknob turned\nending\ntimer taken out\nended\n"
                           "run loop deleted\n");
    EXPECT_THAT(reported(), HasSubstr("end 1\n"));
}

TEST_F(LateEnd, FindsTheRunLoopThatTheHostLetGoOf)
{
    const auto output = run("lent");
    EXPECT_EQ(output.status, 0) << output.text;
    EXPECT_EQ(output.text, "main ends\nending\ntimer taken out\nrun loop deleted\nended\n");
    EXPECT_THAT(reported(), HasSubstr("end 1\n"));
}

TEST_F(LateEnd, IsNotDisturbedByTicksThatComeStill)
{
    const auto output = run("refusing");
    EXPECT_EQ(output.status, 0) << output.text;
    EXPECT_EQ(output.text, "main ends\nknob turned\nending\nended\nrun loop deleted\n");
    EXPECT_THAT(reported(), HasSubstr("end 1\n"));
}

} // namespace

#endif
