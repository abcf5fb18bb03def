// JackServer: a JACK server without hardware, for a test program and those that it starts.
#pragma once

#include <jack/jack.h>
#include <string>
#include <sys/types.h>

namespace live {

/** Runs a server until it is destroyed; only one at a time on this machine. This program and those
    that it starts find the server by environment variables. The constructor throws when the server
    does not start; scripts/setup installs it. */
class JackServer {
public:
    /** @param period in samples at 48 kHz @param ports the largest number of ports */
    explicit JackServer(int period = 256, int ports = 128);
    ~JackServer();
    JackServer(const JackServer&) = delete;
    JackServer& operator=(const JackServer&) = delete;

    /** What the server wrote on its console. */
    std::string messages() const;

    /** Ends the server as a crash would. */
    void kill();

private:
    void waitForTurn();
    bool starts(int period, int ports);
    bool answers();
    void stop(int signal);

    int lock = -1;
    pid_t process = 0;
    jack_client_t* client = nullptr; ///< a client of this object, while the server runs
    std::string log;
};

} // namespace live
