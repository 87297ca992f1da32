// IQFILE, GATFILE, IMGFILE: rows of complex samples, as amplitude, phase, I or Q.
#include "cu/geniq.h"
#include "file_read.h"
#include "fileio/gat.h"
#include "open_typed.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

namespace norva {

namespace {

double amplitude(float re, float im) {
    return std::hypot(static_cast<double>(re), static_cast<double>(im));
}
double phase(float re, float im) { // cycles
    return std::atan2(static_cast<double>(im), static_cast<double>(re)) / (2.0 * std::numbers::pi);
}
double real_part(float re, float) {
    return re;
}
double imaginary_part(float, float im) {
    return im;
}

using sample_value = double (*)(float re, float im);

sample_value value_of(int datatype) {
    switch (datatype) {
    case SP_DT_AMP: return amplitude;
    case SP_DT_PHASE: return phase;
    case SP_DT_I: return real_part;
    case SP_DT_Q: return imaginary_part;
    default: return nullptr;
    }
}

// Follows a phase, in cycles, through its jumps.
struct unwrapper {
    double before = 0.0, whole = 0.0;
    bool started = false;

    double operator()(double cycles) {
        if (started && std::fabs(cycles - before) > 0.5) whole += cycles < before ? 1.0 : -1.0;
        started = true;
        before = cycles;
        return cycles + whole;
    }
};

// All samples of a row, or the one that ISLOT selects. `row` reads the next row of n float pairs.
sp_item_source complex_items(std::size_t n, const fileparams& parms,
                             std::function<bool(std::span<float>)> row) {
    const sample_value value = value_of(parms.datatype);
    const bool both = parms.datatype == SP_DT_DATA; // I and Q in turn
    if (!value && !both) return {};
    if (parms.islot < 0 || static_cast<std::size_t>(parms.islot) > n) return sp_no_items("Invalid ISLOT.");
    const std::size_t first = parms.islot > 0 ? static_cast<std::size_t>(parms.islot) - 1 : 0;
    const std::size_t width = parms.islot > 0 ? 1 : n;
    const bool unwraps = parms.datatype == SP_DT_PHASE;
    // A row of samples is unwrapped by itself, single samples along the elements.
    return {both ? 2 * width : width,
            [=, pairs = std::vector<float>(), follow = unwrapper{}](std::span<double> out) mutable {
                pairs.resize(2 * n); // not before a row is known to be there
                if (!row(pairs)) return false;
                if (width > 1) follow = {};
                if (both) std::copy_n(&pairs[2 * first], out.size(), out.begin());
                for (std::size_t i = 0; i < width && !both; i++) {
                    out[i] = value(pairs[2 * (first + i)], pairs[2 * (first + i) + 1]);
                    if (unwraps) out[i] = follow(out[i]);
                }
                return true;
            }};
}

// Files whose elements are float pairs and nothing else, to be multiplied by the file's scale if it has one.
sp_item_source pair_items(_zuvfile* file, const fileparams& parms) {
    const double given = u_kwget_d(file, "scale");
    const float scale = u_error() == ZUV_OK ? static_cast<float>(given) : 1.0f;
    return complex_items(static_cast<std::size_t>(u_nitems(file)), parms, [=](std::span<float> pairs) {
        const bool good = u_getelem(file, std::as_writable_bytes(pairs)) == ZUV_OK;
        for (float& x : pairs) x *= scale;
        return good;
    });
}

sp_value iq_header(_zuvfile* file, int datatype) {
    switch (datatype) {
    case SP_DT_PRF: return sp_keyword_value(file, "prf");
    case SP_DT_XLAM: return sp_keyword_value(file, "xlam");
    case SP_DT_NSAMP: return sp_mkscaler(static_cast<double>(u_nelem(file)));
    default: return {};
    }
}

sp_value img_header(_zuvfile* file, int datatype) {
    return datatype == SP_DT_NSAMP ? sp_mkscaler(u_nitems(file)) : sp_value{};
}

// --- Gate files, which may hold integers and ranges

sp_value gat_header(_zuvfile* file, int datatype) {
    switch (datatype) {
    case SP_DT_PRF: return sp_keyword_value(file, "prf");
    case SP_DT_XLAM: return sp_keyword_value(file, "xlam");
    case SP_DT_NGAT: return sp_mkscaler(u_nitems(file));
    default: return {};
    }
}

sp_item_source gat_items(_zuvfile* file, const fileparams& parms) {
    auto* gat = static_cast<_gatfile*>(file);
    if (parms.datatype == SP_DT_RANGE && gat->hd.incrng)
        return {1, [gat](std::span<double> range) {
                    double time = 0.0;
                    return getgat(gat, time, range[0], {}) == ZUV_OK;
                }};
    return complex_items(static_cast<std::size_t>(u_nitems(file)), parms, [gat](std::span<float> pairs) {
        double time = 0.0, range = 0.0;
        return getgat(gat, time, range, pairs) == ZUV_OK;
    });
}

} // namespace

const sp_file_kind sp_iq_kind = {opengeniq, iq_header, pair_items, "Internal problem reading IQ file."};
const sp_file_kind sp_gat_kind = {sp_open_gat, gat_header, gat_items, "Internal problem reading GAT file."};
const sp_file_kind sp_img_kind = {sp_open_img, img_header, pair_items, "Internal problem reading IMG file."};

sp_value read_iq(const fileparams& parms) {
    return sp_read_file(sp_iq_kind, parms);
}

// The derivatives of the range of each row are those of a track.
sp_value read_gat(const fileparams& parms) {
    if (parms.datatype == SP_DT_RATE || parms.datatype == SP_DT_ACC) {
        const zuvfile_ptr file = sp_open_gat(parms.fname);
        if (file && static_cast<_gatfile&>(*file).hd.incrng) return read_rea(parms);
    }
    return sp_read_file(sp_gat_kind, parms);
}

sp_value read_img(const fileparams& parms) {
    return sp_read_file(sp_img_kind, parms);
}

} // namespace norva
