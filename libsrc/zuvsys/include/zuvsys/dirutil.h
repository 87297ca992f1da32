#pragma once
// Directory tests, the home directory, and the splitting of paths. Both "/" and "\" separate when a path is
// split; "/" is written when one is built.

#include <string>

namespace norva {

// The home directory from the environment name "HOME", ending in a separator; empty when not set. Looked up
// once. A value of more than 59 characters ends the process with status 1.
const char* zuvsys_homedir();

int zuvsys_is_file(const char* path);      // 1 for a regular file (links are followed), else 0
int zuvsys_is_directory(const char* path); // 1 or 0
int zuvsys_mkdir(const char* path);        // makes one directory; 0, or -1 on failure

// Length of the directory part of a path, its last separator included; 0 when it has none.
std::size_t zuvsys_dirlen(const std::string& path);
// The path with "/" for every separator.
std::string zuvsys_path(std::string path);

} // namespace norva
