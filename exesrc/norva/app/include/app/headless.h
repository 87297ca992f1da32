#pragma once
// The replay of a journal without a display: through the same handlers as on the screen, with a picture and a
// hardcopy of every step that shows a window.

#include <string>

namespace norva {

// Queues the replay; it runs from the loop and leaves the program with status 0, or 1 when the journal could
// not be replayed in full (what was written by then stands). Messages go to standard error.
void replay_headless(const std::string& journal_file, const std::string& out_folder);

} // namespace norva
