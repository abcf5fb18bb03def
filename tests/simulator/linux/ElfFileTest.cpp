// The simulated library's file on Linux: its exports, what it needs, and unloading it.
#include "tests/simulator/CommandOutput.h"
#include "tests/simulator/SimulatorFixture.h"

#include <gmock/gmock.h>
#include <set>
#include <sstream>

namespace {

using namespace doubles;
using Steinberg::Vst::tools::LibraryHandle;
using testing::IsSubsetOf;

std::set<std::string> lines(const std::string& text)
{
    std::set<std::string> result;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        result.insert(line);
    return result;
}

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
    // A build for a sanitizer also needs the sanitizer's runtime.
    const auto output = runCommand("readelf -d '" SIMULATOR_FILE
                                   "' | sed -n 's/.*(NEEDED).*\\[\\(.*\\)\\]/\\1/p' | "
                                   "grep -v -E '^lib(asan|tsan|ubsan)'");
    ASSERT_EQ(0, output.status) << output.text;
    const std::set<std::string> allowed{"libstdc++.so.6", "libm.so.6", "libgcc_s.so.1",
                                        "libc.so.6"};
    EXPECT_THAT(lines(output.text), IsSubsetOf(allowed));
}

TEST(SimulatorFile, DlcloseUnloadsIt)
{
    {
        const LoadedSimulator library;
        VstIEditorConnect* editor = nullptr;
        library.connect(&editor);
        // Uses parts of the C++ library that keep statics.
        editor->matchRegularExpression("^a+$", "aa");
        editor->destroy();
        EXPECT_TRUE(LibraryHandle::isLoaded(SIMULATOR_FILE));
    }
    EXPECT_FALSE(LibraryHandle::isLoaded(SIMULATOR_FILE));
}

} // namespace
