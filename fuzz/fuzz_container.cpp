// Any bytes as a data file: opened as every thing it could be, read, updated, closed.
#include "memory_file.h"
#include "walk_container.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static norva::memory_file file;
    file.hold({reinterpret_cast<const char*>(bytes), size});
    norva::walk_container(file.name());
    return 0;
}
