// JackPeer: somebody at the other end of a MIDI port, who records what comes and sends what a test
// says.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <jack/jack.h>
#include <jack/ringbuffer.h>
#include <mutex>
#include <string>
#include <vector>

namespace live {

/** A client of JACK's with one MIDI port to take and one to give: NAME:in, NAME:out. */
class JackPeer {
public:
    struct Message {
        std::vector<uint8_t> bytes;
        /** When JACK showed it to this client, in microseconds of the steady clock. */
        int64_t time;
    };

    /** @throws std::runtime_error without a server */
    explicit JackPeer(const std::string& name);
    ~JackPeer();
    JackPeer(const JackPeer&) = delete;
    JackPeer& operator=(const JackPeer&) = delete;

    /** Sends messages, all in the periods that come. */
    void send(const std::vector<std::vector<uint8_t>>& messages);

    /** All that came so far, oldest first. */
    std::vector<Message> received();
    size_t receivedCount() const { return count; }
    void clear();

    /** Connects what gives to what takes, by whole names of ports. @return whether that is news and
     * done */
    bool connect(const std::string& gives, const std::string& takes);

    /** Names of ports that the pattern, a regular expression, describes. */
    std::vector<std::string> ports(const std::string& pattern);

private:
    static int process(jack_nframes_t frames, void* peer);
    void take(jack_nframes_t frames);
    void give(jack_nframes_t frames);

    jack_client_t* client;
    jack_port_t* in;
    jack_port_t* out;
    jack_ringbuffer_t* outgoing; ///< a length byte and the bytes of each message
    std::mutex mutex;
    std::vector<Message> messages;
    std::atomic<size_t> count{0};
};

} // namespace live
