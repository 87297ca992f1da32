#pragma once
// What every module may ask of the application above it. The application fills in the record at start;
// until then, and in tests that do not care, the defaults below hold.

#include <string>

namespace norva {

struct app_calls {
    void (*popmsg)(const std::string& text);  // default: to standard error
    void (*rpt_progress)(int indx, int ntot); // default: nothing
    void (*computing)(bool on);               // a computation begins or has ended; default: nothing
};
extern app_calls app_hooks;

// The one way errors reach the user: shows the text and returns at once.
void popmsg(const std::string& text);

// A computation of ntot parts has reached part indx, counted from 1.
void rpt_progress(int indx, int ntot);

// Stands in a handler around anything that may take long: while it lives the platform holds back sizes and
// paint notices, and a progress window that is up goes away at its end. Scopes nest.
class computation {
public:
    computation() { app_hooks.computing(true); }
    ~computation() { app_hooks.computing(false); }
    computation(const computation&) = delete;
    computation& operator=(const computation&) = delete;
};

} // namespace norva
