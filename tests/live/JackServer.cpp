#include "tests/live/JackServer.h"

#include "tests/live/Patience.h"
#include "tests/live/Spawn.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <sys/file.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace live {

namespace {

using namespace std::chrono_literals;

constexpr auto name = "vstk2x";

std::string textOf(const std::string& file)
{
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

} // namespace

JackServer::JackServer(int period, int ports)
{
    waitForTurn();
    setenv("JACK_DEFAULT_SERVER", name, 1);
    setenv("JACK_NO_START_SERVER", "1", 1);
    setenv("JACK_NO_AUDIO_RESERVATION", "1", 1);
    // Several tries, because a former server of this name may still be ending.
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!starts(period, ports))
        if (std::chrono::steady_clock::now() > end)
            throw std::runtime_error("JACK's server does not start: " + textOf(log));
}

// Only one server at a time in all programs of this machine: JACK finds a client by its name alone,
// so one server would use another server's client of the same name. JACK also has only eight places
// for servers, and keeps that of a server that crashed until one of the same name is started.
void JackServer::waitForTurn()
{
    const auto file = (std::filesystem::temp_directory_path() / "vstk2x-jack.lock").string();
    log = file + ".log";
    lock = open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (!waitFor([this] { return flock(lock, LOCK_EX | LOCK_NB) == 0; }, turnPatience))
        throw std::runtime_error("another program's JACK server does not end: " + file);
}

bool JackServer::starts(int period, int ports)
{
    // --sync: the server waits for its clients, so that it drops nothing on a loaded machine.
    // setpriv: it ends when this program ends, even by a signal.
    process = spawn({"setpriv", "--pdeathsig", "KILL", "jackd", "--no-realtime", "--sync",
                     "--port-max", std::to_string(ports), "--name", name, "-d", "dummy", "--rate",
                     "48000", "--period", std::to_string(period)},
                    log);
    while (!answers()) {
        if (waitpid(process, nullptr, WNOHANG) == process) {
            process = 0;
            std::this_thread::sleep_for(50ms);
            return false;
        }
        std::this_thread::sleep_for(20ms);
    }
    return true;
}

JackServer::~JackServer()
{
    if (process != 0)
        jack_client_close(client);
    stop(SIGTERM);
    std::error_code error;
    std::filesystem::remove(log, error);
    close(lock);
}

std::string JackServer::messages() const
{
    return textOf(log);
}

void JackServer::kill()
{
    stop(SIGKILL);
}

void JackServer::stop(int signal)
{
    if (process == 0)
        return;
    ::kill(process, signal);
    const auto end = std::chrono::steady_clock::now() + patience;
    while (waitpid(process, nullptr, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > end)
            ::kill(process, SIGKILL);
        std::this_thread::sleep_for(5ms);
    }
    process = 0;
}

bool JackServer::answers()
{
    jack_set_error_function([](const char*) {}); // JACK prints an error until the server is there
    client = jack_client_open("ask", JackNoStartServer, nullptr);
    jack_set_error_function(nullptr);
    return client != nullptr;
}

} // namespace live
