#include "tests/doubles/HostContextDouble.h"

#include "hostapi/IHostApplicationA.h"
#include "hostapi/IHostApplicationW.h"
#include "hostapi/IHostClasses.h"
#include "public.sdk/source/vst/hosting/hostclasses.h"
#include "tests/doubles/MessageDouble.h"

#include <algorithm>

namespace doubles {

using namespace Steinberg;

class HostContextDouble::ApplicationW final : public Facet<IHostApplicationW> {
public:
    ApplicationW(HostBooks& host, HostContextDouble& owner)
    : Facet(host, "hostApplicationW", owner)
    , context(owner)
    {
    }

    const char16* PLUGIN_API getApplicationName() override
    {
        return called("getApplicationName") ? books.told(context.name) : nullptr;
    }
    const char16* PLUGIN_API getVersionString() override
    {
        return called("getVersionString") ? books.told(context.versionText) : nullptr;
    }
    tresult PLUGIN_API getCharacterSet() override
    {
        return called("getCharacterSet") ? books.script.told(context.characterSet) : kResultFalse;
    }

private:
    HostContextDouble& context;
};

class HostContextDouble::ApplicationA final : public Facet<IHostApplicationA> {
public:
    ApplicationA(HostBooks& host, HostContextDouble& context)
    : Facet(host, "hostApplicationA", context)
    {
    }
};

class HostContextDouble::Classes final : public Facet<IHostClasses> {
public:
    Classes(HostBooks& host, HostContextDouble& context)
    : Facet(host, "hostClasses", context)
    {
    }

    tresult PLUGIN_API getHostInterface(const TUID queried, void** obj) override
    {
        if (!called("getHostInterface", interfaceName(queried)) || books.isHidden(queried))
            return kNoInterface;
        if (books.script.toldWithoutObject()) {
            *obj = nullptr;
            return kResultOk;
        }
        auto* found = books.offered(queried);
        if (!found)
            return kNoInterface;
        *obj = found;
        return kResultOk;
    }
};

HostContextDouble::HostContextDouble(HostBooks& host, const HostFamily& family,
                                     HostRunLoopDouble& hostRunLoop)
: Counted(host, "context")
, name(family.name)
, versionText(family.versionText)
, characterSet(family.unicode ? kResultOk : kResultFalse)
, runLoop(hostRunLoop)
, applicationW(host.make<ApplicationW>(*this))
, applicationA(host.make<ApplicationA>(*this))
, classes(host.make<Classes>(*this))
{
}

void* HostContextDouble::face(const TUID queried)
{
    const auto is = [&](const FUID& other) { return FUnknownPrivate::iidEqual(queried, other); };
    if (is(IHostApplicationW::iid))
        return newReference<IHostApplicationW>(&applicationW);
    if (is(IHostApplicationA::iid))
        return newReference<IHostApplicationA>(&applicationA);
    if (is(IHostClasses::iid))
        return newReference<IHostClasses>(&classes);
#if SMTG_OS_LINUX
    if (is(Linux::IRunLoop::iid))
        return newReference<Linux::IRunLoop>(&runLoop);
#else
    static_cast<void>(runLoop); // plug-ins use the system's
#endif
    return Counted::face(queried);
}

tresult HostContextDouble::getName(Vst::String128 out)
{
    if (!called("getName"))
        return kResultFalse;
    const auto units = name.units();
    const auto length = std::min<size_t>(units.size(), 127);
    std::copy_n(units.begin(), length, out);
    out[length] = 0;
    return kResultOk;
}

tresult HostContextDouble::createInstance(TUID cid, TUID queried, void** obj)
{
    *obj = nullptr;
    if (!called("createInstance", interfaceName(cid)))
        return kResultFalse;
    if (books.script.toldWithoutObject())
        return kResultOk;
    const auto is = [&](const FUID& other) {
        return FUnknownPrivate::iidEqual(cid, other) && FUnknownPrivate::iidEqual(queried, other);
    };
    if (is(Vst::IAttributeList::iid)) {
        *obj = Vst::HostAttributeList::make().take();
        return kResultOk;
    }
    if (!is(Vst::IMessage::iid))
        return kResultFalse;
    auto& message = books.make<MessageDouble>("message(" + std::to_string(++messagesMade) + ")");
    message.giveAway();
    *obj = static_cast<Vst::IMessage*>(&message);
    return kResultOk;
}

} // namespace doubles
