#include "tests/doubles/CallScript.h"
#include "tests/doubles/CallText.h"

#include <gmock/gmock.h>

using doubles::CallScript;
using doubles::callText;
using doubles::Nonsense;
using testing::ElementsAre;

TEST(CallText, WritesArgumentsShortAndExactly)
{
    int object = 0;
    const void* none = nullptr;
    EXPECT_EQ(callText("host", "a"), "host.a()");
    EXPECT_EQ(callText("host", "a", 37012000u, 0.5, 0.1, true, "text", std::string("more")),
              "host.a(37012000, 0.5, 0.1, true, text, more)");
    EXPECT_EQ(callText("host", "a", &object, none, static_cast<const char*>(nullptr), 0.1f),
              "host.a(object, null, null, 0.10000000149011612)");
    const unsigned char bytes[] = {0x90, 0x3C, 0x7F};
    EXPECT_EQ(doubles::bytesText(bytes, 3), "90 3C 7F");
}

TEST(CallScript, NamesACallByItsBeginningOrByItsOperation)
{
    doubles::Trace trace;
    CallScript script(trace);
    script.failAt("getInteger");
    script.failAt("port(A).");
    EXPECT_FALSE(script.called("value(Mixer.selected).getInteger()"));
    EXPECT_FALSE(script.called("port(A).isDisplayed()"));
    EXPECT_TRUE(script.called("port(AB).isDisplayed()"));
    EXPECT_TRUE(script.called("value(Mixer.selected).getIntegers()"));
    EXPECT_TRUE(script.called("host.performEdit(1, 0.5)"));
    script.throwAt("performEdit(1, 0.5)");
    EXPECT_THROW(script.called("host.performEdit(1, 0.5)"), doubles::ScriptedFailure);
    EXPECT_EQ(trace.count("host.performEdit(1, 0.5)"), 2u) << "recorded although it threw";
}

TEST(CallScript, FailsOrThrowsAtTheCallThatWasCounted)
{
    doubles::Trace trace;
    CallScript script(trace);
    script.called("host.before()");
    script.failAtCall(2);
    EXPECT_TRUE(script.called("host.a()"));
    EXPECT_FALSE(script.called("host.b()"));
    EXPECT_TRUE(script.called("host.c()"));
    EXPECT_EQ(script.callCount(), 3u);
    script.throwAtCall(1);
    EXPECT_THROW(script.called("host.d()"), doubles::ScriptedFailure);
    EXPECT_TRUE(script.called("host.d()"));
}

TEST(CallScript, RunsTheHookBeforeTheCallAndLetsItThrow)
{
    doubles::Trace trace;
    CallScript script(trace);
    std::vector<std::string> seen;
    script.onCall = [&](const std::string& text) {
        seen.push_back(text);
        if (text == "host.b()")
            throw 1;
    };
    script.called("host.a()");
    EXPECT_THROW(script.called("host.b()"), int);
    EXPECT_THAT(seen, ElementsAre("host.a()", "host.b()"));
}

TEST(CallScript, AnswersTheNonsenseThatWasAskedForAndNoOther)
{
    doubles::Trace trace;
    CallScript script(trace);
    const auto answers = [&](size_t n, Nonsense what) {
        script.talkNonsenseAtCall(n, what);
        script.called("host.a()");
        return std::make_tuple(script.told(5, 100), script.toldFlag(true), script.toldFlag(false),
                               script.toldWithoutObject(), script.toldText());
    };
    const auto none = std::optional<Nonsense>();
    EXPECT_EQ(answers(1, Nonsense::kWrong),
              std::make_tuple(CallScript::kNonsense, false, true, true, none));
    EXPECT_EQ(answers(1, Nonsense::kHuge), std::make_tuple(100, true, false, false, none));
    EXPECT_EQ(answers(1, Nonsense::kBrokenText),
              std::make_tuple(5, true, false, false, std::optional(Nonsense::kBrokenText)));
    EXPECT_TRUE(script.nonsenseTold());
    EXPECT_EQ(answers(2, Nonsense::kHuge), std::make_tuple(5, true, false, false, none));
    EXPECT_FALSE(script.nonsenseTold());
}

TEST(CallScript, KnowsWhichCallsHadAnAnswerForNonsense)
{
    doubles::Trace trace;
    CallScript script(trace);
    script.watchAnswers();
    script.called("host.number()");
    EXPECT_EQ(script.told(5), 5);
    script.called("host.nothing()");
    script.called("host.text()");
    EXPECT_EQ(script.toldText(), std::nullopt);
    EXPECT_TRUE(script.hadAnswer(1, Nonsense::kWrong));
    EXPECT_TRUE(script.hadAnswer(1, Nonsense::kHuge));
    EXPECT_FALSE(script.hadAnswer(1, Nonsense::kEmptyText));
    EXPECT_FALSE(script.hadAnswer(2, Nonsense::kWrong));
    EXPECT_TRUE(script.hadAnswer(3, Nonsense::kEndlessText));
    EXPECT_FALSE(script.hadAnswer(3, Nonsense::kHuge));
    EXPECT_FALSE(script.hadAnswer(4, Nonsense::kWrong));
}
