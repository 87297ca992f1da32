#pragma once
// The one way to end the program from inside a computation.

namespace norva {

// Writes `text` and a newline to standard error and leaves the process at once with status 1, without running
// destructors, so that it behaves the same inside a callback or a worker thread. For faults of the calling
// code only: callers keep every size that a user can cause within the limits.
[[noreturn]] void stop(const char* text);

} // namespace norva
