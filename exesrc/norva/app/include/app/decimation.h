#pragma once
// Decimation: fewer frequencies and records over the same span.

namespace norva {

struct wi_obj;

constexpr int DECIMATION_MOST_RECORDS = 8192;     // columns of the two-dimensional transform
constexpr int DECIMATION_MOST_FREQUENCIES = 1024; // of any analysis; the main window refuses more

// 0 decimates by the factors in the main window's two fields; 1 and 2 step the field that fired up and down.
void dec_cb(wi_obj* wo, int tag);

// The sizes that factors kf and kt give: made of the prime factors 2, 3 and 5, and where that would be more
// than there is, from as many fewer samples as it takes. A single frequency or record stays single.
struct decimated_size {
    int nf, nt; // of the data to decimate: the window, or cut at its end
    int mf, mt; // after it
};
decimated_size decimate_to(int nf, int nt, int kf, int kt);

// Decimates the window in memory to mf by mt samples, and makes the window's steps follow.
void apply_decimation(int mf, int mt);

} // namespace norva
