#pragma once
// Writing large results past the cache: memory that is not read again soon would only push out what is
// needed, and be fetched before it is overwritten.

#include <cstddef>

namespace norva {

// A result of this many floats no longer stays in the cache until somebody reads it.
constexpr std::size_t STREAM_FROM = std::size_t{1} << 21;

// Copies n interleaved complex samples from x to `to` and, unless p is null, writes their power
// re*re + im*im, the same bits as powrc, to p. Both results go past the cache, which takes them best side by
// side.
void stream_samples(std::size_t n, const float* x, float* to, float* p);

// Makes what this thread wrote by the routine above visible to the others. To be called before they read it.
void stream_done();

// Asks for n floats that will be read soon, while there is other work to do.
void fetch_ahead(std::size_t n, const float* p);

} // namespace norva
