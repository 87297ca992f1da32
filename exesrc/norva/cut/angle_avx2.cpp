// For processors with AVX2; CMakeLists.txt has the compiler options.
#include "angle.h"

namespace norva {
const angle_kernels angle_kernels_avx2 = all_kernels;
} // namespace norva
