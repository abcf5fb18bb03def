// JackServer: a JACK server without hardware, for one program and whom it starts.
#pragma once

#include <jack/jack.h>
#include <string>
#include <sys/types.h>

namespace live {

/** Runs as long as it lives, one at a time on this machine. Programs of this one find it by its
   environment. A server that does not start is an exception, and so a test that fails:
   scripts/setup installs it. */
class JackServer {
public:
    /** @param period samples at 48 kHz @param ports how many there can be at most */
    explicit JackServer(int period = 256, int ports = 128);
    ~JackServer();
    JackServer(const JackServer&) = delete;
    JackServer& operator=(const JackServer&) = delete;

    /** What the server wrote on its console. */
    std::string messages() const;

    /** The server dies, as when it crashes. */
    void kill();

private:
    void waitForTurn();
    bool starts(int period, int ports);
    bool answers();
    void stop(int signal);

    int lock = -1;
    pid_t process = 0;
    jack_client_t* client = nullptr; ///< our own, while the server runs
    std::string log;
};

} // namespace live
