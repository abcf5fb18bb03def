#include "tests/doubles/Trace.h"

#include <gmock/gmock.h>

TEST(Trace, KeepsCallsInOrderAndFiltersByPrefix)
{
    doubles::Trace trace;
    trace.add("host.a()");
    trace.add("library.b()");
    trace.add("host.c()");
    EXPECT_THAT(trace.texts(), testing::ElementsAre("host.a()", "library.b()", "host.c()"));
    EXPECT_THAT(trace.textsOf({"host."}), testing::ElementsAre("host.a()", "host.c()"));
    EXPECT_EQ(trace.count("library.b()"), 1u);
}
