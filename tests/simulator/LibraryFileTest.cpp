#include "tests/simulator/SimulatorFixture.h"

#include <gtest/gtest.h>

namespace {

using namespace doubles;

TEST(SimulatorFile, HasTheNameOfTheRealLibrary)
{
    const std::string file = SIMULATOR_FILE;
    const std::string expected = "/Library/Application Support/Tavrin/VST/RDL3_RDL5/"
                                 "libvst_rdl3_rdl5_vstserver.1.dylib";
    ASSERT_GT(file.size(), expected.size());
    EXPECT_EQ(expected, file.substr(file.size() - expected.size()));
}

TEST(SimulatorEntryPoints, TakeNullOutSlots)
{
    const LoadedSimulator library;
    library.connect(nullptr);
    library.observe(nullptr, nullptr, 0, 0, 0, 0, nullptr, VstIObserver::ParamModePart, nullptr,
                    nullptr);
    EXPECT_EQ(nullptr, library.control(-1));
    EXPECT_EQ(nullptr, library.control(0));
}

TEST(SimulatorEntryPoints, MakeOneInstanceACallAndListThemOldestFirst)
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
