#include "tools/common/ProgressBar.h"

#include <gtest/gtest.h>
#include <sstream>

using Steinberg::Vst::tools::ProgressBar;

TEST(ProgressBar, LineShowsHowMuchIsDone)
{
    EXPECT_EQ(ProgressBar::line(0, 60), "[" + std::string(40, ' ') + "]   0 %");
    EXPECT_EQ(ProgressBar::line(30, 60),
              "[" + std::string(20, '#') + std::string(20, ' ') + "]  50 %");
    EXPECT_EQ(ProgressBar::line(90, 60), "[" + std::string(40, '#') + "] 100 %");
    EXPECT_EQ(ProgressBar::line(0, 0), "[" + std::string(40, '#') + "] 100 %");
    EXPECT_EQ(ProgressBar::line(0, 60, "0:00 of 1:00"),
              "[" + std::string(40, ' ') + "]   0 %  0:00 of 1:00");
}

TEST(ProgressBar, ShowWritesOnlyWhatChangedAndTheEndWipesTheLine)
{
    std::ostringstream stream;
    {
        ProgressBar bar(&stream);
        bar.show(0, 60);
        const auto once = stream.str();
        EXPECT_EQ(once, "\r" + ProgressBar::line(0, 60));
        bar.show(0.01, 60);
        EXPECT_EQ(stream.str(), once);
        bar.show(0.01, 60, "a remark");
        EXPECT_EQ(stream.str(), once + "\r" + ProgressBar::line(0, 60, "a remark"));
    }
    const auto text = stream.str();
    EXPECT_EQ(text.substr(text.size() - 2), " \r");
}

TEST(ProgressBar, ShowTextBlanksOutTheRestOfALongerText)
{
    std::ostringstream stream;
    ProgressBar bar(&stream);
    bar.showText("a long text");
    bar.showText("short");
    EXPECT_EQ(stream.str(), "\ra long text\rshort      ");
}

TEST(ProgressBar, WipeTakesTheLineAwayUntilTheNextShow)
{
    std::ostringstream stream;
    ProgressBar bar(&stream);
    bar.show(0, 60);
    const auto once = stream.str();
    bar.wipe();
    const auto wiped = once + "\r" + std::string(ProgressBar::line(0, 60).size(), ' ') + "\r";
    EXPECT_EQ(stream.str(), wiped);
    bar.wipe();
    EXPECT_EQ(stream.str(), wiped) << "there was nothing to take away";
    bar.show(0, 60);
    EXPECT_EQ(stream.str(), wiped + once);
}

TEST(ProgressBar, ShowDrawsNothingWithoutATerminal)
{
    ProgressBar bar(nullptr);
    bar.show(1, 2);
    bar.wipe();
}
