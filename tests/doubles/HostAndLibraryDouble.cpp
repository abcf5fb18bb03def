#include "tests/doubles/HostAndLibraryDouble.h"

namespace doubles {

using namespace Steinberg;

class HostAndLibraryDouble::Dependent final : public Counted<IDependent> {
public:
    explicit Dependent(HostBooks& host)
    : Counted(host, "controller")
    {
    }

    HostAndLibraryDouble* owner = nullptr;

    void PLUGIN_API update(FUnknown* changed, int32 message) override
    {
        called("update", books.nameOf(changed), message);
        if (owner && owner->onUpdate)
            owner->onUpdate(changed, message);
    }
};

HostAndLibraryDouble::HostAndLibraryDouble(ScriptedHost& scriptedHost,
                                           ScriptedLibrary* scriptedLibrary)
: ownDependent(scriptedHost.getBooks().make<Dependent>())
, dependent(ownDependent)
{
    ownDependent.owner = this;
    hostContext.set(&scriptedHost.context);
    componentHandler.set(&scriptedHost.handler);
    bind(scriptedLibrary);
}

HostAndLibraryDouble::~HostAndLibraryDouble()
{
    ownDependent.owner = nullptr;
}

void HostAndLibraryDouble::release()
{
    hostContext.set(nullptr);
    componentHandler.set(nullptr);
}

} // namespace doubles
