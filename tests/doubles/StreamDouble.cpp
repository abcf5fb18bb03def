#include "tests/doubles/StreamDouble.h"

#include "tests/doubles/CallScript.h"

#include <algorithm>
#include <cstring>

namespace doubles {

using namespace Steinberg;

bool StreamDouble::goesOn()
{
    ++callCount;
    if (callCount == throwAtCall)
        throw ScriptedFailure("stream");
    return callCount != failAtCall && (failFrom == 0 || callCount < failFrom);
}

tresult StreamDouble::read(void* buffer, int32 size, int32* sizeRead)
{
    if (sizeRead)
        *sizeRead = 0;
    if (!goesOn() || !buffer || size < 0)
        return kResultFalse;
    const auto begin = std::min(static_cast<size_t>(position), data.size());
    auto length = std::min(static_cast<size_t>(size), data.size() - begin);
    length = std::min(length, shortRead.value_or(length));
    std::memcpy(buffer, data.data() + begin, length);
    position = static_cast<int64>(begin + length);
    if (sizeRead)
        *sizeRead = static_cast<int32>(length);
    return kResultOk;
}

tresult StreamDouble::write(void* buffer, int32 size, int32* sizeWritten)
{
    if (sizeWritten)
        *sizeWritten = 0;
    if (!goesOn() || size < 0 || (!buffer && size > 0))
        return kResultFalse;
    const auto begin = static_cast<size_t>(position);
    const size_t limit = std::max(writeLimit.value_or(begin + static_cast<size_t>(size)), begin);
    const auto length = std::min(static_cast<size_t>(size), limit - begin);
    if (data.size() < begin + length)
        data.resize(begin + length);
    if (length > 0)
        std::memcpy(&data[begin], buffer, length);
    position = static_cast<int64>(begin + length);
    if (sizeWritten)
        *sizeWritten = static_cast<int32>(length);
    return length == static_cast<size_t>(size) || shortWrites ? kResultOk : kResultFalse;
}

tresult StreamDouble::seek(int64 offset, int32 mode, int64* result)
{
    if (!goesOn() || !seekable)
        return kResultFalse;
    int64 base = 0;
    if (mode == kIBSeekCur)
        base = position;
    else if (mode == kIBSeekEnd)
        base = static_cast<int64>(data.size());
    if (base + offset < 0)
        return kInvalidArgument;
    position = base + offset;
    if (result)
        *result = position;
    return kResultOk;
}

tresult StreamDouble::tell(int64* result)
{
    if (!goesOn() || !result)
        return kResultFalse;
    *result = position;
    return kResultOk;
}

} // namespace doubles
