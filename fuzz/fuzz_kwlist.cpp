// Any bytes as a keyword list, under a run of operations that the first bytes choose. What a put says it has
// stored must be there.
#include "fileio/kwlist.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using namespace norva;

void require(bool holds) {
    if (!holds) std::abort();
}

void operate(std::span<char> list, unsigned char choice, const std::string& name) {
    kwl_item item;
    int i = 0;
    double d = 0.0;
    std::string s;
    switch (choice % 8) {
    case 0:
        if (kwl_put_int(list, name, choice)) require(kwl_get_int(list, name, i) == 1 && i == choice);
        break;
    case 1:
        if (kwl_put_dbl(list, name, 0.5 * choice))
            require(kwl_get_dbl(list, name, d) == 1 && d == 0.5 * choice);
        break;
    case 2:
        s = std::string(choice / 8 + 1, 'v'); // at most 32 + 5 + name: short enough to be found again
        if (kwl_put_str(list, name, s)) {
            std::string read;
            require(kwl_get_str(list, name, read) == 1 && read == s);
        }
        break;
    case 3: kwl_put_str(list, name, std::string(choice, 'v')); break;
    case 4: kwl_delete(list, choice / 8); break;
    case 5:
        if (kwl_tell(list, choice / 8) >= 0) require(kwl_read(list, choice / 8, item) == 1);
        break;
    case 6: kwl_delete(list, kwl_find(list, name)); break;
    default:
        kwl_convert(
            list, [](void* p) { *static_cast<char*>(p) ^= 1; }, [](void* p) { *static_cast<char*>(p) ^= 1; });
    }
    int n = kwl_nitems(list);
    for (int k = 0; k < n; k++) require(kwl_read(list, k, item) == 1);
    require(kwl_read(list, n, item) != 1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    constexpr std::size_t operations = 12;
    if (size < operations) return 0;
    // A block of exactly the rest, so that a byte too far is seen.
    std::vector<char> list(bytes + operations, bytes + size);
    for (std::size_t i = 0; i < operations; i++)
        operate(list, bytes[i],
                std::string(1 + bytes[i] % 3U, static_cast<char>('a' + bytes[(i + 1) % operations] % 4)));
    return 0;
}
