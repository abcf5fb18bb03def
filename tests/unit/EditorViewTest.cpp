#include "tests/unit/BoundController.h"
#include "view/VstK2xEditorView.h"

#include "pluginterfaces/gui/iplugviewcontentscalesupport.h"

#include <limits>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr int32 kLargestCoordinate = std::numeric_limits<int32>::max();
constexpr int32 kSmallestCoordinate = std::numeric_limits<int32>::min();

/** A view of a library, without a controller. */
class EditorViewTest : public testing::Test {
protected:
    IPtr<VstK2xEditorView> makeView(VstIEditorConnect* connection)
    {
        auto view = owned(new VstK2xEditorView(nullptr, connection));
        trace.clear();
        return view;
    }
    ViewRect sizeFor(const std::optional<ViewRect>& rect)
    {
        library.rect = rect;
        const auto view = owned(new VstK2xEditorView(nullptr, &library));
        ViewRect size(-1, -1, -1, -1);
        EXPECT_EQ(view->getSize(&size), kResultTrue);
        EXPECT_EQ(size.left, 0);
        EXPECT_EQ(size.top, 0);
        return size;
    }
    void expectCalls(const std::vector<std::string>& calls)
    {
        EXPECT_EQ(trace.texts(), calls);
        trace.clear();
    }

    Trace trace;
    ScriptedLibrary library{trace};
    int window = 0;
};

TEST_F(EditorViewTest, GetSizeIsTheEditorsAtTheOrigin)
{
    const ViewRect size = sizeFor(ViewRect(10, 20, 810, 620));
    EXPECT_EQ(size.right, 800);
    EXPECT_EQ(size.bottom, 600);
    EXPECT_EQ(trace.texts(), std::vector<std::string>{"library.getEditorRect()"});
}

TEST_F(EditorViewTest, GetSizeTakesTheSizeWhateverGetEditorRectAnswers)
{
    library.rectResult = 5;
    EXPECT_EQ(sizeFor(ViewRect(0, 0, 8, 6)).right, 8);
}

TEST_F(EditorViewTest, GetSizeIsEmptyWhenTheEditorHasNoSize)
{
    EXPECT_EQ(sizeFor(std::nullopt).right, 0);
    library.throwAt("getEditorRect");
    EXPECT_EQ(sizeFor(ViewRect(0, 0, 8, 6)).right, 0);
}

TEST_F(EditorViewTest, GetSizeSurvivesAbsurdRectangles)
{
    EXPECT_EQ(sizeFor(ViewRect(5, 7, 5, 7)).right, 0);
    EXPECT_EQ(sizeFor(ViewRect(10, 10, 4, 3)).right, -6);
    EXPECT_EQ(sizeFor(ViewRect(10, 10, 4, 3)).bottom, -7);
    EXPECT_EQ(sizeFor(ViewRect(0, 0, kLargestCoordinate, kLargestCoordinate)).right,
              kLargestCoordinate);
    EXPECT_EQ(sizeFor(ViewRect(-1, 0, kLargestCoordinate, 0)).right,
              kSmallestCoordinate); // wraps around in 32 bits
    EXPECT_EQ(sizeFor(ViewRect(kSmallestCoordinate, 0, kLargestCoordinate, 0)).right, -1);
    EXPECT_EQ(sizeFor(ViewRect(kLargestCoordinate, 0, kSmallestCoordinate, 0)).right, 1);
}

TEST_F(EditorViewTest, OnSizeAndCheckSizeConstraintAreTheBaseClasses)
{
    const auto view = makeView(&library);
    EXPECT_EQ(view->canResize(), kResultFalse);
    EXPECT_EQ(view->getSize(nullptr), kInvalidArgument);
    ViewRect larger(0, 0, 1000, 1000);
    EXPECT_EQ(view->checkSizeConstraint(&larger), kResultFalse);
    EXPECT_EQ(view->onSize(&larger), kResultTrue);
    EXPECT_EQ(view->setFrame(nullptr), kResultTrue);
    expectCalls({});
}

