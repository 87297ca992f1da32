#pragma once
// The tracked allocator: a call never returns an empty pointer, and memory comes back zero-filled.

#include <cstddef>

namespace norva {

void* jmalloc(std::size_t n);
void jfree(void* p);

} // namespace norva
