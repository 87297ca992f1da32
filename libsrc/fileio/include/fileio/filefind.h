#pragma once
// Time search in a file whose element times rise.

#include "fileio/zuvfile.h"

#include <cstdint>

namespace norva {

// Yields the time of an element; 1 or a status.
using pultime = int (*)(_zuvfile* file, std::int64_t element, double& time);

// The first element between n0 and n1 whose time is at or past tme, found by interpolation; n1 + 1 when tme
// lies past the last of them. Returns 1, the first status other than 1 that `pultme` gave, or -1 when the
// times do not rise.
int filefind(_zuvfile* file, double tme, std::int64_t& iplace, std::int64_t n0, std::int64_t n1,
             pultime pultme);

} // namespace norva
