#include "tests/doubles/HostBooks.h"

#include "tests/doubles/NonsenseText.h"

#include "editorlib/IExtensionVSTServiceGetter.h"
#include "editorlib/IExternalPlugin.h"
#include "hostapi/HostInterfaces.h"
#include "pluginterfaces/base/ipluginbase.h"
#include "pluginterfaces/base/iupdatehandler.h"
#include "pluginterfaces/gui/iplugview.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivsthostapplication.h"
#include "pluginterfaces/vst/ivstmessage.h"

#include <algorithm>

namespace doubles {

using namespace Steinberg;

HostBooks::Key HostBooks::key(const FUID& iid)
{
    Key result{};
    TUID bytes;
    iid.toTUID(bytes);
    std::copy(std::begin(bytes), std::end(bytes), result.begin());
    return result;
}

void HostBooks::enter(std::unique_ptr<HostObject> object)
{
    const std::lock_guard<std::mutex> guard(mutex);
    byUnknown[object->unknown()] = object.get();
    objects.push_back(std::move(object));
}

bool HostBooks::isOffered(const std::string& asked, const TUID queried)
{
    const std::string text = "query(" + asked + ", " + interfaceName(queried) + ")";
    const bool goesOn = traceQueries ? script.called(text) : script.asked(text);
    return goesOn && !isHidden(queried);
}

FUnknown* HostBooks::offered(const TUID queried)
{
    const auto found = offers.find(key(FUID::fromTUID(queried)));
    return found == offers.end() ? nullptr : found->second();
}

const char16* HostBooks::told(const HostText& own)
{
    return doubles::told(script, own).get(unicode);
}

std::vector<std::string> HostBooks::unbalanced() const
{
    const std::lock_guard<std::mutex> guard(mutex);
    std::vector<std::string> result;
    for (const auto& object : objects)
        if (auto line = object->imbalance(); !line.empty())
            result.push_back(std::move(line));
    return result;
}

HostObject* HostBooks::find(const FUnknown* unknown) const
{
    const std::lock_guard<std::mutex> guard(mutex);
    const auto found = byUnknown.find(unknown);
    return found == byUnknown.end() ? nullptr : found->second;
}

std::string HostBooks::nameOf(const FUnknown* unknown) const
{
    if (!unknown)
        return "null";
    const auto* object = find(unknown);
    return object ? object->getName() : "object";
}

std::string interfaceName(const TUID queried)
{
    struct Row {
        FUID iid;
        const char* name;
    };
    static const std::vector<Row> rows = {
        {FUnknown::iid, "FUnknown"},
        {FUID::fromTUID(IDeviceNotUnicodeID), "IDeviceNotUnicodeID"},
        {FUID::fromTUID(IValueNotUnicodeID), "IValueNotUnicodeID"},
        {IExtensionVSTServiceGetter::iid, "IExtensionVSTServiceGetter"},
        {IExternalPlugin::iid, "IExternalPlugin"},
        {IPluginBase::iid, "IPluginBase"},
        {IUpdateHandler::iid, "IUpdateHandler"},
        {IDependent::iid, "IDependent"},
        {Vst::IHostApplication::iid, "IHostApplication"},
        {Vst::IMessage::iid, "IMessage"},
        {Vst::IAttributeList::iid, "IAttributeList"},
        {Vst::IComponentHandler::iid, "IComponentHandler"},
        {Vst::IComponentHandler2::iid, "IComponentHandler2"},
        {Vst::IConnectionPoint::iid, "IConnectionPoint"},
#if SMTG_OS_LINUX
        {Linux::IRunLoop::iid, "IRunLoop"},
#endif
#define VSTK2X_ROW(Interface, ...) {Interface::iid, #Interface},
        VSTK2X_HOST_INTERFACES(VSTK2X_ROW)
    };
    for (const auto& row : rows)
        if (FUnknownPrivate::iidEqual(queried, row.iid))
            return row.name;
    std::array<char8, 33> digits{};
    FUID::fromTUID(queried).toString(digits.data());
    return digits.data();
}

} // namespace doubles
