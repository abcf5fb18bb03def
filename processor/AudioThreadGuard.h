// AudioThreadGuard: in a build with VSTK2X_AUDIO_GUARD, ends the program when process allocates or
// waits for a lock. In every other build it is empty and costs nothing.
#pragma once

namespace Steinberg {
namespace Vst {

#ifdef VSTK2X_AUDIO_GUARD

/** While it exists it tells where the calling thread is; an inner guard replaces the
    outer one until it is destroyed. The module's calls of allocator and locks go through
    check (module/linux/GuardedCalls.cpp). */
class AudioThreadGuard {
public:
    enum Place {
        kElsewhere, ///< everything is allowed; also in a call of the library inside a block
        kInBlock,   ///< nothing is allowed
        kAtQueue    ///< one event is added or taken out: trying the lock is allowed
    };
    enum Call { kAllocate, kFree, kTryLock, kLock, kWait };

    explicit AudioThreadGuard(Place place);
    ~AudioThreadGuard();
    AudioThreadGuard(const AudioThreadGuard&) = delete;
    AudioThreadGuard& operator=(const AudioThreadGuard&) = delete;

    /** Aborts, with a line on stderr, when the call is not allowed where the calling thread is.
        @param name the operation's name, for that line [any thread] */
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