TEST_F(EditorViewTest, IsPlatformTypeSupportedForNSViewOnly)
{
    const auto view = makeView(&library);
    EXPECT_EQ(view->isPlatformTypeSupported("NSView"), kResultTrue);
    for (const char* type :
         {"HIView", "UIView", "HWND", "X11EmbedWindowID", "nsview", "NSView ", "NSVie", ""})
        EXPECT_EQ(view->isPlatformTypeSupported(type), kNotImplemented) << type;
    EXPECT_EQ(view->isPlatformTypeSupported(nullptr), kNotImplemented);
}

TEST_F(EditorViewTest, AttachedGoesInFourSteps)
{
    const auto view = makeView(&library);
    library.rect = ViewRect(1, 2, 30, 40);
    EXPECT_EQ(view->attached(&window, "NSView"), kResultOk);
    expectCalls({"library.prepareEditor(object, NSView)", "library.getEditorRect()",
                 "library.openEditor(object, 1 2 30 40)", "library.editorOpened()"});
    EXPECT_EQ(library.parent, &window);
}

TEST_F(EditorViewTest, AttachedDoesNotLookAtTheType)
{
    const auto view = makeView(&library);
    EXPECT_EQ(view->attached(nullptr, nullptr), kResultOk);
    expectCalls({"library.prepareEditor(null, null)", "library.getEditorRect()",
                 "library.openEditor(null, 0 0 800 600)", "library.editorOpened()"});
}

TEST_F(EditorViewTest, IsAttachedStaysFalseForTheBaseClass)
{
    const auto view = makeView(&library);
    EXPECT_EQ(view->attached(&window, "NSView"), kResultOk);
    EXPECT_FALSE(view->isAttached());
    EXPECT_EQ(view->removed(), kResultOk);
    EXPECT_FALSE(view->isAttached());
}

TEST_F(EditorViewTest, AttachedOpensNothingWhenTheEditorIsNotReady)
{
    const auto view = makeView(&library);
    for (const int32 answer : {1, -1, kLargestCoordinate}) {
        library.prepareResult = answer;
        EXPECT_EQ(view->attached(&window, "NSView"), kResultOk);
        expectCalls({"library.prepareEditor(object, NSView)"});
    }
    library.prepareResult = 0;
    for (const int32 answer : {1, -1, kLargestCoordinate}) {
        library.rectResult = answer;
        EXPECT_EQ(view->attached(&window, "NSView"), kResultOk);
        expectCalls({"library.prepareEditor(object, NSView)", "library.getEditorRect()"});
    }
}

TEST_F(EditorViewTest, AttachedGoesOnWhateverOpenEditorAnswers)
{
    const auto view = makeView(&library);
    library.openResult = 1;
    EXPECT_EQ(view->attached(&window, "NSView"), kResultOk);
    EXPECT_EQ(trace.texts().back(), "library.editorOpened()");
}

TEST_F(EditorViewTest, OperationsTakeAThrowingCallForAFailedOne)
{
    const auto view = makeView(&library);
    library.throwAt("prepareEditor");
    EXPECT_EQ(view->attached(&window, "NSView"), kResultOk);
    expectCalls({"library.prepareEditor(object, NSView)"});
    library.clearFaults();
    library.throwAt("getEditorRect");
    EXPECT_EQ(view->attached(&window, "NSView"), kResultOk);
    expectCalls({"library.prepareEditor(object, NSView)", "library.getEditorRect()"});
    library.clearFaults();
    for (const char* call : {"openEditor", "editorOpened", "closeEditor", "onFocus", "onKeyDown",
                             "onKeyUp", "onWheel", "findParameter"})
        library.throwAt(call);
    EXPECT_EQ(view->attached(&window, "NSView"), kResultOk);
    EXPECT_EQ(trace.texts().size(), 4u);
    EXPECT_EQ(view->removed(), kResultFalse);
    EXPECT_EQ(view->onFocus(true), kResultOk);
    EXPECT_EQ(view->onKeyDown(u'a', 0, 0), kResultFalse);
    EXPECT_EQ(view->onKeyUp(u'a', 0, 0), kResultFalse);
    EXPECT_EQ(view->onWheel(1), kResultFalse);
}

