// Any bytes as a series file of every type. Loaded, evaluated, updated, closed.
#include "memory_file.h"
#include "walk_series.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static norva::memory_file file;
    const std::string_view input(reinterpret_cast<const char*>(bytes), size);
    file.hold(input);
    norva::walk_spline(file.name());
    file.hold(input);
    norva::walk_series(file.name());
    return 0;
}
