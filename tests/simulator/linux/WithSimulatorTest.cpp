#include "tests/simulator/CommandOutput.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>
#include <utility>

namespace {

using namespace doubles;
namespace fs = std::filesystem;

const std::string folder = "/Library/Application Support/Tavrin/VST/RDL3_RDL5";
const std::string library = folder + "/libvst_rdl3_rdl5_vstserver.1.dylib";

/** Has a temporary folder, which the destructor removes. */
class WithSimulator : public testing::Test {
protected:
    WithSimulator()
    : scratch(fs::temp_directory_path() / ("with-simulator-test." + std::to_string(getpid())))
    {
        fs::create_directory(scratch);
    }
    ~WithSimulator() override { fs::remove_all(scratch); }

    static CommandOutput run(const std::string& arguments)
    {
        return runCommand("'" WITH_SIMULATOR "' " + arguments);
    }

    fs::path write(const std::string& name, const std::string& text, bool executable = false)
    {
        fs::path file = scratch / name;
        std::ofstream(file) << text;
        if (executable)
            fs::permissions(file, fs::perms::owner_all);
        return file;
    }

    const fs::path scratch;
};

TEST_F(WithSimulator, ShowsThisBuildsSimulatorAtTheFixedPath)
{
    const auto output = run("cmp '" + library + "' '" SIMULATOR_FILE "'");
    EXPECT_EQ(0, output.status) << output.text;
    EXPECT_EQ("", output.text);
}

TEST_F(WithSimulator, PassesTheExitStatusOn)
{
    EXPECT_EQ(0, run("true").status);
    EXPECT_EQ(1, run("false").status);
    EXPECT_EQ(42, run("sh -c 'exit 42'").status);
    EXPECT_EQ(128 + 11, run("sh -c 'kill -SEGV $$'").status);
    EXPECT_EQ(127, run("no-such-command").status);
}

TEST_F(WithSimulator, PassesArgumentsInputFolderAndEnvironmentOn)
{
    EXPECT_EQ("<a b><><*>", run("printf '<%s>' 'a b' '' '*'").text);
    EXPECT_EQ("line", runCommand("printf line | '" WITH_SIMULATOR "' cat").text);
    EXPECT_EQ("value",
              runCommand("SOME='value' '" WITH_SIMULATOR "' sh -c 'printf \"$SOME\"'").text);
    const auto here = runCommand("cd '" + scratch.string() + "' && '" WITH_SIMULATOR "' pwd -P");
    EXPECT_EQ(fs::canonical(scratch).string() + "\n", here.text);
    EXPECT_EQ("-x\n", run("-- echo -x").text);
}

TEST_F(WithSimulator, LetsTheCommandWriteWhereItMayAndNowhereNew)
{
    const auto kept = scratch / "kept";
    EXPECT_EQ(0, run("sh -c 'echo > \"" + kept.string() + "\"'").status);
    EXPECT_TRUE(fs::exists(kept));
    for (const std::string place : {"/Library/x", "/with-simulator-test", "/Library/Audio"})
        EXPECT_NE(0, run("mkdir '" + place + "'").status) << place;
    EXPECT_FALSE(fs::exists("/with-simulator-test"));
}

TEST_F(WithSimulator, LeavesNothingBehind)
{
    const bool before = fs::exists("/Library");
    const auto marked = runCommand("mkdir '" + scratch.string() + "/tmp' && TMPDIR='" +
                                   scratch.string() + "/tmp' '" WITH_SIMULATOR "' true");
    EXPECT_EQ(0, marked.status) << marked.text;
    EXPECT_TRUE(fs::is_empty(scratch / "tmp"));
    EXPECT_EQ(before, fs::exists("/Library"));
}

TEST_F(WithSimulator, NoLibraryShowsAnEmptyFolderAlsoInsideItself)
{
    for (const std::string outer : {"", "'" WITH_SIMULATOR "' "}) {
        const auto output = run(outer + "--no-library ls -A '" + folder + "'");
        EXPECT_EQ(0, output.status) << output.text;
        EXPECT_EQ("", output.text);
    }
    EXPECT_NE(0, run("--no-library touch '" + library + "'").status);
}

TEST_F(WithSimulator, LibraryAndStagingShowAnotherLibraryUnderTheRealName)
{
    const auto file = write("my library.so", "other");
    EXPECT_EQ("other", run("--library '" + file.string() + "' cat '" + library + "'").text);
    fs::create_directories(scratch.string() + folder);
    write(library.substr(1), "staged");
    EXPECT_EQ("staged", run("--staging '" + scratch.string() + "' cat '" + library + "'").text);
}

TEST_F(WithSimulator, ShowsAnotherBundleInThePlugInsPlace)
{
    // A copy in another build folder, since it looks for the build beside itself.
    const auto build = scratch / "build";
    fs::create_directories(fs::path(build.string() + "/staging" + library).parent_path());
    std::ofstream(build.string() + "/staging" + library) << "staged";
    fs::copy_file(WITH_SIMULATOR, build / "with-simulator");
    fs::create_directories(build / "RDL3_RDL5 VST.vst3");
    fs::create_directories(scratch / "other");
    write("other/module", "other plug-in");
    const auto output = runCommand("'" + (build / "with-simulator").string() + "' --plug-in '" +
                                   (scratch / "other").string() + "' cat '" +
                                   (build / "RDL3_RDL5 VST.vst3/module").string() + "'");
    EXPECT_EQ(0, output.status) << output.text;
    EXPECT_EQ("other plug-in", output.text);
    EXPECT_TRUE(fs::is_empty(build / "RDL3_RDL5 VST.vst3"));
}

TEST_F(WithSimulator, PassesASignalOnToTheCommand)
{
    const auto output =
        runCommand("'" WITH_SIMULATOR "' sh -c 'trap \"echo stopped; exit 3\" TERM; echo > \"" +
                   scratch.string() +
                   "/ready\"; while :; do sleep 0.05; done' &\n"
                   "while [ ! -e '" +
                   scratch.string() +
                   "/ready' ]; do sleep 0.05; done\n"
                   "kill -TERM $!\nwait $!");
    EXPECT_EQ("stopped\n", output.text);
    EXPECT_EQ(3, output.status);
}

TEST_F(WithSimulator, LeavesNoCommandRunningWhenItIsKilled)
{
    const auto output =
        runCommand("'" WITH_SIMULATOR "' sh -c 'echo $$ > \"" + scratch.string() +
                   "/pid\"; exec sleep 60' &\n"
                   "while [ ! -s '" +
                   scratch.string() +
                   "/pid' ]; do sleep 0.05; done\n"
                   "kill -KILL $!\nwait $!\n"
                   "for i in $(seq 100); do kill -0 $(cat '" +
                   scratch.string() + "/pid') 2>/dev/null || exit 0; sleep 0.05; done; exit 1");
    EXPECT_EQ(0, output.status) << output.text;
}

TEST_F(WithSimulator, SaysWhatItNeeds)
{
    const auto isOneSentence = [](const CommandOutput& output) {
        return output.status == 125 && output.text.find("with-simulator: ") == 0 &&
               output.text.find('\n') == output.text.size() - 1;
    };
    for (const std::string arguments :
         {"", "--", "--library", "--staging", "--library /no/such/file true", "--nonsense true",
          "--staging /no/such/folder true", "--plug-in", "--plug-in /no/such/folder true"}) {
        const auto output = run(arguments);
        EXPECT_TRUE(isOneSentence(output)) << arguments << ": " << output.text;
    }
    const auto help = run("--help");
    EXPECT_EQ(0, help.status);
    EXPECT_NE(std::string::npos, help.text.find("--no-library"));
    EXPECT_EQ("with-simulator (RDL3/RDL5 VST) 1.6.6\n", run("--version").text);
}

/** On a Mac with-simulator cannot show a library to one command. The inner one takes this machine
    for a Mac, and sees what the outer one shows. */
TEST_F(WithSimulator, OnAMacRunsACommandWhereItsLibraryLiesAlready)
{
    const std::string onAMac = "env OSTYPE=darwin20 '" WITH_SIMULATOR "' ";
    const std::string command = "sh -c 'exit 42'";
    const auto other = "--library '" + write("other", "another library").string() + "' ";
    const auto runs = [&](const std::string& shown, const std::string& wanted) {
        return run(shown + onAMac + wanted + command).status == 42;
    };
    EXPECT_TRUE(runs("", ""));
    EXPECT_TRUE(runs(other, other));
    EXPECT_TRUE(runs("--no-library ", "--no-library "));

    for (const auto& [shown, wanted] : {std::pair<std::string, std::string>{"", other},
                                        {other, ""},
                                        {"--no-library ", ""},
                                        {"", "--no-library "}}) {
        const auto refused = run(shown + onAMac + wanted + command);
        EXPECT_EQ(125, refused.status) << shown << wanted;
        EXPECT_NE(std::string::npos, refused.text.find("scripts/install-simulator"))
            << shown << wanted;
    }
}

TEST_F(WithSimulator, EndsWithOneSentenceWithoutBubblewrapAndWithoutNamespaces)
{
    fs::create_symlink("/bin/readlink", scratch / "readlink");
    auto output = runCommand("PATH='" + scratch.string() + "' /bin/bash '" WITH_SIMULATOR "' true");
    EXPECT_EQ(125, output.status);
    EXPECT_EQ("with-simulator: bubblewrap is missing: install the package 'bubblewrap'\n",
              output.text);
    write("bwrap", "#!/bin/sh\nexit 1\n", true);
    output = runCommand("PATH='" + scratch.string() + "':\"$PATH\" '" WITH_SIMULATOR "' true");
    EXPECT_EQ(125, output.status);
    EXPECT_EQ("with-simulator: this machine or container refuses private mount namespaces, which "
              "the library's fixed path needs\n",
              output.text);
}

} // namespace