TEST_F(EditorViewTest, RemovedClosesTheEditor)
{
    const auto view = makeView(&library);
    EXPECT_EQ(view->removed(), kResultOk);
    expectCalls({"library.closeEditor()"});
    for (const int32 answer : {1, -1, kLargestCoordinate}) {
        library.closeResult = answer;
        EXPECT_EQ(view->removed(), kResultFalse);
    }
}

TEST_F(EditorViewTest, OnFocusReachesTheLibrary)
{
    const auto view = makeView(&library);
    for (const TBool state : {TBool(0), TBool(1), TBool(2), TBool(255)})
        EXPECT_EQ(view->onFocus(state), kResultOk);
    expectCalls({"library.onFocus(false)", "library.onFocus(true)", "library.onFocus(true)",
                 "library.onFocus(true)"});
}

TEST_F(EditorViewTest, OnKeyDownAndOnKeyUpPassTheByteOn)
{
    const auto view = makeView(&library);
    EXPECT_EQ(view->onKeyDown(u'a', 12, 3), kResultOk);
    EXPECT_EQ(view->onKeyUp(u'Z', -1, -32768), kResultOk);
    EXPECT_EQ(view->onKeyDown(0, 32767, 0), kResultOk);
    EXPECT_EQ(view->onKeyDown(u'\u00E9', 0, 0), kResultOk);
    EXPECT_EQ(view->onKeyUp(u'\u3042', 0, 0), kResultOk);
    EXPECT_EQ(view->onKeyDown(0xD800, 0, 0), kResultOk);
    EXPECT_EQ(view->onKeyDown(0x7F, 0, 0), kResultOk);
    expectCalls({"library.onKeyDown(97, 12, 3)", "library.onKeyUp(90, -1, -32768)",
                 "library.onKeyDown(0, 32767, 0)", "library.onKeyDown(0, 0, 0)",
                 "library.onKeyUp(0, 0, 0)", "library.onKeyDown(0, 0, 0)",
                 "library.onKeyDown(127, 0, 0)"});
    library.handlesKeys = false;
    EXPECT_EQ(view->onKeyDown(u'a', 0, 0), kResultFalse);
    EXPECT_EQ(view->onKeyUp(u'a', 0, 0), kResultFalse);
}

TEST_F(EditorViewTest, OnWheelPassesWholeLinesOn)
{
    const auto view = makeView(&library);
    for (const float distance : {0.0F, 0.25F, -0.25F, 1.0F, -1.0F, 1.5F, 3.0F, -3.0F})
        EXPECT_EQ(view->onWheel(distance), kResultOk);
    expectCalls({"library.onWheel(0)", "library.onWheel(1)", "library.onWheel(-1)",
                 "library.onWheel(1)", "library.onWheel(-1)", "library.onWheel(1.5)",
                 "library.onWheel(3)", "library.onWheel(-3)"});
    library.handlesWheel = false;
    EXPECT_EQ(view->onWheel(1), kResultFalse);
}

TEST_F(EditorViewTest, OperationsDoNothingWithoutALibrary)
{
    const auto view = makeView(nullptr);
    ParamID id = 5;
    ViewRect size(1, 1, 1, 1);
    EXPECT_EQ(view->getSize(&size), kResultTrue);
    EXPECT_EQ(size.right, 0);
    EXPECT_EQ(size.bottom, 0);
    EXPECT_EQ(view->attached(&window, "NSView"), kResultOk);
    EXPECT_EQ(view->removed(), kResultOk);
    EXPECT_EQ(view->onFocus(true), kResultOk);
    EXPECT_EQ(view->onKeyDown(u'a', 0, 0), kResultFalse);
    EXPECT_EQ(view->onKeyUp(u'a', 0, 0), kResultFalse);
    EXPECT_EQ(view->onWheel(1), kResultFalse);
    EXPECT_EQ(view->findParameter(1, 2, id), kResultFalse);
    EXPECT_EQ(id, 5u);
    expectCalls({});
}

