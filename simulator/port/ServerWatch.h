// ServerWatch: what RtMidi does not tell of JACK's server: when it has gone, and how far it is.
#pragma once

#include <atomic>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** A client of JACK's that only counts periods and listens for the server's end. Where the build
   has no JACK it opens never. */
class ServerWatch {
public:
    ServerWatch() = default;
    ~ServerWatch();
    ServerWatch(const ServerWatch&) = delete;
    ServerWatch& operator=(const ServerWatch&) = delete;

    /** @return whether a server runs */
    bool open();
    bool isGone() const { return gone; }
    /** Waits until what was connected or sent before has gone through the server and all its
       clients; at once without a server, and a second at most. */
    void settle() const;

private:
    void* client = nullptr;
    std::atomic<bool> gone{false};
    std::atomic<unsigned> periods{0}; ///< that the server has run
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
