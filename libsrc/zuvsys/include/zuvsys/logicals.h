#pragma once
// Lookups in the environment, through which every setting supplied by it passes.

namespace norva {

// Value of the environment variable lognam, or of "tabnam_lognam" when a tabnam is given; empty when not set
// or when lognam is empty. The text lies in a static buffer that the next call overwrites.
const char* get_logical(const char* lognam, const char* tabnam = nullptr);

// The same on fixed-length fields: logn has loglen characters, taken as they stand. equn is filled to equlen
// characters, padded with blanks, the last of them a zero byte. A name not set gives all blanks.
void transl(const char* logn, char* equn, int loglen, int equlen);

} // namespace norva
