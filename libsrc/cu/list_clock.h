#pragma once
// The times of a series whose header has no room for them: t0 and prf as items "t0" and "prf" of the keyword
// list, doubles or ints.

#include "fileio/zuvfile.h"

#include <string_view>

namespace norva {

struct list_clock {
    double t0 = 0.0; // seconds
    double prf = 1.0;
};

// What the list says; 0 and 1 where it does not, or says a prf that is not above 0.
list_clock read_list_clock(_zuvfile& file);

// Index in the list of the number of that name, -1 when there is none.
int list_number_index(const _zuvfile& file, std::string_view name);

} // namespace norva
