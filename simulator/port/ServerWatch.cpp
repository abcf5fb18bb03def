#include "simulator/port/ServerWatch.h"

#ifdef SIMULATOR_HAS_JACK
#include <chrono>
#include <jack/jack.h>
#include <thread>
#endif

namespace Steinberg {
namespace Vst {
namespace simulator {

#ifdef SIMULATOR_HAS_JACK

ServerWatch::~ServerWatch()
{
    if (client && !gone)
        jack_client_close(static_cast<jack_client_t*>(client));
}

bool ServerWatch::open()
{
    auto* opened = jack_client_open("midi-watch", JackNoStartServer, nullptr);
    if (!opened)
        return false;
    client = opened;
    jack_on_shutdown(
        opened, [](void* watch) { static_cast<ServerWatch*>(watch)->gone = true; }, this);
    jack_set_process_callback(
        opened,
        [](jack_nframes_t, void* watch) {
            ++static_cast<ServerWatch*>(watch)->periods;
            return 0;
        },
        this);
    return jack_activate(opened) == 0;
}

// Waits for the end of the current period and two whole periods after it.
void ServerWatch::settle() const
{
    constexpr unsigned enough = 3;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(1);
    for (const unsigned begin = periods; client && !gone && periods - begin < enough;) {
        if (std::chrono::steady_clock::now() > end)
            return;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

#else

ServerWatch::~ServerWatch() = default;

void ServerWatch::settle() const {}

bool ServerWatch::open()
{
    return false;
}

#endif

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
