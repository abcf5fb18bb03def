#include "tests/doubles/HostPortDouble.h"

namespace doubles {

using namespace Steinberg;

HostPortDouble::HostPortDouble(HostBooks& host, const HostText& portId)
: Counted(host, "port(" + portId.utf8() + ")")
, id(portId)
{
}

bool HostPortDouble::getPortId(StringObject& out)
{
    if (!called("getPortId") || !idReadable)
        return false;
    if (books.unicode && !idAsEightBit)
        out.setText16(id.get(true));
    else
        out.setText8(id.utf8().c_str());
    return true;
}

bool HostPortDouble::isPortType(const char* asked)
{
    return called("isPortType", asked) && asked && type == asked;
}

bool HostPortDouble::hasPortAttribute(const char* attribute)
{
    return called("hasPortAttribute", attribute) && attribute && attributes.count(attribute) > 0;
}

bool HostPortDouble::isInputPort()
{
    return called("isInputPort") && input;
}

const char16* HostPortDouble::getSystemName()
{
    return called("getSystemName") ? systemName.get(books.unicode) : nullptr;
}

const char16* HostPortDouble::getDisplayName()
{
    return called("getDisplayName") ? displayName.get(books.unicode) : nullptr;
}

bool HostPortDouble::isDisplayed()
{
    return called("isDisplayed") && displayed;
}

void HostPortDouble::setDisplayed(bool state)
{
    if (called("setDisplayed", state))
        displayed = state;
}

} // namespace doubles
