#include "tests/simulator/SimulatorFixture.h"

#include <gtest/gtest.h>

namespace {

using namespace doubles;

TEST(SimulatorEntryPoints, EntryPointsAcceptNull)
{
    const LoadedSimulator library;
    library.connect(nullptr);
    library.observe(nullptr, nullptr, 0, 0, 0, 0, nullptr, VstIObserver::ParamModePart, nullptr,
                    nullptr);
    EXPECT_EQ(nullptr, library.control(-1));
    EXPECT_EQ(nullptr, library.control(0));
}

TEST(SimulatorEntryPoints, GetVSTEditorConnectObjectMakesAnInstanceAndGetSimulatorControlListsThem)
{
    const LoadedSimulator library;
    VstIEditorConnect* first = nullptr;
    VstIEditorConnect* second = nullptr;
    library.connect(&first);
    library.connect(&second);
    ASSERT_NE(first, second);
    first->setHostType(1);
    second->setHostType(2);

    EXPECT_EQ(1, library.control(0)->hostType());
    EXPECT_EQ(2, library.control(1)->hostType());
    EXPECT_EQ(library.control(1), library.control(-1));
    EXPECT_EQ(nullptr, library.control(2));
    EXPECT_EQ(nullptr, library.control(-2));

    first->destroy();
    EXPECT_EQ(2, library.control(0)->hostType());
    EXPECT_EQ(nullptr, library.control(1));
    second->destroy();
    EXPECT_EQ(nullptr, library.control(-1));
}

} // namespace
