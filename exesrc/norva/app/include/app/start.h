#pragma once
// Start-up of the application: the words of the command line, the environment file, the main window.

#include <string>

namespace norva {

// Words beyond the toolkit's own, read before any window system is touched.
struct start_options {
    std::string answer;      // text to print instead of starting: help, version
    std::string fault;       // what is wrong with the words; the program ends with status 2
    std::string replay, out; // journal to replay without a display, and the folder for what it writes
    std::string open;        // raw file or journal to open at start
};
start_options parse_options(int argc, const char* const* argv);

// Builds the program's windows; returns when they stand, and the toolkit's loop goes on from there.
void norva_main(int argc, char** argv);

// What norva_main does beyond that: opens this file, or replays a journal.
void norva_start_with(const start_options& options);

} // namespace norva
