#include "tools/play/output/AudioRenderer.h"

#include "tools/common/Failure.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

// No header of a Mac's declares it.
extern char** environ; // NOLINT(readability-redundant-declaration)

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

constexpr size_t kSoundFontHeader = 12;

/** /dev/null in place of a program's standard streams. */
class SilentStreams {
public:
    SilentStreams()
    {
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
    ~SilentStreams() { posix_spawn_file_actions_destroy(&actions); }
    SilentStreams(const SilentStreams&) = delete;
    SilentStreams& operator=(const SilentStreams&) = delete;

    const posix_spawn_file_actions_t* get() const { return &actions; }

private:
    posix_spawn_file_actions_t actions{};
};

void checkSoundFont(const std::string& path)
{
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        throw tools::Failure("There is no soundfont \"" + path +
                             "\"; Debian's package timgm6mb-soundfont brings one.");
    char header[kSoundFontHeader] = {};
    std::ifstream(path, std::ios::binary).read(header, sizeof(header));
    if (std::memcmp(header, "RIFF", 4) != 0 || std::memcmp(header + 8, "sfbk", 4) != 0)
        throw tools::Failure("\"" + path + "\" is not a soundfont.");
}

} // namespace

AudioRenderer::AudioRenderer(std::string soundFontFile, std::string programName)
: soundFont(std::move(soundFontFile))
, program(std::move(programName))
{
    checkSoundFont(soundFont);
}

WavMeasures AudioRenderer::render(const std::string& midiFile, const std::string& wavFile,
                                  int sampleRate)
{
    std::error_code error;
    std::filesystem::remove(wavFile, error); // so that an old file is never taken for the new one
    run(midiFile, wavFile, sampleRate);
    if (!std::filesystem::exists(wavFile, error))
        throw tools::Failure("The program " + program + " left no audio file \"" + wavFile + "\".");
    const auto measures = measureWavFile(wavFile);
    if (measures.isSilent())
        throw tools::Failure("The audio file \"" + wavFile + "\" is silent.");
    return measures;
}

void AudioRenderer::run(const std::string& midiFile, const std::string& wavFile,
                        int sampleRate) const
{
    std::vector<std::string> words = {program, "-n",    "-i",      "-q",
                                      "-T",    "wav",   "-O",      "s16",
                                      "-g",    "0.3",   "-r",      std::to_string(sampleRate),
                                      "-F",    wavFile, soundFont, midiFile};
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (auto& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    const SilentStreams streams;
    pid_t child = 0;
    const auto result =
        posix_spawnp(&child, program.c_str(), streams.get(), nullptr, arguments.data(), environ);
    if (result == ENOENT)
        throw tools::Failure(
            "The program " + program +
            ", which renders the audio, is not installed (Debian package fluidsynth).");
    if (result != 0)
        throw tools::Failure("The program " + program +
                             " cannot be started: " + std::strerror(result) + ".");
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw tools::Failure("The program " + program + " could not render \"" + wavFile + "\".");
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
