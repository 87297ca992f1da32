#pragma once
// What the sources of the gate type share.

#include "fileio/gat.h"

#include <cstdint>

namespace norva {

int gat_status(int status);                    // remembers the last status of the gate layer and returns it
std::int64_t gat_samplesize(int dattype);      // bytes of one value (half a sample)
std::int64_t gat_rangesize(const _gatheader&); // bytes ahead of the samples

// Whether a header can be that of this file: version, sizes and prf fit. 1 or a status.
int gat_check(const _gatfile& p, const _gatheader& head);

} // namespace norva
