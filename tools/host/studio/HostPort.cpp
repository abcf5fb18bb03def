#include "tools/host/studio/HostPort.h"

#include <cstring>

namespace Steinberg {
namespace Vst {
namespace play {

HostPort::HostPort(const PortDescription& description, bool isUnicode)
: port(description)
, unicode(isUnicode)
, id(port.id)
, name(port.name)
, displayed(port.isDisplayed)
{
}

bool PLUGIN_API HostPort::getPortId(StringObject& out)
{
    id.copyTo(out, unicode);
    return true;
}

bool PLUGIN_API HostPort::isPortType(const char* asked)
{
    return asked &&
           std::strcmp(asked, port.type == PortDescription::Type::audio ? "audio" : "midi") == 0;
}

bool PLUGIN_API HostPort::hasPortAttribute(const char* attribute)
{
    return attribute && port.attributes.count(attribute) > 0;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
