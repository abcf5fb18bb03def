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

TEST_F(SimulatorReport, TellsWhatReachedTheInstrumentWhenItEnds)
{
    const LoadedSimulator library;
    auto* editor = create(library);
    EXPECT_EQ(lines(), std::vector<std::string>{"begin 1"});
    editor->setHostType(2);
    const uint8 messages[][3] = {{0x93, 60, 127}, {0x93, 61, 127}, {0x83, 60, 0}, {0, 0, 0}};
    for (const auto& message : messages)
        editor->receiveHostMidi(message, 3);
    editor->hostParameterChanged(37013015, 1.);
    editor->destroy();
    const auto report = lines();
    ASSERT_GT(report.size(), 2u);
    EXPECT_EQ(report[1], "end 1");
    for (const std::string line :
         {"host-type 2", "note-ons 3 2", "note-offs 3 1", "other-midi 1", "automation 1",
          "parameter 37013015 127", "parameter 37013014 64", "call setHostType(2)"})
        EXPECT_THAT(report, Contains(line));
}

TEST_F(SimulatorReport, CountsInstruments)
{
    const LoadedSimulator library;
    auto* first = create(library);
    auto* second = create(library);
    second->destroy();
    first->destroy();
    std::vector<std::string> ends;
    for (const auto& line : lines())
        if (line.compare(0, 6, "begin ") == 0 || line.compare(0, 4, "end ") == 0)
            ends.push_back(line);
    EXPECT_THAT(ends, testing::ElementsAre("begin 1", "begin 2", "end 2", "end 1"));
}

TEST_F(SimulatorReport, IsNotWrittenUnasked)
{
    unsetenv("SIMULATOR_REPORT");
    const LoadedSimulator library;
    create(library)->destroy();
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(SimulatorReport, DoesNotNeedAFileThatCanBeWritten)
{
    setenv("SIMULATOR_REPORT", (file / "no/such/folder").c_str(), 1);
    const LoadedSimulator library;
    auto* editor = create(library);
    ASSERT_TRUE(editor);
    editor->destroy();
    EXPECT_EQ(library.control(-1), nullptr);
}

} // namespace
