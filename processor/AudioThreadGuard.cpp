#include "processor/AudioThreadGuard.h"

#ifdef VSTK2X_AUDIO_GUARD

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace Steinberg {
namespace Vst {

namespace {

/** The initial-exec model, because the others may allocate the variable at its first use, which can
    be on the audio thread. */
__attribute__((tls_model("initial-exec"))) thread_local AudioThreadGuard::Place current =
    AudioThreadGuard::kElsewhere;

bool isAllowed(AudioThreadGuard::Place place, AudioThreadGuard::Call call)
{
    if (place == AudioThreadGuard::kElsewhere)
        return true;
    return place == AudioThreadGuard::kAtQueue && call == AudioThreadGuard::kTryLock;
}

} // namespace

AudioThreadGuard::AudioThreadGuard(Place place)
: outer(std::exchange(current, place))
{
}

AudioThreadGuard::~AudioThreadGuard()
{
    current = outer;
}

void AudioThreadGuard::check(Call call, const char* name)
{
    if (isAllowed(current, call))
        return;
    current = kElsewhere; // fprintf may allocate
    std::fprintf(stderr, "%s on the audio thread, inside process\n", name);
    std::abort();
}

} // namespace Vst
} // namespace Steinberg

#endif
