// For every processor.
#include "phase_kernel.h"

namespace norva {
void turn_record_base(const phase_tables& tables, const double* a, float* x) {
    turn_record(tables, a, x);
}
} // namespace norva
