// StreamDouble: a stream in memory that fails as the test wants.
//
//   StreamDouble stream("bytes");    stream.failAtCall = 3;      // the third call and only it
//   stream.failFrom = 3;             stream.throwAtCall = 2;
//   stream.shortRead = 2;            // a read gives at most 2 bytes, with kResultOk
//   stream.writeLimit = 10;          // bytes behind the tenth are not taken; the write fails
//   stream.data, stream.position, stream.callCount, stream.getReferences()
#pragma once

#include "pluginterfaces/base/ibstream.h"
#include "tests/doubles/StackObject.h"

#include <optional>
#include <string>

namespace doubles {

/** One thread at a time. */
class StreamDouble : public StackObject<Steinberg::IBStream> {
public:
    StreamDouble() = default;
    explicit StreamDouble(const std::string& bytes)
    : data(bytes)
    {
    }

    std::string data;
    Steinberg::int64 position = 0;

    size_t failAtCall = 0;  ///< 1 is the first call; 0 is never
    size_t failFrom = 0;    ///< this call and all after it
    size_t throwAtCall = 0; ///< throws a ScriptedFailure
    std::optional<size_t> shortRead;
    std::optional<size_t> writeLimit;
    bool shortWrites = false; ///< with writeLimit: a cut write answers kResultOk
    bool seekable = true;

    size_t callCount = 0;

    Steinberg::tresult PLUGIN_API read(void* buffer, Steinberg::int32 size,
                                       Steinberg::int32* sizeRead) override;
    Steinberg::tresult PLUGIN_API write(void* buffer, Steinberg::int32 size,
                                        Steinberg::int32* sizeWritten) override;
    Steinberg::tresult PLUGIN_API seek(Steinberg::int64 offset, Steinberg::int32 mode,
                                       Steinberg::int64* result) override;
    Steinberg::tresult PLUGIN_API tell(Steinberg::int64* result) override;

private:
    bool goesOn();
};

} // namespace doubles
