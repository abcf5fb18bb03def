// FaultyStream: a stream in memory that fails where the test says.
#pragma once

#include "pluginterfaces/base/ibstream.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>

namespace doubles {

/** Lives where the test puts it, so references are only counted. Calls count from 0 over all four
    operations. */
class FaultyStream : public Steinberg::IBStream {
public:
    explicit FaultyStream(std::string content = {}, Steinberg::int64 at = 0)
    : bytes(std::move(content))
    , position(at)
    {
    }

    std::string bytes;
    Steinberg::int64 position = 0;
    int references = 1;
    int calls = 0;
    int failAt = -1;         ///< this call does nothing and gives kResultFalse
    int throwAt = -1;        ///< this call throws
    bool shortIsFine = true; ///< a read that comes out short gives kResultOk, as memory streams do

    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID wanted, void** obj) override
    {
        QUERY_INTERFACE(wanted, obj, Steinberg::FUnknown::iid, Steinberg::IBStream)
        QUERY_INTERFACE(wanted, obj, Steinberg::IBStream::iid, Steinberg::IBStream)
        *obj = nullptr;
        return Steinberg::kNoInterface;
    }
    Steinberg::uint32 PLUGIN_API addRef() override
    {
        return static_cast<Steinberg::uint32>(++references);
    }
    Steinberg::uint32 PLUGIN_API release() override
    {
        return static_cast<Steinberg::uint32>(--references);
    }

    Steinberg::tresult PLUGIN_API read(void* buffer, Steinberg::int32 size,
                                       Steinberg::int32* got) override
    {
        if (fails())
            return Steinberg::kResultFalse;
        const auto left = static_cast<Steinberg::int64>(bytes.size()) - position;
        const auto count = std::clamp<Steinberg::int64>(left, 0, size);
        std::memcpy(buffer, bytes.data() + position, static_cast<size_t>(count));
        position += count;
        if (got)
            *got = static_cast<Steinberg::int32>(count);
        return count == size || shortIsFine ? Steinberg::kResultOk : Steinberg::kResultFalse;
    }

    Steinberg::tresult PLUGIN_API write(void* buffer, Steinberg::int32 size,
                                        Steinberg::int32* put) override
    {
        if (fails())
            return Steinberg::kResultFalse;
        const auto begin = static_cast<size_t>(position);
        const auto count = static_cast<size_t>(size);
        bytes.resize(std::max(bytes.size(), begin + count));
        std::memcpy(bytes.data() + begin, buffer, count);
        position += size;
        if (put)
            *put = size;
        return Steinberg::kResultOk;
    }

    Steinberg::tresult PLUGIN_API seek(Steinberg::int64 to, Steinberg::int32 mode,
                                       Steinberg::int64* result) override
    {
        if (fails())
            return Steinberg::kResultFalse;
        const auto end = static_cast<Steinberg::int64>(bytes.size());
        position = mode == kIBSeekSet ? to : (mode == kIBSeekCur ? position : end) + to;
        if (result)
            *result = position;
        return Steinberg::kResultOk;
    }

    Steinberg::tresult PLUGIN_API tell(Steinberg::int64* at) override
    {
        if (fails())
            return Steinberg::kResultFalse;
        *at = position;
        return Steinberg::kResultOk;
    }

private:
    bool fails()
    {
        const int call = calls++;
        if (call == throwAt)
            throw std::runtime_error("stream");
        return call == failAt;
    }
};

} // namespace doubles
