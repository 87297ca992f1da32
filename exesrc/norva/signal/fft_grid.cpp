#include "fft_grid.h"

#include "fft_plan.h"
#include "signal/parallel.h"

#include <cstddef>

namespace norva {
namespace {

// A loop over lines goes to other threads in chunks that are worth waking them.
constexpr int samples_of_a_chunk = 16384;

} // namespace

void transform_rows(float* a, int nx, int ny, int sign) {
    if (nx < 2) return;
    parallel_chunks(ny, 1 + samples_of_a_chunk / nx, [&](int first, int last) {
        for (int j = first; j < last; j++) transform(a + 2 * static_cast<std::ptrdiff_t>(j) * nx, nx, sign);
    });
}

void transform_columns(float* a, int nx, int ny, int first, int last, int sign) {
    if (ny < 2) return;
    const std::ptrdiff_t row = 2 * static_cast<std::ptrdiff_t>(nx);
    const int chunk = (1 + samples_of_a_chunk / ny + 7) / 8 * 8; // whole vectors of columns
    parallel_chunks(last - first, chunk, [&](int begin, int end) {
        transform_adjacent_columns(a, row, ny, first + begin, first + end, sign);
    });
}

} // namespace norva
