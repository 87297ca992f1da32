#include "zuvsys/memory.h"

#include "zuvsys/jmalloc.h"

#include <unistd.h>

namespace norva {

bool enough_memory(double bytes) {
    const double machine =
        static_cast<double>(sysconf(_SC_PHYS_PAGES)) * static_cast<double>(sysconf(_SC_PAGE_SIZE));
    if (!(bytes < 0.8 * machine)) return false;
    void* block =
        jjmalloc(static_cast<std::size_t>(bytes)); // large blocks cost nothing before they are touched
    if (!block) return false;
    jfree(block);
    return true;
}

} // namespace norva
