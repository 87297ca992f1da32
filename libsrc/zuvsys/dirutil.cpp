// Directory tests, the home directory, the splitting of paths.
#include "zuvsys/dirutil.h"

#include "zuvsys/logicals.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sys/stat.h>

namespace norva {

namespace {

// Type bits of what a path leads to, 0 when it cannot be examined.
mode_t kind_of(const char* path) {
    struct stat status {};
    return path && stat(path, &status) == 0 ? status.st_mode & S_IFMT : 0;
}

std::string find_home() {
    const char* value = get_logical("HOME");
    std::string home = value ? value : "";
    if (home.size() > 59) {
        std::perror("Problem in homedir(), in zuvsys library...");
        std::fflush(nullptr);
        std::_Exit(1);
    }
    if (!home.empty() && zuvsys_dirlen(home) != home.size()) home += '/';
    return home;
}

} // namespace

const char* zuvsys_homedir() {
    static const std::string home = find_home();
    return home.c_str();
}

int zuvsys_is_file(const char* path) {
    return kind_of(path) == S_IFREG;
}

int zuvsys_is_directory(const char* path) {
    return kind_of(path) == S_IFDIR;
}

int zuvsys_mkdir(const char* path) {
    return path ? mkdir(path, 0777) : -1;
}

std::size_t zuvsys_dirlen(const std::string& path) {
    std::size_t last = path.find_last_of("/\\");
    return last == std::string::npos ? 0 : last + 1;
}

std::string zuvsys_path(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

} // namespace norva
