// check-library as its user runs it, on libraries that are broken in one way each.
#include "editorlib/EditorLibraryNames.h"
#include "tests/doubles/Parameters.h"
#include "tests/doubles/Sanitized.h"
#include "tests/tools/CheckLibraryFixture.h"

#include <cstdlib>
#include <unistd.h>

using doubles::CheckLibrary;
using doubles::kAutomatable;
using doubles::kParameters;
using doubles::Outcome;
using doubles::Words;
using Json = nlohmann::json;
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
        std::map<std::string, Json> facts;
        for (const auto& entry : report["checks"])
            facts[entry["check"]] = entry.value("facts", Json());
        EXPECT_EQ(facts["plug-in-bundle"]["version"], "1.6.6");
        EXPECT_EQ(facts["parameters"]["withRange"], kParameters);
        EXPECT_EQ(facts["parameters"]["texts"], kAutomatable * 128 + 2);
        EXPECT_EQ(facts["voices"]["voices"], 154);
        EXPECT_EQ(facts["user-banks"]["userBanks"], 16);
        EXPECT_EQ(facts["notes"]["midiOut"], 2);
        EXPECT_EQ(facts["latency"]["mode"], 1);
        EXPECT_EQ(facts["plug-in"]["parameters"], kParameters);
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
        expectOneBad(reportOf(check(words)), "plug-in-bundle",
                     made ? "cannot be loaded" : "There is no plug-in bundle");
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
    expectBadFile(path, "Even the folder \"" + folder.file("deep") + "\" is missing.");
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
    // Root may read everything, so the program runs as another user.
    fs::permissions(folder.file(""), fs::perms::all);
    doubles::TemporaryHome::set(folder.file(""));
    const Words other = {"/usr/bin/setpriv", "--reuid=65534", "--clear-groups", "--"};
    auto words = other;
    words.insert(words.end(), {CHECK_LIBRARY_PROGRAM, "--version"});
    if (doubles::run(words).status != 0)
        GTEST_SKIP() << "nobody but root may run the program where it is";
    words = other;
    words.insert(words.end(),
                 {CHECK_LIBRARY_PROGRAM, "--plugin", BUNDLE_FOLDER, "--json", "--library", path});
    expectOneBad(reportOf(doubles::run(words)), "library-file",
                 "cannot be read: Permission denied.");
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
    const char* fault; ///< as BrokenLibrary.cpp names it
    const char* step;
    const char* verdict;
    std::string words; ///< somewhere in the sentence
    const char* check = step;
};

void PrintTo(const Row& row, std::ostream* stream)
{
    *stream << row.fault;
}

