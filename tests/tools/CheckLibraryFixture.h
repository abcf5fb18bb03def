// CheckLibrary: check-library as its user runs it, and what its report says.
#pragma once

#include "tests/doubles/TemporaryHome.h"
#include "tests/tools/PlayProgram.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <iterator>
#include <string>
#include <vector>

namespace doubles {

/** Runs with a temporary home, so that the user's own files are not looked at. */
class CheckLibrary : public testing::Test {
protected:
    static Outcome check(Words words)
    {
        words.insert(words.begin(), CHECK_LIBRARY_PROGRAM);
        return run(words);
    }

    static Outcome checkInstalled(const Words& words, const Words& installed = {})
    {
        Words all = {WITH_SIMULATOR};
        all.insert(all.end(), installed.begin(), installed.end());
        all.insert(all.end(), {CHECK_LIBRARY_PROGRAM, "--plugin", BUNDLE_FOLDER});
        all.insert(all.end(), words.begin(), words.end());
        return run(all);
    }

    /** The report in JSON, whose verdicts must agree with the exit status. */
    static nlohmann::json reportOf(const Outcome& outcome)
    {
        EXPECT_EQ(outcome.err, "");
        const auto report = nlohmann::json::parse(outcome.out, nullptr, false);
        EXPECT_TRUE(report.is_object()) << outcome.out;
        if (!report.is_object())
            return {};
        EXPECT_EQ(outcome.status, report["usable"] ? 0 : 1);
        EXPECT_EQ(report["usable"], of(report, "bad").empty());
        return report;
    }

    /** The checks with a verdict. */
    static std::vector<nlohmann::json> of(const nlohmann::json& report, const std::string& verdict)
    {
        std::vector<nlohmann::json> found;
        std::copy_if(report["checks"].begin(), report["checks"].end(), std::back_inserter(found),
                     [&](const nlohmann::json& entry) { return entry["verdict"] == verdict; });
        return found;
    }

    /** Expects one thing to be wrong, with these words in its sentence. */
    static void expectOneBad(const nlohmann::json& report, const std::string& check,
                             const std::string& words)
    {
        const auto bad = of(report, "bad");
        ASSERT_EQ(bad.size(), 1u) << report;
        EXPECT_EQ(bad[0]["check"], check);
        EXPECT_THAT(bad[0]["text"], testing::HasSubstr(words));
        EXPECT_NE(bad[0]["remedy"], "");
    }

    static Outcome checkFile(const std::string& file)
    {
        return check({"--library", file, "--plugin", BUNDLE_FOLDER, "--json"});
    }

    /** Expects that the file itself is wrong, and that its content is then not tried. */
    static void expectBadFile(const std::string& file, const std::string& words)
    {
        const auto report = reportOf(checkFile(file));
        expectOneBad(report, "library-file", words);
        EXPECT_EQ(of(report, "untried").size(), 2u) << report;
    }

    TemporaryHome home;
    ScratchFolder folder;
};

} // namespace doubles
