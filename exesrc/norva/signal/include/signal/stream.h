#pragma once
// Writing large results past the cache: memory that is not read again soon would only push out what is
// needed, and be fetched before it is overwritten.

#include <cstddef>

namespace norva {

// A result of this many floats no longer stays in the cache until somebody reads it.
constexpr std::size_t STREAM_FROM = std::size_t{1} << 21;

void stream_copy(std::size_t n, const float* from, float* to);

// The power re*re + im*im of n interleaved complex samples, the same bits as powrc.
void stream_power(std::size_t n, const float* x, float* p);

// Makes what this thread wrote by the routines above visible to the others. To be called before they read it.
void stream_done();

} // namespace norva
