// What makes a run of the validator fail, tried on made-up runs.
#include "tests/hosts/validator/ExpectedFailures.h"

#include <gmock/gmock.h>

namespace {

using namespace hosts;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kList = "# a comment\n"
                          "test:   Suite / Second\n"
                          "error:  is wrong\n"
                          "reason: it has to be\n"
                          "        so\n";

std::string run(const std::string& second, const std::string& summary)
{
    return "* Running tests...\n\n-----\nTestSuite : Suite\n-----\n\n"
           "[First: with a description]\nInfo:  said\n[Succeeded]\n\n" +
           second + "\n-----\n" + summary + "\n-----\n";
}

const std::string kFailedAsListed = "[Second]\nERROR: is wrong\n[XXXXXXX Failed]\n";
const std::string kOneOfTwo = "Result: 1 tests passed, 1 tests failed";

std::vector<std::string> complaints(const std::string& text, const std::string& list = kList)
{
    return ExpectedFailures::read(list).compare(ValidatorReport::read(text));
}

TEST(ValidatorReport, NamesTestsBySuiteAndKeepsTheirErrors)
{
    const auto report = ValidatorReport::read(run(kFailedAsListed, kOneOfTwo));
    EXPECT_TRUE(report.finished);
    ASSERT_EQ(report.outcomes.size(), 2u);
    EXPECT_EQ(report.outcomes[0].name, "Suite / First: with a description");
    EXPECT_TRUE(report.outcomes[0].passed);
    EXPECT_EQ(report.outcomes[1].name, "Suite / Second");
    EXPECT_FALSE(report.outcomes[1].passed);
    EXPECT_THAT(report.outcomes[1].errors, ElementsAre("is wrong"));
    EXPECT_EQ(report.countOf("Suite"), 2u);
    EXPECT_EQ(report.countOf("Sui"), 0u);
}

TEST(ExpectedFailures, AcceptWhatIsListed)
{
    EXPECT_THAT(complaints(run(kFailedAsListed, kOneOfTwo)), IsEmpty());
    EXPECT_EQ(ExpectedFailures::read(kList).all().front().reason, "it has to be so");
}

TEST(ExpectedFailures, RefuseAFailureThatIsNotListed)
{
    EXPECT_THAT(complaints(run("[Other]\n[XXXXXXX Failed]\n", kOneOfTwo), ""),
                ElementsAre("Suite / Other failed: no error line"));
}

TEST(ExpectedFailures, RefuseAListedFailureThatPasses)
{
    EXPECT_THAT(
        complaints(run("[Second]\n[Succeeded]\n", "Result: 2 tests passed, 0 tests failed")),
        ElementsAre("Suite / Second is expected to fail and did not"));
}

TEST(ExpectedFailures, RefuseAListedTestThatIsGone)
{
    EXPECT_THAT(complaints(run("", "Result: 1 tests passed, 0 tests failed")),
                ElementsAre("Suite / Second is expected to fail and did not"));
}

TEST(ExpectedFailures, RefuseAnotherErrorInAListedTest)
{
    EXPECT_THAT(complaints(run("[Second]\nERROR: is worse\n[XXXXXXX Failed]\n", kOneOfTwo)),
                ElementsAre("Suite / Second failed in another way: is worse"));
}

TEST(ExpectedFailures, RefuseAnErrorInATestThatPasses)
{
    EXPECT_THAT(complaints(run("[Other]\nERROR: odd\n[Succeeded]\n",
                               "Result: 2 tests passed, 0 tests failed"),
                           ""),
                ElementsAre("Suite / Other passed with errors: odd"));
}

// The validator neither counts these nor ends with another status for them.
TEST(ExpectedFailures, RefuseATestThatCannotBeSetUpOrTornDown)
{
    EXPECT_THAT(
        complaints(
            run("[Other]\nFailed to setup test!\n", "Result: 2 tests passed, 0 tests failed"), ""),
        ElementsAre("Suite / Other failed: no error line"));
    EXPECT_THAT(complaints(run("[Other]\n[Succeeded]\nFailed to teardown test!\n",
                               "Result: 2 tests passed, 0 tests failed"),
                           ""),
                ElementsAre("Suite / Other failed: Failed to teardown test!"));
}

TEST(ExpectedFailures, RefuseARunThatBrokeOff)
{
    const auto text = run(kFailedAsListed, "");
    EXPECT_THAT(complaints(text), ElementsAre(HasSubstr("broke off")));
    EXPECT_THAT(complaints(run(kFailedAsListed, "Result: 7 tests passed, 1 tests failed")),
                ElementsAre(HasSubstr("broke off")));
}

TEST(ExpectedFailures, NeedAReasonAndAFormThatIsUnderstood)
{
    const auto text = run(kFailedAsListed, kOneOfTwo);
    EXPECT_THAT(complaints(text, "test: Suite / Second\nerror: is wrong\n"),
                ElementsAre(HasSubstr("lacks its test or its reason")));
    EXPECT_THAT(complaints(text, "tset: x\n" + kList), ElementsAre(HasSubstr("before the first")));
    EXPECT_THAT(complaints(text, kList + "remark: x\n"), ElementsAre("not understood: remark"));
    EXPECT_THAT(complaints(text, kList + "anything\n"), ElementsAre("not understood: anything"));
}

} // namespace
