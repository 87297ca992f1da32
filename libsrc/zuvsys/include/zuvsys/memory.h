#pragma once
// Whether a large block can be had, for those who can tell the user instead of ending the program.

namespace norva {

// A block of so many bytes, in 8 of 10 parts of the machine's memory at most, would be given now.
bool enough_memory(double bytes);

} // namespace norva
