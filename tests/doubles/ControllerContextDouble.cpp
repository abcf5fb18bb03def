#include "tests/doubles/ControllerContextDouble.h"

namespace doubles {

using namespace Steinberg;

class ControllerContextDouble::Dependent final : public Counted<IDependent> {
public:
    explicit Dependent(HostBooks& host)
    : Counted(host, "controller")
    {
    }

    ControllerContextDouble* owner = nullptr;

    void PLUGIN_API update(FUnknown* changed, int32 message) override
    {
        called("update", books.nameOf(changed), message);
        if (owner && owner->onUpdate)
            owner->onUpdate(changed, message);
    }
};

ControllerContextDouble::ControllerContextDouble(ScriptedHost& scriptedHost,
                                                 ScriptedLibrary* scriptedLibrary)
: hostContext(&scriptedHost.context)
, handler(&scriptedHost.handler)
, library(scriptedLibrary)
, unicode(scriptedHost.isUnicodeApplicationHost())
, hostType(scriptedHost.hostType())
, host(scriptedHost)
, dependent(scriptedHost.getBooks().make<Dependent>())
{
    dependent.owner = this;
}

ControllerContextDouble::~ControllerContextDouble()
{
    dependent.owner = nullptr;
}

IDependent* ControllerContextDouble::getDependent()
{
    return &dependent;
}

void ControllerContextDouble::changeLatencyTrigger()
{
    host.called("controller.changeLatencyTrigger()");
}

} // namespace doubles
