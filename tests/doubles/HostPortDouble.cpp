#include "tests/doubles/HostPortDouble.h"

#include "tests/doubles/NonsenseText.h"

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
    if (books.script.toldWithoutObject())
        return true;
    if (const auto nonsense = books.script.toldText())
        tellNonsense(out, *nonsense);
    else
        id.copyTo(out, books.unicode && !idAsEightBit);
    return true;
}

/** Broken texts come in the character set that is not the host's. */
void HostPortDouble::tellNonsense(StringObject& out, Nonsense what) const
{
    const bool wide = books.unicode != (what == Nonsense::kBrokenText);
    if (wide)
        out.setText16(nonsenseText(what).get(true));
    else
        out.setText8(nonsenseBytes(what).c_str());
}

bool HostPortDouble::isPortType(const char* asked)
{
    return called("isPortType", asked) && asked && books.script.toldFlag(type == asked);
}

bool HostPortDouble::hasPortAttribute(const char* attribute)
{
    return called("hasPortAttribute", attribute) && attribute &&
           books.script.toldFlag(attributes.count(attribute) > 0);
}

bool HostPortDouble::isInputPort()
{
    return called("isInputPort") && books.script.toldFlag(input);
}

const char16* HostPortDouble::getSystemName()
{
    return called("getSystemName") ? books.told(systemName) : nullptr;
}

const char16* HostPortDouble::getDisplayName()
{
    return called("getDisplayName") ? books.told(displayName) : nullptr;
}

bool HostPortDouble::isDisplayed()
{
    return called("isDisplayed") && books.script.toldFlag(displayed);
}

void HostPortDouble::setDisplayed(bool state)
{
    if (called("setDisplayed", state))
        displayed = state;
}

} // namespace doubles
