// Conversion of samples between signed bytes, 16-bit integers and floats.
#include "fileio/gat.h"
#include "zuvsys/bestint.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <type_traits>

namespace norva {

namespace {

template <class Out, class In> Out converted(In x) {
    if constexpr (sizeof(Out) >= sizeof(In)) {
        return static_cast<Out>(x); // widening, or the same type
    } else {
        constexpr auto least = static_cast<In>(std::numeric_limits<Out>::min());
        constexpr auto most = static_cast<In>(std::numeric_limits<Out>::max());
        In held = std::clamp(x, least, most);
        if constexpr (std::is_floating_point_v<In>)
            return static_cast<Out>(bestint(held));
        else
            return static_cast<Out>(held);
    }
}

// Values are copied out and in, since rows in a file have no alignment.
template <class In, class Out> void run(std::size_t n, const void* in, void* out) {
    if constexpr (std::is_same_v<In, Out>) {
        if (n > 0) std::memcpy(out, in, n * sizeof(In));
        return;
    }
    const char* from = static_cast<const char*>(in);
    char* to = static_cast<char*>(out);
    for (std::size_t i = 0; i < n; i++) {
        In x;
        std::memcpy(&x, from + i * sizeof(In), sizeof(In));
        Out y = converted<Out>(x);
        std::memcpy(to + i * sizeof(Out), &y, sizeof(Out));
    }
}

template <class In> void run_to(std::size_t n, int outtype, const void* in, void* out) {
    switch (outtype) {
    case GAT_BYTE: return run<In, std::int8_t>(n, in, out);
    case GAT_SHORT: return run<In, std::int16_t>(n, in, out);
    default: return run<In, float>(n, in, out);
    }
}

} // namespace

void gatconv(std::size_t n, int intype, int outtype, const void* in, void* out) {
    switch (intype) {
    case GAT_BYTE: return run_to<std::int8_t>(n, outtype, in, out);
    case GAT_SHORT: return run_to<std::int16_t>(n, outtype, in, out);
    default: return run_to<float>(n, outtype, in, out);
    }
}

} // namespace norva
