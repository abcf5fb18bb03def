#include "tests/doubles/CallScript.h"
#include "tests/doubles/CallText.h"

#include <gmock/gmock.h>

using doubles::CallScript;
using doubles::callText;
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
