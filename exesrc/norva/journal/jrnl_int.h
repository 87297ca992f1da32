#pragma once
// Shared by the files of this folder.

#include <string>

namespace norva {

// The bytes replace the crash file. Says nothing on failure.
bool write_crash_file(const std::string& bytes);

// name;1, name;2, ... up to 512: the first that does not exist. Empty when all do.
std::string first_free_version(const std::string& name);

} // namespace norva
