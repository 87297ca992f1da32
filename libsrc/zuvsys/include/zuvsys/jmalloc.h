#pragma once
// The tracked allocator. Two promises hold for jmalloc: a call never returns an empty pointer, and memory
// comes back zero-filled. Callers never test the result; when the heap refuses, a message goes to standard
// output and the process ends with status -1.
//
// Accounting (a map of all blocks, jused()) is on when the environment name "JUSED" is set at the first
// allocation. It catches pointers the allocator never gave out, and makes each call linear in the number of
// blocks: a diagnostic mode.

#include <cstddef>
#include <cstdint>

namespace norva {

// n bytes, at least 8, all zero.
void* jmalloc(std::size_t n);
// Changes the size of a block, which may move; an empty p is jmalloc(n). The tail of a grown block is not
// zeroed.
void* jrealloc(void* p, std::size_t n);
// An empty p is ignored.
void jfree(void* p);

// The same without the stop: empty when the heap refuses.
void* jjmalloc(std::size_t n);
void* jjrealloc(void* p, std::size_t n);

// Bytes charged at present; 0 when accounting is off.
std::int64_t jused();

// Blocks whose address is a multiple of nalign. jrealloc_align and jfree_align ignore a pointer they do not
// know; jrealloc_align returns the block's new address (the contents stay at the old distance from the real
// block's start). Kept on purpose: jfree_align closes the gap in its table one entry too early, so that after
// freeing a block other than the oldest, the block handed out before it is no longer known.
void* jmalloc_align(std::size_t nbytes, std::size_t nalign);
void* jrealloc_align(void* ptr, std::size_t nbytes, std::size_t nalign);
void jfree_align(void* ptr);

} // namespace norva
