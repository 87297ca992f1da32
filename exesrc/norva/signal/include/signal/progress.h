#pragma once
// What the numeric kernels ask of the program around them. The application fills in the record at start;
// until then, and in tests that do not care, nothing happens.

namespace norva {

struct signal_calls {
    // Part indx of ntot, counted from 1, has been reached. Called from the thread that called the kernel.
    void (*progress)(int indx, int ntot);
};
extern signal_calls signal_hooks;

} // namespace norva
