// Spawn: starts a program whose output goes to a file.
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace live {

/** In which process group a program starts: Ctrl-C in a terminal reaches all of a group. */
enum class Group { callers, own };

/** @param words the program, looked for as a shell does, and its arguments
    @param output file that gets standard output and standard error, made anew
    @return the process, for the caller to wait for
    Throws std::runtime_error when it does not start. */
pid_t spawn(std::vector<std::string> words, const std::string& output,
            Group group = Group::callers);

} // namespace live
