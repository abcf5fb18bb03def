// Spawn: starts a program whose output goes to a file.
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace live {

/** The process group of a program: a terminal's Ctrl-C goes to all programs of a group. */
enum class Group { callers, own };

/** @param words the program, which is looked for in PATH, and its arguments
    @param output a file for standard output and standard error; an existing one is replaced
    @return the process, for which the caller must wait
    Throws std::runtime_error when it does not start. */
pid_t spawn(std::vector<std::string> words, const std::string& output,
            Group group = Group::callers);

} // namespace live
