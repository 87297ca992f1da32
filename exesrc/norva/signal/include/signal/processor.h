#pragma once
// Which of the kernels that are compiled for several processors may run here.

namespace norva {

// The processor has AVX2 and fused multiply-add, and NORVA_NO_AVX2 is not set in the environment (any value):
// with it everything runs as on the plainest processor, to compare and to test. Asked once per process.
bool has_avx2();

} // namespace norva
