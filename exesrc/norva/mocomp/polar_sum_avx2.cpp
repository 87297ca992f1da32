// For processors with AVX2 and fused multiply-add; CMakeLists.txt has the compiler options.
#include "polar_sum_kernel.h"

namespace norva {
void polar_sum_avx2(const polar_record& record, const float* range, float con2, float* z, int n) {
    polar_sum(record, range, con2, z, n);
}
} // namespace norva
