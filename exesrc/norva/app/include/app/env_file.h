#pragma once
// The environment file "norva.env": lines NAME=VALUE that join the process environment at start.

#include <istream>
#include <string>
#include <vector>

namespace norva {

// The lines to keep, at most 20. A line of more than 79 characters continues in the next slot; a slot that
// starts with "#" is dropped and does not count; trailing blanks and tabs go, but never the first character.
std::vector<std::string> read_env_lines(std::istream& in);

// Reads the file from the first place that has it: the current folder, the user's configuration folder, the
// folder installed with the program (`installed`, may be empty). False when there is none.
bool norva_env(const std::string& installed);

} // namespace norva
