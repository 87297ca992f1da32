// The passes for processors with AVX2 and fused multiply-add; CMakeLists.txt has the compiler options.
#include "fft_kernel.h"

namespace norva {

void fft_run_avx2(const fft_schedule& schedule, const float* in, float* out, bool positive, float* work) {
    run(schedule, in, out, positive, work);
}

} // namespace norva
