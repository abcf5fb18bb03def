#include "tests/doubles/PeerDouble.h"

#include <cstring>

namespace doubles {

using namespace Steinberg;

namespace {

PeerDouble::Received read(Vst::IMessage& message)
{
    PeerDouble::Received result;
    const char* id = message.getMessageID(); // asked once: it may fail
    result.id = id ? id : "";
    auto* attributes = message.getAttributes();
    if (!attributes)
        return result;
    for (const char* name : {"VST_CONNECT_BINARY_ID", "VST_DISCONNECT_BINARY_ID"}) {
        const void* data = nullptr;
        uint32 size = 0;
        const bool belongs = result.id.substr(0, 7) == std::string(name).substr(0, 7);
        if (belongs && attributes->getBinary(name, data, size) == kResultOk && data &&
            size == sizeof(void*)) {
            void* address = nullptr;
            std::memcpy(&address, data, sizeof(address));
            result.address = address;
        }
    }
    int64 integer = 0;
    if (attributes->getInt("VST_ISUNICODE_HOST_BINARY_ID", integer) == kResultOk)
        result.integer = integer;
    return result;
}

} // namespace

tresult PeerDouble::connect(Vst::IConnectionPoint* other)
{
    return called("connect", other) ? kResultOk : kResultFalse;
}

tresult PeerDouble::disconnect(Vst::IConnectionPoint* other)
{
    return called("disconnect", other) ? kResultOk : kResultFalse;
}

tresult PeerDouble::notify(Vst::IMessage* message)
{
    if (!called("notify", message ? message->getMessageID() : nullptr) || !message)
        return kResultFalse;
    received.push_back(read(*message));
    const size_t index = received.size() - 1;
    if (index < notifyResults.size() && notifyResults[index] != kResultOk)
        return notifyResults[index];
    return forwardTo ? forwardTo->notify(message) : kResultOk;
}

} // namespace doubles
