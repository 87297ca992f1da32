#pragma once
// Rounding to the nearest integer.

namespace norva {

// Halves go away from zero: 2.5 gives 3, -2.5 gives -3. Held to the range of int; not-a-number gives 0.
int bestint(double x);

} // namespace norva
