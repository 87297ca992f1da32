#include "signal/processor.h"

#include <cstdlib>

namespace norva {

bool has_avx2() {
#if defined(__x86_64__)
    static const bool has = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") &&
                            std::getenv("NORVA_NO_AVX2") == nullptr;
    return has;
#else
    return false;
#endif
}

} // namespace norva
