// The editor's view in a window of GNUstep's AppKit, with wheel clicks and keys from the X server.
// platform/mac/CurrentEvent.mm is compiled unchanged.
#include "platform/CurrentEvent.h"
#include "tests/macos/gnustep/AppKitWindow.h"
#include "tests/unit/BoundController.h"

#include <cstdlib>

using namespace doubles;
using namespace Steinberg::Vst;
using gnustep::AppKitWindow;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

void run(const std::string& command)
{
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
}

/** Sends input to the X server and waits until the server has it. */
void xdotool(const std::string& arguments)
{
    run("xdotool " + arguments);
}

class GnustepView : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(std::getenv("DISPLAY")) << "this program runs under xvfb-run";
        run("setxkbmap fr"); // a keyboard with a key for each character below
        bound.initialize();
        view = Steinberg::owned(bound.controller->createView(ViewType::kEditor));
        ASSERT_TRUE(view);
        window = std::make_unique<AppKitWindow>(*view);
        const auto find = "search --sync --name " + std::string(AppKitWindow::kTitle);
        xdotool(find + " windowfocus --sync mousemove --window %1 100 100");
        ASSERT_TRUE(window->handleUntil([this] { return window->isKey(); }));
        window->handleFor(0.3);
        bound.trace.clear();
    }
    void TearDown() override
    {
        window = nullptr;
        view = nullptr;
        bound.end();
    }

    static void click(int button) { xdotool("click " + std::to_string(button)); }
    void handleScrolls(int count)
    {
        ASSERT_TRUE(window->handleUntil([&] { return window->scrolls() == count; }));
    }
    std::vector<std::string> wheel() { return bound.trace.textsOf({"library.onWheel"}); }

    BoundController bound;
    Steinberg::IPtr<Steinberg::IPlugView> view;
    std::unique_ptr<AppKitWindow> window;
};

constexpr int kWheelUp = 4;
constexpr int kWheelDown = 5;

TEST_F(GnustepView, OnWheelReachesTheLibraryOnceForEachClick)
{
    int handled = 0;
    for (const int button : {kWheelUp, kWheelUp, kWheelDown}) {
        click(button);
        handleScrolls(++handled);
    }
    window->handleFor(0.3);
    EXPECT_THAT(wheel(),
                ElementsAre("library.onWheel(1)", "library.onWheel(1)", "library.onWheel(-1)"));
}

TEST_F(GnustepView, OnWheelDoesNotReachTheLibraryForAClickBesideTheView)
{
    xdotool("mousemove_relative " + std::to_string(AppKitWindow::kViewWidth) + " 0");
    click(kWheelUp);
    handleScrolls(1);
    EXPECT_THAT(wheel(), IsEmpty());
}

TEST_F(GnustepView, OnKeyDownReachesTheLibrary)
{
    xdotool("key --delay 50 a Return eacute Left");
    const auto downs = [this] { return bound.trace.textsOf({"library.onKeyDown"}); };
    EXPECT_TRUE(window->handleUntil([&] { return downs().size() == 4; }));
    EXPECT_EQ(window->typed(), u"a\r\u00E9\uF702");
    EXPECT_THAT(downs(), ElementsAre("library.onKeyDown(97, 0, 0)", "library.onKeyDown(0, 4, 0)",
                                     "library.onKeyDown(0, 0, 0)", "library.onKeyDown(0, 11, 0)"))
        << "the editor is sent ASCII characters only";
}

/** AppKit keeps the last event as the current one until it takes the next. So distances that a host
   collects and passes to onWheel from a timer are halved until another event comes. */
TEST_F(GnustepView, IsCurrentEventScrollStaysTrueAfterTheDispatch)
{
    EXPECT_FALSE(platform::isCurrentEventScroll());
    click(kWheelUp);
    handleScrolls(1);
    bool isScroll = false;
    bound.trace.clear();
    window->callFromTimer([&] {
        isScroll = platform::isCurrentEventScroll();
        view->onWheel(3);
    });
    EXPECT_TRUE(isScroll);
    EXPECT_THAT(wheel(), ElementsAre("library.onWheel(1.5)"));
    xdotool("key a");
    EXPECT_TRUE(window->handleUntil([&] { return !platform::isCurrentEventScroll(); }));
}

} // namespace
