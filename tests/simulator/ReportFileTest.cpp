#include "tests/simulator/SimulatorFixture.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <unistd.h>

namespace {

using namespace doubles;
using testing::Contains;
using testing::IsEmpty;

/** Sets SIMULATOR_REPORT to a file of this test's own. */
class SimulatorReport : public testing::Test {
protected:
    SimulatorReport()
    : file(std::filesystem::temp_directory_path() /
           ("simulator-report." + std::to_string(getpid())))
    {
        setenv("SIMULATOR_REPORT", file.c_str(), 1);
    }
    ~SimulatorReport() override
    {
        unsetenv("SIMULATOR_REPORT");
        std::filesystem::remove(file);
    }

    std::vector<std::string> lines() const
    {
        std::vector<std::string> result;
        std::ifstream stream(file);
        for (std::string line; std::getline(stream, line);)
            result.push_back(line);
        return result;
    }

    static VstIEditorConnect* create(const LoadedSimulator& library)
    {
        VstIEditorConnect* editor = nullptr;
        library.connect(&editor);
        return editor;
    }

    const std::filesystem::path file;
};

TEST_F(SimulatorReport, DestroyWritesWhatReachedTheInstrument)
{
    const LoadedSimulator library;
    auto* editor = create(library);
    EXPECT_EQ(lines(), std::vector<std::string>{"begin 1"});
    editor->setHostType(2);
    const uint8 messages[][3] = {{0x93, 60, 127}, {0x93, 61, 127}, {0x83, 60, 0}, {0, 0, 0}};
    for (const auto& message : messages)
        editor->receiveHostMidi(message, 3);
    editor->hostParameterChanged(37013015, 1.);
    create(library)->destroy();
    editor->destroy();
    const auto report = lines();
    ASSERT_GT(report.size(), 3u);
    EXPECT_EQ(report[1], "begin 2");
    EXPECT_EQ(report[2], "end 2");
    for (const std::string line :
         {"end 1", "host-type 2", "note-ons 3 2", "note-offs 3 1", "other-midi 1", "automation 1",
          "parameter 37013015 127", "parameter 37013014 64", "call setHostType(2)"})
        EXPECT_THAT(report, Contains(line));
}

TEST_F(SimulatorReport, DestroyWritesNothingWithoutTheVariable)
{
    unsetenv("SIMULATOR_REPORT");
    const LoadedSimulator library;
    create(library)->destroy();
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(SimulatorReport, DestroyWorksWhenTheFileCannotBeWritten)
{
    setenv("SIMULATOR_REPORT", (file / "no/such/folder").c_str(), 1);
    const LoadedSimulator library;
    auto* editor = create(library);
    ASSERT_TRUE(editor);
    editor->destroy();
    EXPECT_EQ(library.control(-1), nullptr);
}

} // namespace