class BrokenLibrary : public CheckLibrary, public testing::WithParamInterface<Row> {
protected:
    /** Takes the row's step alone, which must find what the row says and nothing else. */
    void expectRow(const Words& more = {})
    {
        const auto& row = GetParam();
        setenv("BROKEN", row.fault, 1);
        Words words = {"--json",      "--library", BROKEN_LIBRARY, "--plugin",
                       BUNDLE_FOLDER, "--only",    row.step};
        if (std::string(row.fault).rfind("hang-", 0) == 0)
            words.insert(words.end(), {"--time-limit", kSecondsOfAHang});
        words.insert(words.end(), more.begin(), more.end());
        const auto report = reportOf(check(words));
        unsetenv("BROKEN");
        ASSERT_TRUE(report.is_object());
        for (const auto& entry : report["checks"])
            EXPECT_TRUE(entry["verdict"] == "good" || entry["verdict"] == "untried" ||
                        (entry["verdict"] == row.verdict &&
                         (entry["check"] == row.check || entry["check"] == row.step)))
                << entry;
        const auto found = of(report, row.verdict);
        const auto place = std::find_if(found.begin(), found.end(), [&](const Json& entry) {
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
    expectRow();
}

INSTANTIATE_TEST_SUITE_P(
    Always, BrokenLibrary,
    testing::Values(
        Row{"crash-load", "library-load", "bad", "crashes in the file's own start (dlopen)"},
        Row{"hang-load", "library-load", "bad",
            "does not come back within 3 seconds: it hangs in the file's own start (dlopen)"},
        Row{"crash-unload", "library-load", "bad", "crashes in the file's own end (dlclose)"},
        Row{"no-connection", "library-start", "bad",
            "getVSTEditorConnectObject gives no connection", "library-connection"},
        Row{"throw-connection", "library-start", "bad",
            "getVSTEditorConnectObject throws an exception: broken on purpose",
            "library-connection"},
        Row{"hang-connection", "library-start", "bad", "it hangs in getVSTEditorConnectObject"},
        Row{"throw-start", "library-start", "bad", "start() throws an exception: broken on purpose",
            "exceptions"},
        Row{"crash-start", "library-start", "bad", "crashes in start()"},
        Row{"hang-start", "library-start", "bad", "it hangs in start()"},
        Row{"exit-start", "library-start", "bad", "ends the program in start(), with status 0"},
        Row{"crash-destroy", "library-start", "bad", "crashes in destroy()"},
        Row{"hang-destroy", "library-start", "bad", "it hangs in destroy()"},
        Row{"no-observers", "parameters", "bad",
            "no observer for Volume 1 and " + std::to_string(kParameters - 1) + " others",
            "observers"},
        Row{"no-ranges", "parameters", "bad",
            "None of the " + std::to_string(kParameters) + " parameters"},
        Row{"one-without-range", "parameters", "remark", "only one value for Volume 1,", "ranges"},
        Row{"reversed-range", "parameters", "remark", "below the smallest for Volume 1:", "ranges"},
        Row{"crash-range", "parameters", "bad", "crashes in getParameterMin(37012000)"},
        Row{"throw-text", "parameters", "bad",
            "getParameterValueString(37013000, 5) throws an exception", "exceptions"},
        Row{"crash-text", "parameters", "bad", "crashes in getParameterValueString(37013000, 5)"},
        Row{"crash-on-own-thread", "parameters", "bad", "The editor library crashes "},
        Row{"crash-voice", "voices", "bad", "crashes in getVoiceDataString(2, 1)"},
        Row{"overrun", "voices", "bad", "getVoiceDataString writes behind the 30 bytes", "buffers"},
        Row{"full-buffer", "voices", "good", "154 voices"},
        Row{"endless-bank", "voices", "bad", "no end of voices in bank 3"},
        Row{"unknown-category", "voices", "remark", "bank 2, voice 1, \"Odd\"", "categories"},
        Row{"hollow-bank", "voices", "remark", "bank 9, voice 1", "user-banks"},
        Row{"no-latency", "playing", "good", "no latency is reported", "latency"},
        Row{"no-editor", "playing", "remark", "window stays empty", "editor"},
        Row{"flat-editor", "playing", "bad", "no size (1016 x 0)", "editor"},
        Row{"knows-no-port", "playing", "remark", "\"All MIDI Inputs\"", "ports"},
        Row{"takes-every-port", "playing", "remark", "\"Port4\"", "ports"},
        Row{"long-message", "playing", "remark", "it sent 2.", "notes"},
        Row{"no-state", "state", "remark", "no state to save"},
        Row{"throw-state", "state", "bad", "getStateChunk() throws an exception", "exceptions"},
        Row{"forgets-state", "state", "bad", "another one after it was restored"},
        Row{"refuses-text", "state", "bad", "refuses the state that it gave"},
        Row{"crash-restore", "state", "bad", "crashes in setStateChunk(object, 1816)"}),
    nameOf);

class BrokenContract : public BrokenLibrary {};

TEST_P(BrokenContract, IsToldInAStrictRun)
{
    expectRow({"--strict"});
}

INSTANTIATE_TEST_SUITE_P(
    Strict, BrokenContract,
    testing::Values(
        Row{"reversed-range", "parameters", "bad", "below the smallest for Volume 1:", "ranges"},
        Row{"value-outside", "parameters", "bad", "outside the range for Volume 1.", "ranges"},
        Row{"huge-range", "parameters", "bad", "more values than a host can show", "ranges"},
        Row{"odd-steps", "parameters", "bad",
            "does not fit the range for Assignable Function 1-1 and 32 others", "ranges"},
        Row{"text-not-utf8", "parameters", "bad", "is no UTF-8: value 5 of Pan 1.", "texts"},
        Row{"text-too-long", "parameters", "bad", "is longer than the 127 characters", "texts"},
        Row{"text-with-zero", "parameters", "bad", "holds a zero byte", "texts"},
        Row{"text-empty", "parameters", "remark", "values without a text for Pan 1:", "texts"},
        Row{"name-cut", "voices", "bad", "is no UTF-8: bank 2, voice 1,", "texts"},
        Row{"full-buffer", "voices", "good", "154 voices"},
        Row{"unknown-category", "voices", "bad", "bank 2, voice 1,", "categories"},
        Row{"hollow-bank", "voices", "bad", "without data: bank 9, voice 1", "user-banks"},
        Row{"changing-bank", "voices", "bad", "does not give back the bytes", "user-banks"},
        Row{"takes-every-port", "playing", "bad", "\"Port4\"", "ports"},
        Row{"tells-nothing", "state", "bad", "changed Volume 1:", "restored-state"},
        Row{"callback-foreign-context", "callbacks", "bad", "with another context"},
        Row{"callback-unknown-parameter", "callbacks", "bad",
            "for parameter 1, of which it has no observer"},
        Row{"callback-tells-value-outside", "callbacks", "bad",
            "changes parameter 37012000 to 128, which is outside"},
        Row{"callback-never-ends-edit", "callbacks", "bad", "that it never ends"},
        Row{"callback-ends-unbegun-edit", "callbacks", "bad", "that it never began"},
        Row{"callback-begins-twice", "callbacks", "bad", "while another one of it is open"},
        Row{"callback-own-thread", "callbacks", "good", "of its own as well"},
        Row{"edits-on-audio-thread", "callbacks", "bad",
            "calls valueChanged from inside a call on the audio thread"},
        Row{"stores-on-audio-thread", "callbacks", "bad",
            "calls storeUserBank from inside a call on the audio thread"},
        Row{"calls-back-late", "callbacks", "bad", "after its observers were removed"},
        Row{"uses-controller-late", "callbacks", "bad",
            "calls isConnectAudioPort after setControllerInterface (null)"},
        Row{"uses-effect-late", "callbacks", "bad",
            "calls writeMidi after setEffectInterface (null)"},
        Row{"one-instance", "threads", "bad", "There cannot be 2 instances at once", "instances"},
        Row{"one-connection", "threads", "bad", "the same connection", "instances"},
        Row{"crash-two-notes", "threads", "bad", "receiveHostMidi on one of four audio threads"},
        Row{"hang-two-notes", "threads", "bad",
            "it hangs in receiveHostMidi on one of four audio threads"},
        Row{"leak-files", "lives", "bad", "on average 1 open files"},
        Row{"nothing", "lives", "good", "100 uses leave no file, thread or memory behind"}),
    nameOf);

#if !defined(VSTK2X_SANITIZED) // whose allocator counts otherwise, and whose threads leave more
INSTANTIATE_TEST_SUITE_P(StrictUnsanitized, BrokenContract,
                         testing::Values(Row{"leak-memory", "lives", "bad", "bytes of memory"},
                                         Row{"leak-threads", "lives", "bad",
                                             "on average 1 threads"}),
                         nameOf);
#endif

TEST_F(CheckLibrary, TellsWhenThePlugInDoesNotTakeItsLibrary)
{
    setenv("BROKEN", "no-connection", 1);
    const auto report =
        reportOf(checkInstalled({"--json", "--only", "plug-in"}, {"--library", BROKEN_LIBRARY}));
    unsetenv("BROKEN");
    expectOneBad(report, "plug-in", "The plug-in's controller does not initialize");
    for (const auto& entry : of(report, "bad"))
        EXPECT_THAT(entry["text"], Not(HasSubstr("check-library")));
}

TEST_F(CheckLibrary, TellsOfMissingEntryPoints)
{
    expectOneBad(reportOf(checkFile(VSTK2X_SCRIPTED_LIBRARY_WITHOUT_CONNECT)), "library-entries",
                 "\"getVSTEditorConnectObject\"");
    const auto observer = of(reportOf(checkFile(VSTK2X_SCRIPTED_LIBRARY_WITHOUT_OBSERVER)), "bad");
    ASSERT_EQ(observer.size(), 2u);
    EXPECT_EQ(observer[0]["check"], "observers");
    EXPECT_THAT(observer[0]["text"], HasSubstr("\"getVSTObserverObject\""));
    EXPECT_EQ(observer[1]["check"], "observers");
}
