// ServerWatch: tells when JACK's server is gone and how many periods it has run, which RtMidi
// does not.
#pragma once

#include <atomic>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** A JACK client that only counts periods and notices the server's end. In a build without JACK
    open always fails. */
class ServerWatch {
public:
    ServerWatch() = default;
    ~ServerWatch();
    ServerWatch(const ServerWatch&) = delete;
    ServerWatch& operator=(const ServerWatch&) = delete;

    /** @return whether a server runs */
    bool open();
    bool isGone() const { return gone; }
    /** Waits until the server has made the connections and played the messages that came before
        this call. At most one second; not at all without a server. */
    void settle() const;

private:
    void* client = nullptr;
    std::atomic<bool> gone{false};
    std::atomic<unsigned> periods{0}; ///< how many the server has run
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
