#include "tests/doubles/MessageDouble.h"

#include "tests/doubles/NonsenseText.h"

namespace doubles {

MessageDouble::MessageDouble(HostBooks& host, const std::string& name)
: Counted(host, name)
, attributes(host.make<AttributesDouble>(name))
{
}

const char* MessageDouble::getMessageID()
{
    if (!books.script.asked(getName() + ".getMessageID()"))
        return nullptr;
    toldId = told(books.script, id);
    return toldId.c_str();
}

void MessageDouble::setMessageID(const char* newId)
{
    if (books.script.asked(getName() + ".setMessageID()"))
        id = newId ? newId : "";
}

Steinberg::Vst::IAttributeList* MessageDouble::getAttributes()
{
    return books.script.asked(getName() + ".getAttributes()") ? &attributes : nullptr;
}

void MessageDouble::makeUp(const char* newId, const char* attribute, const void* data,
                           Steinberg::uint32 sizeInBytes)
{
    id = newId;
    attributes.renew().setBinary(attribute, data, sizeInBytes);
}

void MessageDouble::makeUp(const char* newId, const char* attribute, Steinberg::int64 value)
{
    id = newId;
    attributes.renew().setInt(attribute, value);
}

} // namespace doubles
