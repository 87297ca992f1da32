#pragma once
// The message window and the progress window. Both are reached by every module through state/calls.h.

#include <string>

namespace norva {

struct wi_obj;

void msgwin_init();                        // builds the message window, hidden
void msgwin_cb(wi_obj* wo, int tag);       // "ACKNOWLEDGE": hides it
void msgwin_show(const std::string& text); // shows a message and returns at once

// The line grows to indx/ntot; the window comes up when a computation has run for a while, so that short ones
// do not flicker. Nothing below 3 parts.
void progress_init(); // builds the progress window, hidden
void progress_show(int indx, int ntot);
void rpt_progress2(int indx, int ntot); // the same for a second loop

// A computation begins or ends (nesting): the platform holds back sizes and paint notices meanwhile.
void progress_scope(bool on);

} // namespace norva
