#pragma once
// Removal of the jumps of a quantity that is known only within a period, such as a phase.

namespace norva {

// Unwraps x(1..|n|) in place, period c: where a sample differs from the one before by more than c/2, it and
// all after it move by c towards it. n > 0 walks from the first sample to the last, n < 0 from the last to
// the first; |n| <= 1 does nothing. The sample where the walk begins is compared with 0, and may itself move.
void unwrap(float* x, int n, float c);

} // namespace norva
