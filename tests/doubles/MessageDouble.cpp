#include "tests/doubles/MessageDouble.h"

#include "public.sdk/source/vst/hosting/hostclasses.h"

namespace doubles {

MessageDouble::MessageDouble(HostBooks& host, const std::string& name)
: Counted(host, name)
, attributes(Steinberg::Vst::HostAttributeList::make())
{
}

Steinberg::Vst::IAttributeList* MessageDouble::getAttributes()
{
    return books.script.asked(getName() + ".getAttributes()") ? attributes.get() : nullptr;
}

} // namespace doubles
