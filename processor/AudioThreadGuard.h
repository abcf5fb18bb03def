// AudioThreadGuard: in a build with VSTK2X_AUDIO_GUARD, ends the program where the block on the
// audio thread does what it may not. In every other build it is empty and costs nothing.
#pragma once

namespace Steinberg {
namespace Vst {

#ifdef VSTK2X_AUDIO_GUARD

/** Says for as long as it lives where the calling thread is; an inner one in the outer's place.
    The module's own calls of allocator and locks ask `check` (module/linux/GuardedCalls.cpp). */
class AudioThreadGuard {
public:
    enum Place {
        kElsewhere, ///< everything goes; also the library's own work inside a block
        kInBlock,   ///< nothing goes
        kAtQueue    ///< one event comes or leaves: the lock may be tried, and nothing else goes
    };
    enum Call { kAllocate, kFree, kTryLock, kLock, kWait };

    explicit AudioThreadGuard(Place place);
    ~AudioThreadGuard();
    AudioThreadGuard(const AudioThreadGuard&) = delete;
    AudioThreadGuard& operator=(const AudioThreadGuard&) = delete;

    /** Aborts with a line on stderr when the call is not for the calling thread's place.
        @param name the operation's, for that line [any thread] */
    static void check(Call call, const char* name);

private:
    const Place outer;
};

#else

class [[maybe_unused]] AudioThreadGuard {
public:
    enum Place { kElsewhere, kInBlock, kAtQueue };
    explicit constexpr AudioThreadGuard(Place /*place*/) {}
};

#endif

} // namespace Vst
} // namespace Steinberg
