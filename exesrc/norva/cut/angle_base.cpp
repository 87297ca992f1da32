// For every processor.
#include "angle.h"

namespace norva {
const angle_kernels angle_kernels_base = all_kernels;
} // namespace norva
