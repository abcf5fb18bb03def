// check-library as its user runs it, on libraries that are broken in one way each.
#include "editorlib/EditorLibraryNames.h"
#include "tests/doubles/Sanitized.h"
#include "tests/tools/CheckLibraryFixture.h"

#include <cstdlib>
#include <unistd.h>

using doubles::CheckLibrary;
using doubles::Outcome;
using doubles::Words;
using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace fs = std::filesystem;

// Whole runs ---------------------------------------------------------------------------------

TEST_F(CheckLibrary, FindsNothingWrongWithTheSimulatorHoweverStrictItIs)
{
    for (const Words& words : {Words{"--json"}, Words{"--json", "--strict"}}) {
        const auto report = reportOf(checkInstalled(words));
        EXPECT_TRUE(report["usable"]) << report;
        EXPECT_THAT(of(report, "remark"), IsEmpty());
        EXPECT_THAT(of(report, "untried"), IsEmpty());
        EXPECT_EQ(report["library"], Steinberg::Vst::editorLibraryPath());
        EXPECT_EQ(report["version"], "1.6.6");
        std::map<std::string, json> facts;
        for (const auto& entry : report["checks"])
            facts[entry["check"]] = entry.value("facts", json());
        EXPECT_EQ(facts["plug-in-bundle"]["version"], "1.6.6");
        EXPECT_EQ(facts["parameters"]["withRange"], 225);
        EXPECT_EQ(facts["parameters"]["texts"], 16 * 14 * 128 + 2);
        EXPECT_EQ(facts["voices"]["voices"], 154);
        EXPECT_EQ(facts["user-banks"]["userBanks"], 16);
        EXPECT_EQ(facts["notes"]["midiOut"], 2);
        EXPECT_EQ(facts["latency"]["mode"], 1);
        EXPECT_EQ(facts["plug-in"]["parameters"], 225);
    }
    EXPECT_TRUE(fs::is_empty(home.home())) << "it leaves nothing in the user's home";
}

TEST_F(CheckLibrary, TellsPeopleInSentencesWithARemedy)
{
    const auto good = checkInstalled({});
    EXPECT_EQ(good.status, 0) << good.out;
    EXPECT_THAT(good.out, HasSubstr("\u2713 It connects, starts and ends.\n"));
    EXPECT_THAT(good.out, HasSubstr("\nEverything that the plug-in needs is there.\n"));
    EXPECT_THAT(good.out, Not(HasSubstr("\u2717")));
    const auto bad = checkInstalled({}, {"--no-library"});
    EXPECT_EQ(bad.status, 1);
    EXPECT_THAT(bad.out, HasSubstr("\u2717 There is no editor library at \"" +
                                   Steinberg::Vst::editorLibraryPath() +
                                   "\".\n      Install the editor of your instrument"));
    EXPECT_THAT(bad.out, HasSubstr("\nOne thing is not as the plug-in needs it"));
}

TEST_F(CheckLibrary, RefusesACommandLineThatMakesNoSense)
{
    for (const Words& words : {Words{"--nonsense"}, Words{"file"}, Words{"--time-limit", "0"},
                               Words{"--only", "nothing"}}) {
        const auto outcome = check(words);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_NE(outcome.err, "");
    }
    EXPECT_EQ(check({"--version"}).out, "check-library (RDL3/RDL5 VST) 1.6.6\n");
    EXPECT_THAT(check({"--help"}).out, HasSubstr("--strict"));
}

// The bundle ---------------------------------------------------------------------------------

TEST_F(CheckLibrary, TellsOfABundleThatIsMissingOrDoesNotLoad)
{
    const Words only = {"--only", "plug-in-bundle", "--json", "--library", SIMULATOR_LIBRARY};
    const auto bundle = folder.file("RDL3_RDL5 VST.vst3");
    for (const bool made : {false, true}) {
        if (made)
            fs::create_directory(bundle);
        auto words = only;
        words.insert(words.end(), {"--plugin", bundle});
        const auto report = reportOf(check(words));
        const auto bad = of(report, "bad");
        ASSERT_EQ(bad.size(), 1u) << report;
        EXPECT_EQ(bad[0]["check"], "plug-in-bundle");
        EXPECT_THAT(bad[0]["text"],
                    HasSubstr(made ? "cannot be loaded" : "There is no plug-in bundle"));
    }
}

