#include "tests/live/Spawn.h"

#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <unistd.h>

namespace live {

pid_t spawn(std::vector<std::string> words, const std::string& output, Group group)
{
    std::vector<char*> arguments;
    for (auto& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    if (group == Group::own)
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    pid_t child = 0;
    const int result =
        posix_spawnp(&child, arguments[0], &actions, &attributes, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    if (result != 0)
        throw std::runtime_error(words[0] + " does not start: scripts/setup test installs it");
    return child;
}

} // namespace live
