#include "tests/doubles/AttributesDouble.h"

#include "public.sdk/source/vst/hosting/hostclasses.h"

namespace doubles {

using namespace Steinberg;

AttributesDouble::AttributesDouble(HostBooks& host, const std::string& messageName)
: Counted(host, messageName)
, kept(Vst::HostAttributeList::make())
{
}

Vst::IAttributeList& AttributesDouble::renew()
{
    kept = Vst::HostAttributeList::make();
    return *kept;
}

bool AttributesDouble::asked(const char* operation, AttrID id)
{
    return books.script.asked(callText(getName(), operation, id));
}

tresult AttributesDouble::setInt(AttrID id, int64 value)
{
    return asked("setInt", id) ? kept->setInt(id, value) : kResultFalse;
}

tresult AttributesDouble::getInt(AttrID id, int64& value)
{
    if (!asked("getInt", id))
        return kResultFalse;
    const tresult result = kept->getInt(id, value);
    value = result == kResultOk ? books.script.told(static_cast<int>(value)) : value;
    return result;
}

tresult AttributesDouble::setFloat(AttrID id, double value)
{
    return asked("setFloat", id) ? kept->setFloat(id, value) : kResultFalse;
}

tresult AttributesDouble::getFloat(AttrID id, double& value)
{
    return asked("getFloat", id) ? kept->getFloat(id, value) : kResultFalse;
}

tresult AttributesDouble::setString(AttrID id, const Vst::TChar* string)
{
    return asked("setString", id) ? kept->setString(id, string) : kResultFalse;
}

tresult AttributesDouble::getString(AttrID id, Vst::TChar* string, uint32 sizeInBytes)
{
    return asked("getString", id) ? kept->getString(id, string, sizeInBytes) : kResultFalse;
}

tresult AttributesDouble::setBinary(AttrID id, const void* data, uint32 sizeInBytes)
{
    return asked("setBinary", id) ? kept->setBinary(id, data, sizeInBytes) : kResultFalse;
}

/** Wrong answers are half the bytes, or a size with null for the bytes. */
tresult AttributesDouble::getBinary(AttrID id, const void*& data, uint32& sizeInBytes)
{
    if (!asked("getBinary", id))
        return kResultFalse;
    const tresult result = kept->getBinary(id, data, sizeInBytes);
    if (result != kResultOk)
        return result;
    if (books.script.toldWithoutObject())
        sizeInBytes /= 2;
    if (books.script.toldText())
        data = nullptr;
    return kResultOk;
}

} // namespace doubles
