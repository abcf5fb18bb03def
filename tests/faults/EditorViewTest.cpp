// The editor view in the host's window, from createView to removed.
#include "pluginterfaces/gui/iplugview.h"
#include "pluginterfaces/vst/ivstplugview.h"
#include "tests/faults/Scenario.h"

namespace faults {
namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::ElementsAre;

class EditorInWindow : public Scenario {
public:
    void setUp() override
    {
        Scenario::setUp();
        world.library.parameterAt = [](int, int) { return kVolume1; };
    }

    void act() override
    {
        world.trace.clear();
        world.step("createView",
                   [this] { view = owned(world.controller->createView(ViewType::kEditor)); });
        wasMade = view != nullptr;
        if (!view)
            return;
        results.clear();
        int window = 0;
        const auto call = [&](const char* name, auto&& operation) {
            world.step(name, [&] { results.push_back(operation()); });
        };
        call("isPlatformTypeSupported",
             [&] { return view->isPlatformTypeSupported(kPlatformTypeNSView); });
        call("getSize", [&] { return view->getSize(&size); });
        call("attached", [&] { return view->attached(&window, kPlatformTypeNSView); });
        call("onSize", [&] { return view->onSize(&size); });
        call("onFocus", [&] { return view->onFocus(1); });
        call("onKeyDown", [&] { return view->onKeyDown('a', 7, 1); });
        call("onKeyUp", [&] { return view->onKeyUp(0xE9, 7, 1); });
        call("onWheel", [&] { return view->onWheel(0.3F); });
        found = 0;
        call("findParameter", [&] { return findParameter(); });
        call("removed", [&] { return view->removed(); });
        EXPECT_EQ(view.take()->release(), 0u);
    }

    void expectDone() override
    {
        EXPECT_THAT(results, testing::Each(kResultOk));
        EXPECT_EQ(results.size(), 10u);
        EXPECT_EQ(size.right, 800);
        EXPECT_EQ(size.bottom, 600);
        EXPECT_EQ(found, kVolume1);
        EXPECT_THAT(world.calls({"library."}),
                    ElementsAre("library.getEditorRect()", "library.prepareEditor(object, NSView)",
                                "library.getEditorRect()",
                                "library.openEditor(object, 0 0 800 600)", "library.editorOpened()",
                                "library.onFocus(true)", "library.onKeyDown(97, 7, 1)",
                                "library.onKeyUp(0, 7, 1)", "library.onWheel(1)",
                                "library.findParameter(10, 20)", "library.closeEditor()"));
    }

    /** Only the call that failed answers kResultFalse, if it reports failures at all. */
    void expectStated(const Fault& fault) override
    {
        if (!wasMade) {
            EXPECT_TRUE(fault.isOutOfMemory());
            return;
        }
        ASSERT_EQ(results.size(), 10u);
        const bool isHeard = fault.hit("onKey") || fault.hit("onWheel") ||
                             fault.hit("findParameter") || fault.hit("closeEditor");
        const auto heard = static_cast<size_t>(
            std::count(results.begin(), results.end(), static_cast<tresult>(kResultFalse)));
        EXPECT_EQ(heard, isHeard ? 1u : 0u);
        EXPECT_EQ(world.trace.count("library.closeEditor()"), 1u);
        const bool isOpened = !fault.hit("prepareEditor") && !isRectRefused(fault);
        EXPECT_EQ(world.calls({"library.openEditor"}).size(), isOpened ? 1u : 0u);
        EXPECT_EQ(world.calls({"library.editorOpened"}).size(), isOpened ? 1u : 0u);
        EXPECT_EQ(found, fault.hit("findParameter") ? 0u : kVolume1);
        if (fault.is(Kind::kLibraryThrows) && fault.hit("onWheel")) {
            EXPECT_EQ(world.calls({"library.onWheel"}).size(), 1u) << "asked again";
        }
    }

    /** Any result but 0 is a failure, any rectangle is used, and a parameter that is found without
        an ID is 0. */
    void expectBelieved(const Fault& fault) override
    {
        ASSERT_EQ(results.size(), 10u);
        const bool isHeard = fault.hit("onKey") || fault.hit("onWheel") || fault.hit("closeEditor");
        for (size_t index = 0; index < results.size(); ++index)
            EXPECT_TRUE(results[index] == kResultOk || isHeard) << index;
        EXPECT_EQ(std::count(results.begin(), results.end(), kResultFalse), isHeard ? 1 : 0);
        EXPECT_EQ(world.calls({"library.openEditor"}).size(), fault.hit("prepareEditor") ? 0u : 1u);
        EXPECT_EQ(found, fault.hit("findParameter") ? 0u : kVolume1);
        EXPECT_EQ(world.trace.count("library.closeEditor()"), 1u);
    }

private:
    /** getSize ignores whether the library's call succeeds; attached does not. */
    static bool isRectRefused(const Fault& fault)
    {
        return fault.hit("getEditorRect") && fault.in("attached");
    }

    tresult findParameter()
    {
        const FUnknownPtr<IParameterFinder> finder(view);
        return finder ? finder->findParameter(10, 20, found) : kNoInterface;
    }

    IPtr<IPlugView> view;
    std::vector<tresult> results;
    ViewRect size;
    ParamID found = 0;
    bool wasMade = false;
};

TEST(Faults, CreateViewToRemoved)
{
    injectFaults<EditorInWindow>("editor view");
}

} // namespace
} // namespace faults
