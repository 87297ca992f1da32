// The passes for processors with AVX2 and fused multiply-add; CMakeLists.txt has the compiler options.
#include "fft_kernel.h"

namespace norva {

void fft_run_avx2(const fft_schedule& schedule, const float* in, int used, float* out, bool positive,
                  float* work) {
    run(schedule, in, used, out, positive, work);
}

void fft_columns_avx2(const fft_schedule& schedule, float* a, long row, bool positive, float* work) {
    run_columns(schedule, a, row, positive, work);
}

} // namespace norva