TEST_F(CheckLibrary, TellsOfSeveralInstalledCopies)
{
    const auto place = fs::path(home.home() + "/.vst3");
    for (const auto* copy : {"old", "new"}) {
        fs::create_directories(place / copy);
        fs::create_directory_symlink(BUNDLE_FOLDER, place / copy / "RDL3_RDL5 VST.vst3");
    }
    const auto report = reportOf(check({"--only", "plug-in-bundle", "--json", "--library",
                                        SIMULATOR_LIBRARY, "--plugin", BUNDLE_FOLDER}));
    const auto remarks = of(report, "remark");
    ASSERT_EQ(remarks.size(), 1u) << report;
    EXPECT_EQ(remarks[0]["check"], "plug-in-copies");
    EXPECT_GE(remarks[0]["facts"].size(), 2u);
}

// The file -----------------------------------------------------------------------------------

TEST_F(CheckLibrary, TellsWhyAFileIsNoLibrary)
{
    const auto path = folder.file("deep/down/libvst_rdl3_rdl5_vstserver.1.dylib");
    expectBadFile(path, "Already the folder \"" + folder.file("deep") + "\" is missing.");
    fs::create_directories(folder.file("deep/down"));
    expectBadFile(path, "There is no editor library at");
    folder.write("deep/down/libvst_rdl3_rdl5_vstserver.2.dylib", "of another generation");
    expectBadFile(path, "In its folder lies libvst_rdl3_rdl5_vstserver.2.dylib, which");
    fs::create_symlink("nowhere", path);
    expectBadFile(path, "is a link to a file that is not there.");
    fs::remove(path);
    fs::create_directory(path);
    expectBadFile(path, "is a folder and no file.");
    expectBadFile("/dev/null", "is no file.");
    expectBadFile(folder.write("empty", ""), "is an empty file.");
    expectBadFile(folder.write("text", "This is no library."), "is no dynamic library.");
}

TEST_F(CheckLibrary, TellsOfAFileThatItMustNotRead)
{
    const auto path = folder.write("library", doubles::ScratchFolder::read(SIMULATOR_LIBRARY));
    fs::permissions(path, fs::perms::none);
    if (geteuid() != 0)
        return expectBadFile(path, "cannot be read: Permission denied.");
    // Root may read everything, so somebody else has to look.
    fs::permissions(pathOf(folder), fs::perms::all);
    doubles::TemporaryHome::set(pathOf(folder));
    const Words other = {"/usr/bin/setpriv", "--reuid=65534", "--clear-groups", "--"};
    auto words = other;
    words.insert(words.end(), {CHECK_LIBRARY_PROGRAM, "--version"});
    if (doubles::run(words).status != 0)
        GTEST_SKIP() << "nobody but root may run the program where it is";
    words = other;
    words.insert(words.end(),
                 {CHECK_LIBRARY_PROGRAM, "--plugin", BUNDLE_FOLDER, "--json", "--library", path});
    const auto report = reportOf(doubles::run(words));
    const auto bad = of(report, "bad");
    ASSERT_EQ(bad.size(), 1u) << report;
    EXPECT_THAT(bad[0]["text"], HasSubstr("cannot be read: Permission denied."));
}

// The preset folder --------------------------------------------------------------------------

TEST_F(CheckLibrary, TriesThePresetFolder)
{
    const auto place = home.presetFolder();
    const auto look = [&](Words words = {}) {
        words.insert(words.end(), {CHECK_LIBRARY_PROGRAM, "--only", "state", "--json", "--library",
                                   SIMULATOR_LIBRARY});
        const auto report = reportOf(doubles::run(words));
        for (const auto& entry : report["checks"])
            if (entry["check"] == "preset-folder")
                return entry["verdict"].get<std::string>() + ": " +
                       entry["text"].get<std::string>();
        return std::string();
    };
    EXPECT_THAT(look(), HasSubstr("good: The preset folder \"" + place + "\" will be made"));
    fs::create_directories(place);
    EXPECT_THAT(look(), HasSubstr("can be written to."));
    EXPECT_TRUE(fs::is_empty(place));
    if (doubles::run({"/usr/bin/bwrap", "--dev-bind", "/", "/", "true"}).status == 0) {
        EXPECT_THAT(look({"/usr/bin/bwrap", "--dev-bind", "/", "/", "--ro-bind", place, place}),
                    HasSubstr("bad: Nothing can be stored in the preset folder \"" + place +
                              "\": \"" + place +
                              "\" cannot be written to: Read-only file system."));
        EXPECT_THAT(
            look({"/usr/bin/bwrap", "--dev-bind", "/", "/", "--size", "4096", "--tmpfs", place}),
            HasSubstr("cannot be written to: No space left on device."));
    }
    fs::remove(place);
    std::ofstream(place) << "a file";
    EXPECT_THAT(look(), HasSubstr("bad: The preset folder \"" + place + "\" cannot be made: '" +
                                  place + "' is not a folder."));
    doubles::TemporaryHome::unset();
    EXPECT_THAT(look(), HasSubstr("bad: The environment variable HOME names no folder"));
}

