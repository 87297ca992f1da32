#pragma once
// The folder of the running program, and other programs run to their end.

#include <string>
#include <vector>

namespace norva {

std::string zuvsys_program_folder(); // without a separator at its end; empty when it cannot be told

// Runs words[0] with the other words as arguments, not through a shell, and waits for its end. Returns its
// exit status, or -1 when it could not be started or was killed.
int zuvsys_run_program(const std::vector<std::string>& words);

} // namespace norva
