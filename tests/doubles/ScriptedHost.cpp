#include "tests/doubles/ScriptedHost.h"

#include "hostapi/IHostApplicationA.h"
#include "hostapi/IHostApplicationW.h"
#include "hostapi/IHostClasses.h"

namespace doubles {

using namespace Steinberg;

ScriptedHost::ScriptedHost(Trace& trace, const HostFamily& family)
: CallScript(trace)
, books(*this, family.unicode)
, updates(books.make<HostUpdatesDouble>())
, ports(books)
, devices(books, updates)
, service(books)
, runLoop(books.make<HostRunLoopDouble>())
, context(books.make<HostContextDouble>(family, runLoop))
, handler(books.make<HostHandlerDouble>(ports))
, peer(books.make<PeerDouble>())
{
    if (!family.hasApplicationW)
        hide(IHostApplicationW::iid);
    if (!family.hasApplicationA)
        hide(IHostApplicationA::iid);
    if (!family.hasExtensions) {
        hide(IHostClasses::iid);
        hide(IComponentPortHandler::iid);
    }
}

bool ScriptedHost::isUnicodeApplicationHost() const
{
    return !books.isHidden(IHostApplicationW::iid) && context.characterSet == kResultOk;
}

int32 ScriptedHost::hostType() const
{
    const auto& name = context.name.utf8();
    if (books.isHidden(IHostApplicationW::iid))
        return books.isHidden(IHostApplicationA::iid) ? 2 : 0;
    if (name.find("Cubase") != std::string::npos || name.find("Nuendo") != std::string::npos)
        return 0;
    return name == "Standalone" ? 1 : 2;
}

std::vector<std::string> ScriptedHost::ledger() const
{
    auto result = books.unbalanced();
    for (const auto& more : {updates.unbalanced(), runLoop.unbalanced()})
        result.insert(result.end(), more.begin(), more.end());
    return result;
}

} // namespace doubles