// Libraries that are wrong in one way --------------------------------------------------------

namespace {

struct Row {
    const char* fault; ///< what BrokenLibrary.cpp calls it
    const char* step;
    const char* verdict;
    const char* check;
    const char* words; ///< somewhere in the sentence
};

void PrintTo(const Row& row, std::ostream* stream)
{
    *stream << row.fault;
}

class BrokenLibrary : public CheckLibrary, public testing::WithParamInterface<Row> {
protected:
    /** The row's step alone, of a run that finds what the row says and nothing else. */
    void expectRow(const std::string& library, const Words& more)
    {
        const auto& row = GetParam();
        setenv("BROKEN", row.fault, 1);
        Words words = {"--json",      "--library", library, "--plugin",
                       BUNDLE_FOLDER, "--only",    row.step};
        if (std::string(row.fault).rfind("hang-", 0) == 0)
            words.insert(words.end(), {"--time-limit", kSecondsOfAHang});
        words.insert(words.end(), more.begin(), more.end());
        const auto report = reportOf(check(words));
        unsetenv("BROKEN");
        const std::string good = "good";
        ASSERT_TRUE(report.is_object());
        for (const auto& entry : report["checks"])
            EXPECT_TRUE(entry["verdict"] == good || entry["verdict"] == "untried" ||
                        (entry["verdict"] == row.verdict &&
                         (entry["check"] == row.check || entry["check"] == row.step)))
                << entry;
        const auto found = of(report, row.verdict);
        const auto place = std::find_if(found.begin(), found.end(), [&](const json& entry) {
            return entry["check"] == row.check &&
                   entry["text"].get<std::string>().find(row.words) != std::string::npos;
        });
        ASSERT_NE(place, found.end()) << report;
        EXPECT_EQ(place->value("remedy", "").empty(), row.verdict != std::string("bad"));
    }

