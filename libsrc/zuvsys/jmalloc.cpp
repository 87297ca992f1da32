#include "zuvsys/jmalloc.h"

#include <cstdlib>

namespace norva {
void* jmalloc(std::size_t n) { return std::calloc(1, n < 8 ? 8 : n); }
void jfree(void* p) { std::free(p); }
} // namespace norva
