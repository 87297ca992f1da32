// The passes for every processor.
#include "fft_kernel.h"

namespace norva {

void fft_run_base(const fft_schedule& schedule, const float* in, float* out, bool positive, float* work) {
    run(schedule, in, out, positive, work);
}

} // namespace norva
