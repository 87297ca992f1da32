// Walk over the files that match a mask.
#include "zuvsys/rddir.h"

#include "zuvsys/basicstr.h"
#include "zuvsys/cstrings.h"
#include "zuvsys/dirutil.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace norva {

namespace fs = std::filesystem;

namespace {

bool armed = false;
std::vector<std::string> found; // whole paths, the next one last

// Does a file name match? As in directory listings, where "a*" takes "a", too, and "*.*" every name; hence
// not c_iswild. Only the last "*" needs trying again.
bool matches(const char* mask, const char* name) {
    const char* star = nullptr;
    const char* retry = nullptr;
    while (*name) {
        if (*mask == '*') {
            star = ++mask;
            retry = name;
        } else if (*mask && (*mask == '?' || toupperx(static_cast<unsigned char>(*mask)) ==
                                                 toupperx(static_cast<unsigned char>(*name)))) {
            mask++;
            name++;
        } else if (star) {
            mask = star;
            name = ++retry;
        } else {
            return false;
        }
    }
    while (*mask == '*') mask++;
    return !*mask;
}

std::string stripped(std::string s) {
    c_ridedgews(s.data());
    return s.c_str();
}

std::vector<std::string> files_of(const std::string& filemask) {
    std::size_t split = zuvsys_dirlen(filemask);
    std::error_code error;
    std::string path = zuvsys_path(stripped(filemask.substr(0, split)));
    std::string mask = stripped(filemask.substr(split));
    if (path.empty()) path = fs::current_path(error).string() + "/";
    if (mask == "*.*") mask = "*";

    std::vector<std::string> names;
    fs::directory_iterator at(path, error), end;
    for (; !error && at != end; at.increment(error)) {
        std::string name = at->path().filename().string();
        bool hidden = name[0] == '.' && mask[0] != '.';
        if (!hidden && matches(mask.c_str(), name.c_str()) && zuvsys_is_file((path + name).c_str()))
            names.push_back(path + name);
    }
    std::sort(names.begin(), names.end(), std::greater<>());
    return names;
}

} // namespace

const char* rddir_init(const char* filemask) {
    armed = true;
    return filemask;
}

const char* rddir(const char* filemask) {
    static std::string name;
    if (armed) {
        found = filemask ? files_of(filemask) : std::vector<std::string>();
        armed = false;
    }
    if (found.empty()) return nullptr;
    name = found.back();
    found.pop_back();
    return name.c_str();
}

void rddir_free(const char* charptrhandle) {
    if (!charptrhandle) return;
    armed = false;
    found.clear();
}

} // namespace norva
