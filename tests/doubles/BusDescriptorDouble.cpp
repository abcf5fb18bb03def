#include "tests/doubles/BusDescriptorDouble.h"

#include "hostapi/IHostPort.h"

namespace doubles {

void BusDescriptorDouble::setChannelPort(Steinberg::int32 channel, Steinberg::IHostPort* port)
{
    const auto name = books.nameOf(port);
    if (called("setChannelPort", channel, name) && channel >= 0 && channel < 2)
        channels.at(static_cast<size_t>(channel)) = name;
}

} // namespace doubles