TEST_F(EditorViewTest, QueryInterfaceGivesTheParameterFinderWithAReference)
{
    const auto view = makeView(&library);
    const auto references = [&] {
        view->addRef();
        return view->release();
    };
    void* got = nullptr;
    EXPECT_EQ(view->queryInterface(IParameterFinder::iid, &got), kResultOk);
    EXPECT_EQ(got, static_cast<IParameterFinder*>(view.get()));
    EXPECT_EQ(references(), 2u);
    view->release();
    EXPECT_EQ(view->queryInterface(IPlugView::iid, &got), kResultOk);
    EXPECT_EQ(got, static_cast<IPlugView*>(view.get()));
    EXPECT_EQ(references(), 2u);
    view->release();
    EXPECT_EQ(view->queryInterface(IPlugViewContentScaleSupport::iid, &got), kNoInterface);
    EXPECT_EQ(got, nullptr);
    EXPECT_EQ(references(), 1u);
}

class ControlledViewTest : public testing::Test {
protected:
    void SetUp() override
    {
        bound.initialize();
        view = owned(static_cast<VstK2xEditorView*>(bound.controller->createView("editor")));
        bound.trace.clear();
    }

    BoundController bound;
    IPtr<VstK2xEditorView> view;
};

TEST_F(ControlledViewTest, FindParameterFindsTheOneThatTheEditorShows)
{
    bound.library.parameterAt = [](int32 x, int32) {
        return x < 0 ? std::optional<uint32>() : std::optional<uint32>(kVolume1);
    };
    ParamID id = 5;
    EXPECT_EQ(view->findParameter(3, 4, id), kResultOk);
    EXPECT_EQ(id, kVolume1);
    id = 5;
    EXPECT_EQ(view->findParameter(-3, kLargestCoordinate, id), kResultFalse);
    EXPECT_EQ(id, 5u);
    EXPECT_THAT(bound.trace.texts(), ElementsAre("library.findParameter(3, 4)",
                                                 "library.findParameter(-3, 2147483647)"));
    bound.library.throwAt("findParameter");
    EXPECT_EQ(view->findParameter(3, 4, id), kResultFalse);
}

TEST_F(ControlledViewTest, FindParameterFindsNothingWithoutAController)
{
    const auto lonely = owned(new VstK2xEditorView(nullptr, &bound.library));
    bound.trace.clear();
    ParamID id = 5;
    EXPECT_EQ(lonely->findParameter(3, 4, id), kResultFalse);
    EXPECT_THAT(bound.trace.texts(), IsEmpty());
}

TEST_F(ControlledViewTest, OnWheelLeavesTheDistanceAloneWithoutAScrollEvent)
{
    // In this program the application handles no scroll event.
    EXPECT_EQ(bound.controller->getVSTHostType(), 0);
    bound.trace.clear();
    view->onWheel(3);
    EXPECT_THAT(bound.trace.textsOf({"library."}), ElementsAre("library.onWheel(3)"));
    bound.host.throwAt("getApplicationName");
    EXPECT_EQ(view->onWheel(3), kResultOk);
}

TEST_F(ControlledViewTest, OperationsCallNobodyAfterTerminate)
{
    EXPECT_EQ(view->attached(this, "NSView"), kResultOk);
    bound.controller->terminate();
    bound.trace.clear();
    ParamID id = 5;
    EXPECT_EQ(view->onFocus(true), kResultOk);
    EXPECT_EQ(view->onKeyDown(u'a', 0, 0), kResultFalse);
    EXPECT_EQ(view->onKeyUp(u'a', 0, 0), kResultFalse);
    EXPECT_EQ(view->onWheel(3), kResultFalse);
    EXPECT_EQ(view->findParameter(1, 2, id), kResultFalse);
    EXPECT_EQ(view->removed(), kResultOk);
    EXPECT_EQ(view->attached(this, "NSView"), kResultOk);
    EXPECT_THAT(bound.trace.texts(), IsEmpty());
}

TEST_F(ControlledViewTest, ReleaseLetsTheControllerGo)
{
    bound.end();
    EXPECT_EQ(view->onFocus(true), kResultOk);
    view = nullptr;
}

} // namespace
