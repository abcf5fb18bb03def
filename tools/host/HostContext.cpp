#include "tools/host/HostContext.h"

#include "hostapi/IHostApplicationA.h"
#include "hostapi/IHostApplicationW.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

using Offers = std::vector<std::pair<FUID, IPtr<FUnknown>>>;

class HostTexts final : public U::Implements<U::Directly<IHostApplicationW>> {
public:
    explicit HostTexts(HostFamily hostFamily)
    : family(std::move(hostFamily))
    {
    }

    const char16* PLUGIN_API getApplicationName() override
    {
        return family.name.get(family.unicode);
    }
    const char16* PLUGIN_API getVersionString() override
    {
        return family.versionText.get(family.unicode);
    }
    tresult PLUGIN_API getCharacterSet() override
    {
        return family.unicode ? kResultOk : kResultFalse;
    }

private:
    const HostFamily family;
};

/** What an older host offers in its place: an interface without operations. */
class OlderHostMark final : public U::Implements<U::Directly<IHostApplicationA>> {};

/** queryInterface on the first object that was offered under iid. */
tresult answer(const Offers& offers, const TUID iid, void** obj)
{
    const auto found = std::find_if(offers.begin(), offers.end(), [&](const auto& offer) {
        return FUnknownPrivate::iidEqual(iid, offer.first);
    });
    return found == offers.end() ? kNoInterface : found->second->queryInterface(iid, obj);
}

} // namespace

void HostClasses::offer(const TUID wanted, const IPtr<FUnknown>& object)
{
    objects.emplace_back(FUID::fromTUID(wanted), object);
}

tresult PLUGIN_API HostClasses::getHostInterface(const TUID wanted, void** obj)
{
    if (!obj)
        return kInvalidArgument;
    for (const auto& [offered, make] : makers)
        if (FUnknownPrivate::iidEqual(wanted, offered))
            return make()->queryInterface(wanted, obj);
    return answer(objects, wanted, obj);
}

void HostClasses::offerNew(const TUID wanted, std::function<IPtr<FUnknown>()> make)
{
    makers.emplace_back(FUID::fromTUID(wanted), std::move(make));
}

HostContext::HostContext(const HostFamily& family, [[maybe_unused]] const IPtr<RunLoop>& runLoop)
: name(family.name)
{
#if SMTG_OS_LINUX
    add(Linux::IRunLoop::iid, runLoop);
#endif
    if (family.hasApplicationW)
        add(IHostApplicationW::iid, owned(new HostTexts(family)));
    if (family.hasApplicationA)
        add(IHostApplicationA::iid, owned(new OlderHostMark));
}

void HostContext::offerExtension(const IPtr<HostClasses>& hostClasses)
{
    add(IHostClasses::iid, hostClasses);
}

void HostContext::add(const FUID& offered, FUnknown* object)
{
    if (object)
        offers.emplace_back(offered, object);
}

tresult PLUGIN_API HostContext::getName(String128 text)
{
    int32 size = 128;
    name.copyTo(text, &size, true);
    return kResultOk;
}

tresult PLUGIN_API HostContext::queryInterface(const TUID wanted, void** obj)
{
    if (!obj)
        return kInvalidArgument;
    if (answer(offers, wanted, obj) == kResultOk)
        return kResultOk;
    return HostApplication::queryInterface(wanted, obj);
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
