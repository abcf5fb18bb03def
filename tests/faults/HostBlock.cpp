#include "tests/faults/HostBlock.h"

#include "tests/doubles/CallText.h"
#include "tests/doubles/Sanitized.h"

#include <algorithm>
#include <cstring>

namespace faults {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::callText;

namespace {

constexpr int kMostEvents = 1000; ///< each of which is asked for

#ifdef VSTK2X_SANITIZED // which looks after every byte of them
constexpr int kMostBytes = 1 << 24;
#else
constexpr int kMostBytes = kMaxInt32;
#endif

} // namespace

int32 EventsOfHost::getEventCount()
{
    return host.asked("events.getEventCount()")
               ? host.told(static_cast<int32>(events.size()), kMostEvents)
               : 0;
}

tresult EventsOfHost::getEvent(int32 index, Event& event)
{
    const bool known = index >= 0 && static_cast<size_t>(index) < events.size();
    if (!host.asked(callText("events", "getEvent", index)) || !known)
        return kResultFalse;
    event = events[static_cast<size_t>(index)];
    return kResultOk;
}

tresult EventsOfHost::addEvent(Event& event)
{
    if (!host.asked("events.addEvent()"))
        return kResultFalse;
    events.push_back(event);
    return kResultOk;
}

int32 ChangesOfHost::getParameterCount()
{
    return host.asked("changes.getParameterCount()")
               ? host.told(static_cast<int32>(queues.size()), kMostEvents)
               : 0;
}

IParamValueQueue* ChangesOfHost::getParameterData(int32 index)
{
    const bool known = index >= 0 && static_cast<size_t>(index) < queues.size();
    return host.asked(callText("changes", "getParameterData", index)) && known
               ? &queues[static_cast<size_t>(index)]
               : nullptr;
}

ParamID ChangesOfHost::Queue::getParameterId()
{
    return host.asked("queue.getParameterId()") ? id : 0;
}

int32 ChangesOfHost::Queue::getPointCount()
{
    return host.asked("queue.getPointCount()") ? host.told(1) : 0;
}

tresult ChangesOfHost::Queue::getPoint(int32 index, int32& sampleOffset, ParamValue& point)
{
    if (!host.asked(callText("queue", "getPoint", index)) || index != 0)
        return kResultFalse;
    sampleOffset = 0;
    point = value;
    return kResultOk;
}

size_t HostStream::cut(size_t length)
{
    if (++transfers.count != transfers.faulty || length == 0)
        return length;
    return transfers.movesNothing ? 0 : length - 1;
}

tresult HostStream::read(void* buffer, int32 size, int32* sizeRead)
{
    if (sizeRead)
        *sizeRead = 0;
    if (!host.asked(callText("stream", "read", size)) || size < 0)
        return kResultFalse;
    const auto begin = std::min(position, bytes.size());
    const auto length = cut(std::min(static_cast<size_t>(size), bytes.size() - begin));
    std::memcpy(buffer, bytes.data() + begin, length);
    position = begin + length;
    if (sizeRead)
        *sizeRead = host.told(static_cast<int32>(length));
    return kResultOk;
}

tresult HostStream::write(void* buffer, int32 size, int32* sizeWritten)
{
    if (sizeWritten)
        *sizeWritten = 0;
    if (!host.asked(callText("stream", "write", size)) || size < 0)
        return kResultFalse;
    const auto length = cut(static_cast<size_t>(size));
    bytes.resize(std::max(bytes.size(), position + length));
    std::memcpy(bytes.data() + position, buffer, length);
    position += length;
    if (sizeWritten)
        *sizeWritten = static_cast<int32>(length);
    return kResultOk;
}

tresult HostStream::seek(int64 offset, int32 mode, int64* result)
{
    if (!host.asked(callText("stream", "seek", offset, mode)))
        return kResultFalse;
    int64 target = offset;
    if (mode == kIBSeekCur)
        target += static_cast<int64>(position);
    if (mode == kIBSeekEnd)
        target += static_cast<int64>(bytes.size());
    if (target < 0)
        return kInvalidArgument;
    position = static_cast<size_t>(target);
    if (result)
        *result = host.told(static_cast<int32>(target), kMostBytes);
    return kResultOk;
}

tresult HostStream::tell(int64* result)
{
    if (!host.asked("stream.tell()") || !result)
        return kResultFalse;
    *result = static_cast<int64>(position);
    return kResultOk;
}

} // namespace faults
