#pragma once
// Walk over the files that match a mask, as "/usr/styles/PLOT_P_*.trv". One walk at a time.
//
//   rddir_init(mask);
//   while (const char* name = rddir(mask)) use(name);

namespace norva {

// Arms a new walk; returns filemask.
const char* rddir_init(const char* filemask);
// The next file: the mask's directory (the current one when it names none) with the file's name; empty when
// nothing is left. Names match "*" (any run, also an empty one) and "?" (one character) without regard to
// case and come in alphabetical order. Directories are left out, and names with a leading dot unless the mask
// has it. The text lies in a static buffer that the next call overwrites.
const char* rddir(const char* filemask);
// Ends the walk early. The handle is the byte pointed to; there is one walk, so its value does not matter.
void rddir_free(const char* charptrhandle);

} // namespace norva
