#include "tests/live/JackPeer.h"

#include <chrono>
#include <jack/midiport.h>
#include <stdexcept>
#include <thread>

namespace live {

namespace {
constexpr size_t kQueueBytes = size_t{1} << 20U;
}

JackPeer::JackPeer(const std::string& name)
: client(jack_client_open(name.c_str(), JackNoStartServer, nullptr))
{
    if (!client)
        throw std::runtime_error("no JACK server");
    in = jack_port_register(client, "in", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
    out = jack_port_register(client, "out", JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    outgoing = jack_ringbuffer_create(kQueueBytes);
    jack_set_process_callback(client, &JackPeer::process, this);
    if (!in || !out || jack_activate(client) != 0)
        throw std::runtime_error("JACK's server takes no more clients");
}

JackPeer::~JackPeer()
{
    jack_client_close(client);
    jack_ringbuffer_free(outgoing);
}

void JackPeer::send(const std::vector<std::vector<uint8_t>>& newMessages)
{
    for (const auto& message : newMessages) {
        while (jack_ringbuffer_write_space(outgoing) < message.size() + 1)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        std::vector<char> bytes{static_cast<char>(message.size())};
        bytes.insert(bytes.end(), message.begin(), message.end());
        jack_ringbuffer_write(outgoing, bytes.data(), bytes.size());
    }
}

std::vector<JackPeer::Message> JackPeer::received()
{
    const std::lock_guard<std::mutex> guard(mutex);
    return messages;
}

void JackPeer::clear()
{
    const std::lock_guard<std::mutex> guard(mutex);
    messages.clear();
    count = 0;
}

bool JackPeer::connect(const std::string& gives, const std::string& takes)
{
    return jack_connect(client, gives.c_str(), takes.c_str()) == 0;
}

std::vector<std::string> JackPeer::ports(const std::string& pattern)
{
    std::vector<std::string> names;
    const char** found = jack_get_ports(client, pattern.c_str(), nullptr, 0);
    for (const char** name = found; name && *name; ++name)
        names.emplace_back(*name);
    jack_free(found);
    return names;
}

int JackPeer::process(jack_nframes_t frames, void* peer)
{
    static_cast<JackPeer*>(peer)->take(frames);
    static_cast<JackPeer*>(peer)->give(frames);
    return 0;
}

// It may allocate here: nobody listens to this server's audio.
void JackPeer::take(jack_nframes_t frames)
{
    const auto now = std::chrono::duration_cast<std::chrono::microseconds>(
                         std::chrono::steady_clock::now().time_since_epoch())
                         .count();
    void* buffer = jack_port_get_buffer(in, frames);
    const auto events = jack_midi_get_event_count(buffer);
    if (events == 0)
        return;
    const std::lock_guard<std::mutex> guard(mutex);
    for (uint32_t index = 0; index < events; ++index) {
        jack_midi_event_t event;
        if (jack_midi_event_get(&event, buffer, index) == 0)
            messages.push_back({{event.buffer, event.buffer + event.size}, now});
    }
    count = messages.size();
}

void JackPeer::give(jack_nframes_t frames)
{
    void* buffer = jack_port_get_buffer(out, frames);
    jack_midi_clear_buffer(buffer);
    char length = 0;
    while (jack_ringbuffer_peek(outgoing, &length, 1) == 1) {
        const auto size = static_cast<size_t>(static_cast<unsigned char>(length));
        if (jack_ringbuffer_read_space(outgoing) < size + 1 ||
            jack_midi_max_event_size(buffer) < size)
            return;
        auto* event = jack_midi_event_reserve(buffer, 0, size);
        if (!event)
            return;
        jack_ringbuffer_read_advance(outgoing, 1);
        jack_ringbuffer_read(outgoing, reinterpret_cast<char*>(event), size);
    }
}

} // namespace live
