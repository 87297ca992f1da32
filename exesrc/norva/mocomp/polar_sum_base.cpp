// For every processor.
#include "polar_sum_kernel.h"

namespace norva {
void polar_sum_base(const polar_record& record, const float* range, float con2, float* z, int n) {
    polar_sum(record, range, con2, z, n);
}
} // namespace norva
