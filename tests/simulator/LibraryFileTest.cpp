#include "tests/simulator/CommandOutput.h"
#include "tests/simulator/SimulatorFixture.h"

#include <gmock/gmock.h>
#include <set>
#include <sstream>

namespace {

using namespace doubles;
using testing::IsSubsetOf;

std::set<std::string> lines(const std::string& text)
{
    std::set<std::string> result;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        result.insert(line);
    return result;
}

TEST(SimulatorFile, HasTheNameOfTheRealLibrary)
{
    const std::string file = SIMULATOR_FILE;
    const std::string expected = "/Library/Application Support/Tavrin/VST/RDL3_RDL5/"
                                 "libvst_rdl3_rdl5_vstserver.1.dylib";
    ASSERT_GT(file.size(), expected.size());
    EXPECT_EQ(expected, file.substr(file.size() - expected.size()));
}

#ifdef __linux__

TEST(SimulatorFile, ExportsTheEntryPointsAndTheControlOnly)
{
    const auto output =
        runCommand("nm -D --defined-only --format=just-symbols '" SIMULATOR_FILE "'");
    ASSERT_EQ(0, output.status) << output.text;
    const std::set<std::string> expected{"getVSTEditorConnectObject", "getVSTObserverObject",
                                         "getSimulatorControl"};
    EXPECT_EQ(expected, lines(output.text));
}

TEST(SimulatorFile, DependsOnTheCppRuntimeOnly)
{
    // Sanitizers bring their own runtime into a build for them.
    const auto output = runCommand("readelf -d '" SIMULATOR_FILE
                                   "' | sed -n 's/.*(NEEDED).*\\[\\(.*\\)\\]/\\1/p' | "
                                   "grep -v -E '^lib(asan|tsan|ubsan)'");
    ASSERT_EQ(0, output.status) << output.text;
    const std::set<std::string> allowed{"libstdc++.so.6", "libm.so.6", "libgcc_s.so.1",
                                        "libc.so.6"};
    EXPECT_THAT(lines(output.text), IsSubsetOf(allowed));
}

TEST(SimulatorFile, IsGoneFromTheProcessOnceClosed)
{
    {
        const LoadedSimulator library;
        VstIEditorConnect* editor = nullptr;
        library.connect(&editor);
        editor->matchRegularExpression("^a+$",
                                       "aa"); // pulls in what the C++ library keeps statics for
        editor->destroy();
        void* again = dlopen(SIMULATOR_FILE, RTLD_LAZY | RTLD_NOLOAD);
        ASSERT_NE(nullptr, again);
        dlclose(again);
    }
    EXPECT_EQ(nullptr, dlopen(SIMULATOR_FILE, RTLD_LAZY | RTLD_NOLOAD));
}

#endif

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
