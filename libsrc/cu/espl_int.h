#pragma once
// What the sources of the evaluated spline share.

#include "cu/espl.h"

#include <cstdint>

namespace norva {

int espl_status(int status); // remembers the status of the last operation and returns it

// Brings the piece at t into hand. 1 or the status of the file layer.
int espl_load_memory(_espl& e, double t);
int espl_load_file(_espl& e, double t);

// Breakpoints i and i+1 (or i again, when it is the last) into hand.
void load_from_memory(_espl& e, int i);
// The same on file, from the elements i and i+1.
int load_from_file(_espl& e, std::int64_t i);

// espl_rehash of a spline on file.
int espl_rehash_file(_espl& e);

} // namespace norva
