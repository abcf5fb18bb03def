#include "tools/play/music/MidiFile.h"

#include "tools/common/Failure.h"
#include "tools/play/basics/FileBytes.h"
#include "tools/play/basics/Wording.h"

#include <cerrno>
#include <cstring>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

constexpr size_t kHeaderSize = 14;

using Bytes = std::vector<char>;

/** Takes libsmf's messages off the standard error stream and remembers whether there was one. */
class LibraryLog {
public:
    LibraryLog()
    : handler(g_log_set_handler("libsmf", static_cast<GLogLevelFlags>(~0), &LibraryLog::note, this))
    {
    }
    ~LibraryLog() { g_log_remove_handler("libsmf", handler); }
    LibraryLog(const LibraryLog&) = delete;
    LibraryLog& operator=(const LibraryLog&) = delete;

    bool complained() const { return hasComplained; }

private:
    static void note(const gchar*, GLogLevelFlags level, const gchar*, gpointer log)
    {
        if ((level & (G_LOG_LEVEL_ERROR | G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING)) != 0)
            static_cast<LibraryLog*>(log)->hasComplained = true;
    }

    guint handler;
    bool hasComplained = false;
};

void checkHeader(const std::string& path, const Bytes& bytes)
{
    if (bytes.empty())
        throw tools::Failure(inQuotes(path) + " is empty.");
    if (bytes.size() < kHeaderSize || std::memcmp(bytes.data(), "MThd", 4) != 0)
        throw tools::Failure(inQuotes(path) + " is not a MIDI file.");
    if ((bytes[12] & 0x80) != 0)
        throw tools::Failure(inQuotes(path) +
                             " counts time in film frames (SMPTE), which play does not.");
    if (bytes[8] == 0 && bytes[9] == 2)
        throw tools::Failure(inQuotes(path) +
                             " holds independent patterns (format 2), which play does not "
                             "play.");
}

smf_t* load(const Bytes& bytes)
{
    return smf_load_from_memory(bytes.data(), static_cast<int>(bytes.size()));
}

/** Whether libsmf survives the bytes. Its assertions end the process on some damaged files, so a
    child process tries first. */
bool loadsSafely(const Bytes& bytes)
{
    const auto child = fork();
    if (child < 0)
        throw tools::Failure(std::string("No process could be started: ") + std::strerror(errno) +
                             ".");
    if (child == 0) {
        const rlimit noCore{0, 0};
        setrlimit(RLIMIT_CORE, &noCore);
        close(STDERR_FILENO);
        alarm(20);
        const LibraryLog log;
        const MidiFile file(load(bytes));
        _exit(file && !log.complained() ? 0 : 1);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

MidiFile readMidiFile(const std::string& path)
{
    const auto bytes = readFileBytes(path, "a MIDI file");
    checkHeader(path, bytes);
    const LibraryLog log;
    MidiFile file(loadsSafely(bytes) ? load(bytes) : nullptr);
    if (!file || file->ppqn <= 0)
        throw tools::Failure(inQuotes(path) + " is a damaged MIDI file.");
    return file;
}

void writeMidiFile(smf_t& file, const std::string& path)
{
    const LibraryLog log;
    if (smf_save(&file, path.c_str()) != 0)
        throw tools::Failure("The MIDI file " + inQuotes(path) + " cannot be written.");
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
