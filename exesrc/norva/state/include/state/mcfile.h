#pragma once
// The corrections that have been applied to the raw data, in order. Replaying them over freshly read data
// gives the same samples again, so this list, not the data, is what the journal keeps.

#include "zuvsys/jbuf.h"

#include <array>

namespace norva {

constexpr int MC_MAX_REC = 64;              // slots of the list
constexpr int MC_LAST_PTR = MC_MAX_REC - 1; // a correction is refused when ptr stands here

// Kinds of record.
constexpr int MC_DELAY = 0;    // t: nt + 1 delays in microseconds
constexpr int MC_DECIMATE = 1; // t: the new nf and nt
constexpr int MC_TRACK = 2;    // as MC_DELAY, from track data

struct mcfile {
    int ptr = 0;   // records in force; the next one is stored at this index. Set by correctors, the journal
    int nrecs = 0; // records held; ptr is lower after the journal position went back
    std::array<int, MC_MAX_REC> flag{};
    std::array<int, MC_MAX_REC> nf{}, nt{};   // user.nf, user.nt when the record was made
    std::array<int, MC_MAX_REC> nf0{}, nt0{}; // user.nf0, user.nt0 likewise
    std::array<jbuf<double>, MC_MAX_REC> t;

    // Doubles that record i holds, by its kind.
    int values(int i) const { return flag[i] == MC_DECIMATE ? 2 : nt[i] + 1; }
};

} // namespace norva
