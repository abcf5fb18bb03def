// The SDK's own validator on the built bundle.
#include "tests/hosts/HostsTable.h"
#include "tests/hosts/PartParameters.h"
#include "tests/simulator/CommandOutput.h"

#include "public.sdk/source/vst/utility/stringconvert.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <sstream>

namespace {

using namespace hosts;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const std::string kHost = "SDK's validator " + std::string(kVstVersionString);

// The edit flag has no title on purpose: through it the editor only tells the host that the sound
// was changed, so hosts should not show it as a control. The validator's test fails at the first
// parameter without a title. The flag is the last one, so all others have passed.
const std::string kExpectedFailure = "General Tests / Scan Parameters";
const auto kExpectedError = "ERROR: =>Parameter " + std::to_string(kAutomatable) +
                            " (id=" + std::to_string(doubles::kEditFlag) + "): has no title!!!";

struct Report {
    std::vector<std::string> passed; ///< "SUITE / TEST", with the test's description
    std::vector<std::string> failed;
    std::vector<std::string> errors; ///< lines of all tests
    std::string summary;             ///< "N tests passed, N tests failed"

    size_t passedOf(const std::string& suite) const
    {
        return static_cast<size_t>(
            std::count_if(passed.begin(), passed.end(), [&](const auto& name) {
                return name.compare(0, suite.size() + 1, suite + " ") == 0;
            }));
    }
};

/** @return the rest of the text after this beginning; null if it begins with something else */
const char* behind(const std::string& text, const std::string& beginning)
{
    return text.compare(0, beginning.size(), beginning) == 0 ? text.c_str() + beginning.size()
                                                             : nullptr;
}

Report readReport(const std::string& text)
{
    Report report;
    std::string suite;
    std::string test;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (const char* name = behind(line, "TestSuite : "))
            suite = name;
        else if (const char* counts = behind(line, "Result: "))
            report.summary = counts;
        else if (line == "[Succeeded]")
            report.passed.push_back(test);
        else if (behind(line, "[XXX"))
            report.failed.push_back(test);
        else if (behind(line, "ERROR: ") || behind(line, "Failed to "))
            report.errors.push_back(line); // not counted if in set-up or tear-down
        else if (line.size() > 2 && line.front() == '[' && line.back() == ']')
            test = suite + " / " + line.substr(1, line.size() - 2);
    }
    return report;
}

/** Runs the validator. Only the expected test may fail, with the expected error. */
class Validator : public testing::Test {
protected:
    static void validate(const std::string& options, size_t testsEachPrecision)
    {
        const auto output =
            doubles::runCommand("'" VALIDATOR "' " + options + " '" BUNDLE_FOLDER "'");
        SCOPED_TRACE(output.text);
        const auto report = readReport(output.text);
        EXPECT_THAT(report.failed, ElementsAre(kExpectedFailure));
        EXPECT_THAT(report.errors, ElementsAre(StartsWith(kExpectedError)));
        const auto passed = std::to_string(report.passed.size());
        EXPECT_THAT(report.summary, HasSubstr(passed + " tests passed, 1 tests failed"));
        // The validator's status when a test failed; a crash gives another one.
        EXPECT_EQ(output.status, 255);
        EXPECT_THAT(output.text, HasSubstr("cid = 13EEE3484D664261B90352CE35DD18B4"));
        EXPECT_THAT(output.text, HasSubstr("cid = 31DFD31BDBB84D128E0ABBC94E1BB134"));
        EXPECT_GE(report.passedOf("General Tests"), 18u);
        EXPECT_GE(report.passedOf("Single Precision (32 bit) Tests"), testsEachPrecision);
        EXPECT_GE(report.passedOf("Double Precision (64 bit) Tests"), testsEachPrecision);
        expectAllParameters(output.text);
        found(passed + " passed, 1 fails as expected: " + kExpectedFailure);
    }

private:
    // The validator lists the parameters but does not check them.
    static void expectAllParameters(const std::string& text)
    {
        EXPECT_THAT(text, HasSubstr("exports " + std::to_string(kParameters) + " parameter(s)"));
        for (int index = 0; index < kAutomatable; ++index) {
            const auto expected = expectedParameter(index);
            EXPECT_THAT(text, HasSubstr("(id=" + std::to_string(expected.id) + "): [title=\"" +
                                        expected.title + "\"]"));
        }
    }
};

TEST_F(Validator, DefaultTestsFailAtTheEditFlagsTitleOnly)
{
    tried(kHost, "default tests, single and double precision (which the plug-in declines)");
    validate("", 14);
}

TEST_F(Validator, ExtensiveTestsFailAtTheEditFlagsTitleOnly)
{
    tried(kHost, "extensive tests (-e), single and double precision (which the plug-in declines)");
    validate("-e", 259);
}

TEST_F(Validator, ExtensiveTestsWithAnInstanceEachFailAtTheEditFlagsTitleOnly)
{
    tried(kHost, "extensive tests with an instance of its own for each (-e -l)");
    validate("-e -l", 259);
}

} // namespace
