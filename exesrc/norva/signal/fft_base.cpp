// The passes for every processor.
#include "fft_kernel.h"

namespace norva {

void fft_run_base(const fft_schedule& schedule, const float* in, int used, float* out, bool positive,
                  float* work) {
    run(schedule, in, used, out, positive, work);
}

void fft_columns_base(const fft_schedule& schedule, float* a, long row, bool positive, float* work) {
    run_columns(schedule, a, row, positive, work);
}

} // namespace norva
