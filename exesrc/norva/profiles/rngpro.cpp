// Range profiles.
#include "profiles/rngpro.h"

#include "signal/aligned_buffer.h"
#include "signal/fft.h"
#include "signal/parallel.h"
#include "signal/progress.h"
#include "signal/stream.h"
#include "signal/vector.h"
#include "signal/weight.h"
#include "zuvsys/stop.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace norva {
namespace {

constexpr int records_of_a_chunk = 16;

// What multiplies the interleaved samples of a record. With an even number of gates the sign of every other
// weight is turned: that exchanges the halves of the transform.
std::vector<float> record_weights(int nf, bool turn) {
    std::vector<float> w(nf), both(2 * static_cast<std::size_t>(nf));
    ham(w.data(), nf);
    for (int k = 0; k < nf; k++) both[2 * k] = both[2 * k + 1] = turn && k % 2 == 1 ? -w[k] : w[k];
    return both;
}

} // namespace

void rngpro(const float* a, int nf, int nt, int nr, int is, float* r1, float* dr, float* b, float* p) {
    if (nr > RNGPRO_MAX_NR) stop("STOP #2 IN RNGPRO");
    if (nf > RNGPRO_MAX_NF) stop("STOP #3 IN RNGPRO");
    *dr = static_cast<float>(nf) / static_cast<float>(nr);
    const bool even = nr % 2 == 0;
    *r1 = even ? static_cast<float>(-nf * 0.5) : static_cast<float>(-(nr / 2) * (nf / (nr * 1.0)));
    if (nf < 1 || nr < 1) return;

    const std::vector<float> w = record_weights(nf, even);
    const int used = std::min(nf, nr);
    const std::size_t words = 2 * static_cast<std::size_t>(nr);
    const bool streamed = words * std::max(nt, 0) >= STREAM_FROM;
    // An odd number of gates is turned on the way out: the last samples come first.
    const std::size_t ahead = even ? 0 : nr / 2, behind = nr - ahead;
    auto some_records = [&](int first, int last) {
        static thread_local aligned_buffer buffer;
        float *work = buffer.make_room(2 * words), *profile = work + words;
        std::fill(work, work + words, 0.0F);
        for (int j = first; j < last; j++) {
            const float* record = a + 2 * static_cast<std::size_t>(j) * nf;
            prod(2 * used, w.data(), record, work);
            if (j + 1 < last) fetch_ahead(2 * used, record + 2 * static_cast<std::size_t>(nf));
            gfft_padded(work, used, profile, nr, is);
            float *row = b + j * words, *power = p ? p + j * (words / 2) : nullptr;
            auto put = [&](std::size_t n, const float* x, std::size_t at) {
                if (streamed) return stream_samples(n, x, row + 2 * at, power ? power + at : nullptr);
                std::copy_n(x, 2 * n, row + 2 * at);
                if (power) powrc(static_cast<int>(n), x, power + at);
            };
            put(ahead, profile + 2 * behind, 0);
            put(behind, profile, ahead);
        }
        if (streamed) stream_done();
    };

    const int nskip = std::max(1, nt / 50);
    int next = nskip > 1 ? 1 : nt + 1; // i mod 1 is never 1
    auto report = [&](int done) {
        for (; next <= done; next += nskip) signal_hooks.progress(next, nt);
    };
    parallel_chunks(nt, records_of_a_chunk, some_records, report);
}

} // namespace norva
