#include "tests/faults/HostBlock.h"

#include "tests/doubles/CallText.h"
#include "tests/doubles/Sanitized.h"

#include <algorithm>

namespace faults {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::callText;

namespace {

constexpr int kMostEvents = 1000; ///< the plug-in asks for each of them

#ifdef VSTK2X_SANITIZED // A sanitizer takes long over every byte of a state.
constexpr int kMostBytes = 1 << 24;
#else
constexpr int kMostBytes = kMaxInt32;
#endif

/** How many of the bytes a stream moves: all, unless this is the faulty transfer. */
int32 bytesToMove(int32 size)
{
    auto& transfers = HostStream::transfers;
    if (++transfers.count != transfers.faulty || size == 0)
        return size;
    return transfers.movesNothing ? 0 : size - 1;
}

} // namespace

int32 EventsOfHost::getEventCount()
{
    return host.asked("events.getEventCount()")
               ? host.told(EventListDouble::getEventCount(), kMostEvents)
               : 0;
}

tresult EventsOfHost::getEvent(int32 index, Event& event)
{
    return host.asked(callText("events", "getEvent", index))
               ? EventListDouble::getEvent(index, event)
               : kResultFalse;
}

tresult EventsOfHost::addEvent(Event& event)
{
    return host.asked("events.addEvent()") ? EventListDouble::addEvent(event) : kResultFalse;
}

void ChangesOfHost::add(ParamID id, double value)
{
    ParameterChangesDouble::add(queues.emplace_back(host, id, value));
}

int32 ChangesOfHost::getParameterCount()
{
    return host.asked("changes.getParameterCount()")
               ? host.told(ParameterChangesDouble::getParameterCount(), kMostEvents)
               : 0;
}

IParamValueQueue* ChangesOfHost::getParameterData(int32 index)
{
    return host.asked(callText("changes", "getParameterData", index))
               ? ParameterChangesDouble::getParameterData(index)
               : nullptr;
}

ParamID ChangesOfHost::Queue::getParameterId()
{
    return host.asked("queue.getParameterId()") ? ParameterQueueDouble::getParameterId() : 0;
}

int32 ChangesOfHost::Queue::getPointCount()
{
    return host.asked("queue.getPointCount()") ? host.told(ParameterQueueDouble::getPointCount())
                                               : 0;
}

tresult ChangesOfHost::Queue::getPoint(int32 index, int32& sampleOffset, ParamValue& point)
{
    return host.asked(callText("queue", "getPoint", index))
               ? ParameterQueueDouble::getPoint(index, sampleOffset, point)
               : kResultFalse;
}

tresult HostStream::read(void* buffer, int32 size, int32* sizeRead)
{
    if (sizeRead)
        *sizeRead = 0;
    if (!host.asked(callText("stream", "read", size)) || size < 0)
        return kResultFalse;
    const auto left = std::max<int64>(static_cast<int64>(data.size()) - position, 0);
    const auto moved = bytesToMove(static_cast<int32>(std::min<int64>(size, left)));
    const auto result = StreamDouble::read(buffer, moved, sizeRead);
    if (sizeRead)
        *sizeRead = host.told(*sizeRead);
    return result;
}

tresult HostStream::write(void* buffer, int32 size, int32* sizeWritten)
{
    if (sizeWritten)
        *sizeWritten = 0;
    return host.asked(callText("stream", "write", size)) && size >= 0
               ? StreamDouble::write(buffer, bytesToMove(size), sizeWritten)
               : kResultFalse;
}

tresult HostStream::seek(int64 offset, int32 mode, int64* result)
{
    if (!host.asked(callText("stream", "seek", offset, mode)))
        return kResultFalse;
    const auto done = StreamDouble::seek(offset, mode, result);
    if (result && done == kResultOk)
        *result = host.told(static_cast<int32>(*result), kMostBytes);
    return done;
}

tresult HostStream::tell(int64* result)
{
    return host.asked("stream.tell()") ? StreamDouble::tell(result) : kResultFalse;
}

} // namespace faults
