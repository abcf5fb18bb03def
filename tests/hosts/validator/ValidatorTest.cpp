// The SDK's own validator on the built bundle.
#include "tests/hosts/HostsTable.h"
#include "tests/hosts/PartParameters.h"
#include "tests/hosts/validator/ExpectedFailures.h"
#include "tests/simulator/CommandOutput.h"

#include "public.sdk/source/vst/utility/stringconvert.h"

#include <fstream>
#include <gmock/gmock.h>
#include <sstream>

namespace {

using namespace hosts;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kHost = "SDK's validator " + std::string(kVstVersionString);

std::string fileText(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

/** One run, whose failures are those of the reviewed list. */
class Validator : public testing::Test {
protected:
    void validate(const std::string& options, size_t testsEachPrecision)
    {
        const auto output =
            doubles::runCommand("'" VALIDATOR "' " + options + " '" BUNDLE_FOLDER "'");
        const auto report = ValidatorReport::read(output.text);
        const auto expected = ExpectedFailures::read(fileText(EXPECTED_FAILURES));
        EXPECT_THAT(expected.compare(report), IsEmpty()) << output.text;
        // Its way to say that a test failed; a signal gives another number.
        EXPECT_EQ(output.status, report.failures().empty() ? 0 : 255);
        EXPECT_THAT(output.text, HasSubstr("cid = 13EEE3484D664261B90352CE35DD18B4"));
        EXPECT_THAT(output.text, HasSubstr("cid = 31DFD31BDBB84D128E0ABBC94E1BB134"));
        EXPECT_GE(report.countOf("General Tests"), 19u);
        EXPECT_GE(report.countOf("Single Precision (32 bit) Tests"), testsEachPrecision);
        EXPECT_GE(report.countOf("Double Precision (64 bit) Tests"), testsEachPrecision);
        expectAllParameters(output.text);
        tell(report);
    }

private:
    // It lists what it finds without a judgement.
    static void expectAllParameters(const std::string& text)
    {
        EXPECT_THAT(text, HasSubstr("exports 225 parameter(s)"));
        for (int index = 0; index < kAutomatable; ++index) {
            const auto expected = expectedParameter(index);
            EXPECT_THAT(text, HasSubstr("(id=" + std::to_string(expected.id) + "): [title=\"" +
                                        expected.title + "\"]"));
        }
    }

    static void tell(const ValidatorReport& report)
    {
        const auto failures = report.failures();
        std::string text = std::to_string(report.outcomes.size() - failures.size()) + " passed";
        if (!failures.empty())
            text += ", " + std::to_string(failures.size()) + " fails as expected:";
        for (const auto& failure : failures)
            text += " " + failure.name;
        found(text);
    }
};

TEST_F(Validator, DefaultRunFailsNothingButWhatIsListed)
{
    tried(kHost, "default tests, single and double precision (which the plug-in declines)");
    validate("", 14);
}

TEST_F(Validator, ExtensiveRunFailsNothingButWhatIsListed)
{
    tried(kHost, "extensive tests (-e), single and double precision (which the plug-in declines)");
    validate("-e", 259);
}

TEST_F(Validator, RunWithAnInstanceATestFailsNothingButWhatIsListed)
{
    tried(kHost, "extensive tests with an instance of its own for each (-e -l)");
    validate("-e -l", 259);
}

} // namespace
