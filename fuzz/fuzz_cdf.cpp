// Any bytes as a CDF pattern file: its header, then every polarization it tells of, in windows of its data.
#include "fileio/cdf.h"
#include "memory_file.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace norva;
    static memory_file file;
    file.hold({reinterpret_cast<const char*>(bytes), size});
    cdf_header header;
    is_cdf(file.name());
    if (!read_cdf_header(file.name(), header).empty()) return 0;
    for (const std::string& pole : header.poles) {
        const int nscan = std::min(header.nscan, 50), nfreq = std::min(header.nfreq, 50);
        std::vector<float> out(2 * static_cast<std::size_t>(nscan) * static_cast<std::size_t>(nfreq));
        const std::string fault = read_cdf_data(file.name(), pole, {1, nscan, 1, nfreq}, out);
        for (float x : out)
            if (!std::isfinite(x)) std::abort();
        if (!fault.empty()) break;
        // The last sample alone is the same.
        std::vector<float> last(2);
        read_cdf_data(file.name(), pole, {nscan, 1, nfreq, 1}, last);
        if (last[0] != out[out.size() - 2] || last[1] != out.back()) std::abort();
    }
    return 0;
}
