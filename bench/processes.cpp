#include "processes.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <array>

#include "comparison.h"

std::string run_program(const std::vector<std::string>& words) {
    int ends[2];
    require(pipe2(ends, O_CLOEXEC) == 0, "no pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    std::vector<char*> arguments;
    for (const std::string& word : words) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    pid_t process = 0;
    const int failure =
        posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    require(failure == 0, "a program cannot be started");
    std::string printed;
    std::array<char, 256> piece;
    for (ssize_t count = 1; count > 0;) {
        count = read(ends[0], piece.data(), piece.size());
        printed.append(piece.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    close(ends[0]);
    int status = 0;
    require(waitpid(process, &status, 0) == process && status == 0, "a program failed");
    return printed;
}
