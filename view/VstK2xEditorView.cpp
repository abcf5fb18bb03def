#include "view/VstK2xEditorView.h"

#include "basics/CallGuard.h"
#include "editorlib/VstIEditorConnect.h"
#include "platform/CurrentEvent.h"
#include "support/HostKind.h"
#include "view/EditorOwner.h"
#include "view/InputConversion.h"

namespace Steinberg {
namespace Vst {

namespace {

constexpr int32 kSuccess = 0;
constexpr int32 kFailure = 1;

/** Moves the rectangle to the origin. Subtracts in 64 bits, since a library may give
    any numbers. */
ViewRect atOrigin(const ViewRect& rect)
{
    const auto extent = [](int32 from, int32 to) {
        return static_cast<int32>(static_cast<int64>(to) - from);
    };
    return {0, 0, extent(rect.left, rect.right), extent(rect.top, rect.bottom)};
}

} // namespace

VstK2xEditorView::VstK2xEditorView(EditController* maker, VstIEditorConnect* connection)
: EditorView(maker)
, owner(dynamic_cast<const EditorOwner*>(maker))
, editorConnection(connection)
, isOwnersEditor(connection && owner && owner->getEditorConnection() == connection)
{
    hostThread.begin();
    if (!editorConnection)
        return;
    ViewRect editorRect;
    guarded([&] { editorConnection->getEditorRect(&editorRect); });
    setRect(atOrigin(editorRect));
}

VstK2xEditorView::~VstK2xEditorView() = default;

VstIEditorConnect* VstK2xEditorView::editor() const
{
    if (isOwnersEditor && owner->getEditorConnection() != editorConnection)
        return nullptr;
    return editorConnection;
}

tresult PLUGIN_API VstK2xEditorView::queryInterface(const TUID _iid, void** obj)
{
    QUERY_INTERFACE(_iid, obj, IParameterFinder::iid, IParameterFinder)
    return CPluginView::queryInterface(_iid, obj);
}

tresult PLUGIN_API VstK2xEditorView::isPlatformTypeSupported(FIDString type)
{
    hostThread.check("isPlatformTypeSupported");
    return type && FIDStringsEqual(type, kPlatformTypeNSView) ? kResultTrue : kNotImplemented;
}

tresult PLUGIN_API VstK2xEditorView::attached(void* parent, FIDString type)
{
    hostThread.check("attached");
    VstIEditorConnect* library = editor();
    if (!library)
        return kResultOk;
    if (guarded(kFailure, [&] { return library->prepareEditor(parent, type); }) != kSuccess)
        return kResultOk;
    ViewRect place;
    if (guarded(kFailure, [&] { return library->getEditorRect(&place); }) != kSuccess)
        return kResultOk;
    guarded([&] { library->openEditor(parent, &place); });
    guarded([&] { library->editorOpened(); });
    return kResultOk;
}

tresult PLUGIN_API VstK2xEditorView::removed()
{
    hostThread.check("removed");
    VstIEditorConnect* library = editor();
    if (!library)
        return kResultOk;
    const int32 closed = guarded(kFailure, [&] { return library->closeEditor(); });
    return closed == kSuccess ? kResultOk : kResultFalse;
}

tresult PLUGIN_API VstK2xEditorView::onFocus(TBool state)
{
    hostThread.check("onFocus");
    if (VstIEditorConnect* library = editor())
        guarded([&] { library->onFocus(state != 0); });
    return kResultOk;
}

tresult PLUGIN_API VstK2xEditorView::onKeyDown(char16 key, int16 keyCode, int16 modifiers)
{
    hostThread.check("onKeyDown");
    VstIEditorConnect* library = editor();
    if (!library)
        return kResultFalse;
    const char character = convertChar16ToChar(key);
    const bool used =
        guarded(false, [&] { return library->onKeyDown(character, keyCode, modifiers); });
    return used ? kResultOk : kResultFalse;
}

tresult PLUGIN_API VstK2xEditorView::onKeyUp(char16 key, int16 keyCode, int16 modifiers)
{
    hostThread.check("onKeyUp");
    VstIEditorConnect* library = editor();
    if (!library)
        return kResultFalse;
    const char character = convertChar16ToChar(key);
    const bool used =
        guarded(false, [&] { return library->onKeyUp(character, keyCode, modifiers); });
    return used ? kResultOk : kResultFalse;
}

bool VstK2xEditorView::isScrollInCubaseFamilyHost() const
{
    return owner && owner->getVSTHostType() == kCubaseFamilyHost &&
           platform::isCurrentEventScroll();
}

tresult PLUGIN_API VstK2xEditorView::onWheel(float distance)
{
    hostThread.check("onWheel");
    VstIEditorConnect* library = editor();
    if (!library)
        return kResultFalse;
    const bool halve = guarded(false, [this] { return isScrollInCubaseFamilyHost(); });
    const float moved = roundWheelDistanceOutward(halve ? halveScrollDistance(distance) : distance);
    const bool used = guarded(false, [&] { return library->onWheel(moved); });
    return used ? kResultOk : kResultFalse;
}

tresult PLUGIN_API VstK2xEditorView::findParameter(int32 xPos, int32 yPos, ParamID& resultTag)
{
    hostThread.check("findParameter");
    VstIEditorConnect* library = editor();
    if (!library || !getController())
        return kResultFalse;
    const int32 answer =
        guarded(kFailure, [&] { return library->findParameter(xPos, yPos, resultTag); });
    return answer == kSuccess ? kResultOk : kResultFalse;
}

} // namespace Vst
} // namespace Steinberg
