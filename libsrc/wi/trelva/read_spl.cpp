// SPLFILE: a spline sampled between its breakpoints.
#include "cu/espl.h"
#include "cu/spl.h"
#include "file_read.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

namespace norva {

namespace {

sp_value header_word(_zuvfile* file, int datatype) {
    switch (datatype) {
    case SP_DT_SPLTYPE: return sp_keyword_value(file, "type");
    case SP_DT_XUNITS: return sp_keyword_value(file, "xunits");
    case SP_DT_YUNITS: return sp_keyword_value(file, "yunits");
    case SP_DT_NCOE: return sp_keyword_value(file, "ncoe");
    default: return sp_common_word(file, datatype);
    }
}

// Derivative order that an item of the spline is; empty when there is no such item.
std::optional<int> order_of(const fileparams& parms) {
    switch (parms.datatype) {
    case SP_DT_FUNC: return parms.iderv;
    case SP_DT_RATE: return 1;
    case SP_DT_ACC: return 2;
    default: return std::nullopt;
    }
}

// The times at which a spline is sampled: each interval in equal steps from its start, and the last
// breakpoint.
struct sample_times {
    const _espl& spline;
    std::int64_t per_interval;

    std::int64_t count() const { return (spline.nbrks - 1) * per_interval + 1; }
    double operator[](std::int64_t i) const {
        const auto brk = static_cast<std::size_t>(i / per_interval);
        const double from = spline.brks[brk].time;
        if (i % per_interval == 0) return from;
        const double span = spline.brks[brk + 1].time - from;
        return from + span * static_cast<double>(i % per_interval) / static_cast<double>(per_interval);
    }
    // The first sample whose time is not below (past: above) t.
    std::int64_t first_at(double t, bool past) const {
        std::int64_t low = 0, high = count();
        while (low < high) {
            const std::int64_t middle = low + (high - low) / 2;
            const double time = (*this)[middle];
            if (past ? time <= t : time < t)
                low = middle + 1;
            else
                high = middle;
        }
        return low;
    }
};

sp_value samples(_espl& spline, const fileparams& parms) {
    const sample_times times{spline, parms.nptsbrk};
    const std::int64_t first = times.first_at(parms.t0, false);
    const std::int64_t last = std::min(times.first_at(parms.t1, true), first + parms.mxelms);
    if (last <= first) return sp_mkerror("No data found between T0 and T1.");
    sp_value result = sp_new_array(static_cast<std::size_t>(last - first));
    std::int64_t i = first;
    for (double& value : result.ary.own()) {
        const double time = times[i++];
        value = sp_is_time(parms.datatype) ? time : espl(&spline, time, *order_of(parms));
        if (!sp_is_time(parms.datatype) && espl_error() != ZUV_OK)
            return sp_mkerror("Internal problem while reading spline (2).");
    }
    return result;
}

} // namespace

sp_value read_spl(const fileparams& parms) {
    splfile_ptr file = openspl(parms.fname, "Old", 0);
    if (!file) return sp_mkerror("Unable to open file.");
    if (!sp_is_time(parms.datatype) && !order_of(parms)) {
        sp_value word = header_word(file.get(), parms.datatype);
        return word.type == SP_NULL ? sp_mkerror(std::string(SP_BAD_TYPE)) : word;
    }
    if (parms.nptsbrk < 1) return sp_mkerror("POINTSPERINTERVAL is too small");
    espl_ptr spline = espl_init_with_file(file.get(), ESPL_MEMORY);
    if (!spline) return sp_mkerror("Internal problem while reading spline (1).");
    if (std::string why = sp_outside(spline->t0, spline->t1, parms); !why.empty()) return sp_mkerror(why);
    return samples(*spline, parms);
}

} // namespace norva
