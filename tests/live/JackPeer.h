// JackPeer: the other end of a MIDI port: it records what arrives and sends what a test asks for.
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

/** A JACK client with a MIDI input and a MIDI output: NAME:in, NAME:out. */
class JackPeer {
public:
    struct Message {
        std::vector<uint8_t> bytes;
        /** When this client got it, in microseconds of the steady clock. */
        int64_t time;
    };

    /** @throws std::runtime_error without a server */
    explicit JackPeer(const std::string& name);
    ~JackPeer();
    JackPeer(const JackPeer&) = delete;
    JackPeer& operator=(const JackPeer&) = delete;

    /** Sends messages in the next periods. */
    void send(const std::vector<std::vector<uint8_t>>& messages);

    /** All messages that arrived so far, oldest first. */
    std::vector<Message> received();
    size_t receivedCount() const { return count; }
    void clear();

    /** Connects two ports by their full names.
        @return false when it fails or they are connected already */
    bool connect(const std::string& gives, const std::string& takes);

    /** Names of the ports that match the pattern, a regular expression. */
    std::vector<std::string> ports(const std::string& pattern);

private:
    static int process(jack_nframes_t frames, void* peer);
    void take(jack_nframes_t frames);
    void give(jack_nframes_t frames);

    jack_client_t* client;
    jack_port_t* in;
    jack_port_t* out;
    jack_ringbuffer_t* outgoing; ///< of each message its length in a byte, then its bytes
    std::mutex mutex;
    std::vector<Message> messages;
    std::atomic<size_t> count{0};
};

} // namespace live
