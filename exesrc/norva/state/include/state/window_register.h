#pragma once
// The register of the program's windows, from which a list of what is open could be shown. There is no such
// list yet: the calls have no effect. Every window calls norva_reg when it is made, so that the list can be
// added here without touching the windows.

namespace norva {

struct wi_obj;

void norva_regwin_init(); // at start, before the first window
// A window has been made. The label has at most 40 characters.
void norva_reg(wi_obj* window, const char* label);
void norva_reg_status(wi_obj* wo); // brings the list up to date, once there is one

} // namespace norva