    static constexpr const char* kSecondsOfAHang = "3";
};

std::string nameOf(const testing::TestParamInfo<Row>& info)
{
    std::string name = info.param.fault;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

} // namespace

TEST_P(BrokenLibrary, IsTold)
{
    expectRow(BROKEN_LIBRARY, {});
}

INSTANTIATE_TEST_SUITE_P(
    Always, BrokenLibrary,
    testing::Values(
        Row{"crash-load", "library-load", "bad", "library-load",
            "crashes in the file's own start (dlopen)"},
        Row{"hang-load", "library-load", "bad", "library-load",
            "does not come back within 3 seconds: it hangs in the file's own start (dlopen)"},
        Row{"crash-unload", "library-load", "bad", "library-load",
            "crashes in the file's own end (dlclose)"},
        Row{"no-connection", "library-start", "bad", "library-connection",
            "getVSTEditorConnectObject gives no connection"},
        Row{"throw-connection", "library-start", "bad", "library-connection",
            "getVSTEditorConnectObject throws an exception: broken on purpose"},
        Row{"hang-connection", "library-start", "bad", "library-start",
            "it hangs in getVSTEditorConnectObject"},
        Row{"throw-start", "library-start", "bad", "exceptions",
            "start() throws an exception: broken on purpose"},
        Row{"crash-start", "library-start", "bad", "library-start", "crashes in start()"},
        Row{"hang-start", "library-start", "bad", "library-start", "it hangs in start()"},
        Row{"exit-start", "library-start", "bad", "library-start",
            "ends the program in start(), with status 0"},
        Row{"crash-destroy", "library-start", "bad", "library-start", "crashes in destroy()"},
        Row{"hang-destroy", "library-start", "bad", "library-start", "it hangs in destroy()"},
        Row{"no-observers", "parameters", "bad", "observers",
            "no observer for Volume 1 and 224 others"},
        Row{"no-ranges", "parameters", "bad", "parameters", "None of the 225 parameters"},
        Row{"one-without-range", "parameters", "remark", "ranges", "but one value for Volume 1,"},
        Row{"reversed-range", "parameters", "remark", "ranges", "below the smallest for Volume 1:"},
        Row{"crash-range", "parameters", "bad", "parameters",
            "crashes in getParameterMin(37012000)"},
        Row{"throw-text", "parameters", "bad", "exceptions",
            "getParameterValueString(37013000, 5) throws an exception"},
        Row{"crash-text", "parameters", "bad", "parameters",
            "crashes in getParameterValueString(37013000, 5)"},
        Row{"crash-on-own-thread", "parameters", "bad", "parameters",
            "The editor library crashes "},
        Row{"crash-voice", "voices", "bad", "voices", "crashes in getVoiceDataString(2, 1)"},
        Row{"overrun", "voices", "bad", "buffers", "getVoiceDataString writes behind the 30 bytes"},
        Row{"full-buffer", "voices", "good", "voices", "154 voices"},
        Row{"endless-bank", "voices", "bad", "voices", "no end of voices in bank 3"},
        Row{"unknown-category", "voices", "remark", "categories", "bank 2, voice 1, \"Odd\""},
        Row{"hollow-bank", "voices", "remark", "user-banks", "bank 9, voice 1"},
        Row{"no-latency", "playing", "good", "latency", "no latency is reported"},
        Row{"no-editor", "playing", "remark", "editor", "window stays empty"},
        Row{"flat-editor", "playing", "bad", "editor", "no size (1016 x 0)"},
        Row{"knows-no-port", "playing", "remark", "ports", "\"All MIDI Inputs\""},
        Row{"takes-every-port", "playing", "remark", "ports", "\"Port4\""},
        Row{"long-message", "playing", "remark", "notes", "it sent 2."},
        Row{"no-state", "state", "remark", "state", "no state to save"},
        Row{"throw-state", "state", "bad", "exceptions", "getStateChunk() throws an exception"},
        Row{"forgets-state", "state", "bad", "state", "another one after it was restored"},
        Row{"refuses-text", "state", "bad", "state", "refuses the state that it gave"},
        Row{"crash-restore", "state", "bad", "state", "crashes in setStateChunk(object, 1816)"}),
    nameOf);

class BrokenContract : public BrokenLibrary {};

TEST_P(BrokenContract, IsToldInAStrictRun)
{
    expectRow(BROKEN_LIBRARY, {"--strict"});
}

INSTANTIATE_TEST_SUITE_P(
    Strict, BrokenContract,
    testing::Values(
        Row{"reversed-range", "parameters", "bad", "ranges", "below the smallest for Volume 1:"},
        Row{"value-outside", "parameters", "bad", "ranges", "outside the range for Volume 1."},
        Row{"huge-range", "parameters", "bad", "ranges", "more values than a host can show"},
        Row{"odd-steps", "parameters", "bad", "ranges",
            "does not fit the range for Assignable Function 1-1 and 32 others"},
        Row{"text-not-utf8", "parameters", "bad", "texts", "is no UTF-8: value 5 of Pan 1."},
        Row{"text-too-long", "parameters", "bad", "texts", "is longer than the 127 characters"},
        Row{"text-with-zero", "parameters", "bad", "texts", "holds a zero byte"},
        Row{"text-empty", "parameters", "remark", "texts", "values without a text for Pan 1:"},
        Row{"name-cut", "voices", "bad", "texts", "is no UTF-8: bank 2, voice 1,"},
        Row{"full-buffer", "voices", "good", "voices", "154 voices"},
        Row{"unknown-category", "voices", "bad", "categories", "bank 2, voice 1,"},
        Row{"hollow-bank", "voices", "bad", "user-banks", "without data: bank 9, voice 1"},
        Row{"changing-bank", "voices", "bad", "user-banks", "does not give back the bytes"},
        Row{"takes-every-port", "playing", "bad", "ports", "\"Port4\""},
        Row{"tells-nothing", "state", "bad", "restored-state", "changed Volume 1:"},
        Row{"callback-foreign-context", "callbacks", "bad", "callbacks", "with another context"},
        Row{"callback-unknown-parameter", "callbacks", "bad", "callbacks",
            "for parameter 1, of which it has no observer"},
        Row{"callback-tells-value-outside", "callbacks", "bad", "callbacks",
            "changes parameter 37012000 to 128, which is outside"},
        Row{"callback-never-ends-edit", "callbacks", "bad", "callbacks", "that it never ends"},
        Row{"callback-ends-unbegun-edit", "callbacks", "bad", "callbacks", "that it never began"},
        Row{"callback-begins-twice", "callbacks", "bad", "callbacks",
            "while another one of it is open"},
        Row{"callback-own-thread", "callbacks", "good", "callbacks", "of its own as well"},
        Row{"edits-on-audio-thread", "callbacks", "bad", "callbacks",
            "calls valueChanged from inside a call on the audio thread"},
        Row{"stores-on-audio-thread", "callbacks", "bad", "callbacks",
            "calls storeUserBank from inside a call on the audio thread"},
        Row{"calls-back-late", "callbacks", "bad", "callbacks", "after its observers were removed"},
        Row{"uses-controller-late", "callbacks", "bad", "callbacks",
            "calls isConnectAudioPort after setControllerInterface (null)"},
        Row{"uses-effect-late", "callbacks", "bad", "callbacks",
            "calls writeMidi after setEffectInterface (null)"},
        Row{"one-instance", "threads", "bad", "instances", "There cannot be 2 instances at once"},
        Row{"one-connection", "threads", "bad", "instances", "the same connection"},
        Row{"crash-two-notes", "threads", "bad", "threads",
            "receiveHostMidi on one of four audio threads"},
        Row{"hang-two-notes", "threads", "bad", "threads",
            "it hangs in receiveHostMidi on one of four audio threads"},
        Row{"leak-files", "lives", "bad", "lives", "on average 1 open files"},
        Row{"nothing", "lives", "good", "lives", "leave no file, thread or memory behind"}),
    nameOf);

#if !defined(VSTK2X_SANITIZED) // whose allocator counts otherwise, and whose threads leave more
INSTANTIATE_TEST_SUITE_P(
    StrictUnsanitized, BrokenContract,
    testing::Values(Row{"leak-memory", "lives", "bad", "lives", "bytes of memory"},
                    Row{"leak-threads", "lives", "bad", "lives", "on average 1 threads"}),
    nameOf);
#endif

TEST_F(CheckLibrary, TellsWhenThePlugInDoesNotTakeItsLibrary)
{
    setenv("BROKEN", "no-connection", 1);
    const auto report =
        reportOf(checkInstalled({"--json", "--only", "plug-in"}, {"--library", BROKEN_LIBRARY}));
    unsetenv("BROKEN");
    const auto bad = of(report, "bad");
    ASSERT_EQ(bad.size(), 1u) << report;
    EXPECT_EQ(bad[0]["check"], "plug-in");
    EXPECT_THAT(bad[0]["text"], HasSubstr("The plug-in's controller does not initialize"));
    EXPECT_THAT(bad[0]["text"], Not(HasSubstr("check-library")));
}

TEST_F(CheckLibrary, TellsOfMissingEntryPoints)
{
    const auto entries = [](const std::string& library) {
        return of(reportOf(check({"--json", "--library", library, "--plugin", BUNDLE_FOLDER})),
                  "bad");
    };
    const auto connect = entries(VSTK2X_SCRIPTED_LIBRARY_WITHOUT_CONNECT);
    ASSERT_EQ(connect.size(), 1u);
    EXPECT_EQ(connect[0]["check"], "library-entries");
    EXPECT_THAT(connect[0]["text"], HasSubstr("\"getVSTEditorConnectObject\""));
    const auto observer = entries(VSTK2X_SCRIPTED_LIBRARY_WITHOUT_OBSERVER);
    ASSERT_EQ(observer.size(), 2u);
    EXPECT_EQ(observer[0]["check"], "observers");
    EXPECT_THAT(observer[0]["text"], HasSubstr("\"getVSTObserverObject\""));
    EXPECT_EQ(observer[1]["check"], "observers");
}
