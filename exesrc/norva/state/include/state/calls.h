#pragma once
// What every module may ask of the application above it. The application fills in the record at start;
// until then, and in tests that do not care, the defaults below hold.

#include <string>

namespace norva {

struct app_calls {
    void (*popmsg)(const std::string& text);  // default: to standard error
    void (*rpt_progress)(int indx, int ntot); // default: nothing
    void (*filewin_cb)(int tag);              // the main window's dispatcher, called from inside the program
};
extern app_calls app_hooks;

// The one way errors reach the user: shows the text and returns at once.
void popmsg(const std::string& text);

// A computation of ntot parts has reached part indx, counted from 1.
void rpt_progress(int indx, int ntot);

} // namespace norva
