// For processors with AVX2; CMakeLists.txt has the compiler options.
#include "phase_kernel.h"

namespace norva {
void turn_record_avx2(const phase_tables& tables, const double* a, float* x) {
    turn_record(tables, a, x);
}
} // namespace norva
