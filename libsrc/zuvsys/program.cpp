// The running program and other programs.
#include "zuvsys/program.h"

#include <cerrno>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace norva {

std::string zuvsys_program_folder() {
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path().string();
}

int zuvsys_run_program(const std::vector<std::string>& words) {
    std::vector<std::string> copies = words; // argv is not const
    std::vector<char*> argv;
    for (std::string& word : copies) argv.push_back(word.data());
    argv.push_back(nullptr);
    pid_t child = 0;
    if (words.empty() || posix_spawn(&child, argv[0], nullptr, nullptr, argv.data(), environ) != 0) return -1;
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace norva
