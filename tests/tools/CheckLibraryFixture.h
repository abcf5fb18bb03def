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

/** Runs with a home of its own, so that nothing of this machine's user is looked at. */
class CheckLibrary : public testing::Test {
protected:
    static std::string pathOf(const ScratchFolder& scratch)
    {
        return std::filesystem::path(scratch.file("any")).parent_path().string();
    }

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

    /** The report in JSON; its exit status must be what its verdicts say. */
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

    /** Looks at one file with nothing else, and expects one thing to be wrong with it. */
    static void expectBadFile(const std::string& file, const std::string& words)
    {
        const auto report =
            reportOf(check({"--library", file, "--plugin", BUNDLE_FOLDER, "--json"}));
        const auto bad = of(report, "bad");
        ASSERT_EQ(bad.size(), 1u) << report;
        EXPECT_EQ(bad[0]["check"], "library-file");
        EXPECT_THAT(bad[0]["text"], testing::HasSubstr(words));
        EXPECT_NE(bad[0]["remedy"], "");
        EXPECT_EQ(of(report, "untried").size(), 2u) << report;
    }

    TemporaryHome home;
    ScratchFolder folder;
};

} // namespace doubles
