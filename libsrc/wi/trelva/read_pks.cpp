// PKSFILE: one peak of each element: its place, amplitude and flag, and what the place means in metres.
#include "file_read.h"
#include "open_typed.h"

#include <cstddef>
#include <cstring>
#include <vector>

namespace norva {

namespace {

// The type of the peaks: 0 places in Hz, which are rates; others places in Hz a second, accelerations.
bool holds_rates(_zuvfile* file) {
    return u_kwget_i(file, "type") == 0;
}

sp_value pks_header(_zuvfile* file, int datatype) {
    switch (datatype) {
    case SP_DT_PRF: return sp_keyword_value(file, "prf");
    case SP_DT_XLAM: return sp_keyword_value(file, "xlam");
    case SP_DT_NSAMP: return sp_mkscaler(static_cast<double>(u_nelem(file)));
    case SP_DT_NFFT: return sp_keyword_value(file, "nfft");
    case SP_DT_LAG: return sp_keyword_value(file, "lag");
    case SP_DT_WINDOW: return sp_keyword_value(file, "wdw");
    case SP_DT_NPKS: return sp_keyword_value(file, "npks");
    case SP_DT_WEIGHT: return sp_keyword_value(file, "weight");
    case SP_DT_PKSTYPE: return sp_mkstring(holds_rates(file) ? "Rate" : "Acceleration");
    case SP_DT_XUNITS: return sp_mkstring("Seconds");
    case SP_DT_YUNITS: return sp_mkstring(holds_rates(file) ? "Hz" : "Hz/sec");
    default: return {};
    }
}

float float_at(const std::vector<std::byte>& element, std::size_t at) {
    float value = 0.0f;
    std::memcpy(&value, element.data() + at, sizeof value);
    return value;
}

// Why an item cannot be read; empty when it can.
std::string_view refusal(_zuvfile* file, const fileparams& parms, int npks) {
    switch (parms.datatype) {
    case SP_DT_LOC:
    case SP_DT_AMP:
    case SP_DT_DATA:
    case SP_DT_VALID: break;
    case SP_DT_RATE:
        if (!holds_rates(file)) return "This peaks file does not contain rate data.";
        break;
    case SP_DT_ACC:
        if (holds_rates(file)) return "This peaks file does not contain acceleration data.";
        break;
    default: return SP_BAD_TYPE;
    }
    if (parms.islot < 0) return "Invalid ISLOT.";
    return parms.islot > npks ? "This peaks file does not contain enough peaks for ISLOT." : "";
}

// An element: the time (double), npks pairs of place and amplitude (floats), npks flag bytes.
sp_item_source pks_items(_zuvfile* file, const fileparams& parms) {
    const int npks = u_nitems(file);
    const std::string_view refused = refusal(file, parms, npks);
    if (!refused.empty()) return sp_no_items(refused);
    const auto slot = static_cast<std::size_t>(parms.islot > 0 ? parms.islot - 1 : 0);
    const std::size_t pair = 8 + 8 * slot, flag = 8 + 8 * static_cast<std::size_t>(npks) + slot;
    const auto size = static_cast<std::size_t>(u_elemsize(file));
    if (flag >= size) return sp_no_items("Internal problem reading PKS file.");
    // Asked for the data of no peak in particular: of all of them, place and amplitude in turn.
    const bool pairs = parms.datatype == SP_DT_DATA;
    const std::size_t width = !pairs ? 1 : parms.islot > 0 ? 2 : 2 * static_cast<std::size_t>(npks);
    const double metres = -0.5 * u_kwget_d(file, "xlam"); // a second, for each Hz
    return {width, [=, datatype = parms.datatype,
                    element = std::vector<std::byte>()](std::span<double> value) mutable {
                element.resize(size); // not before an element is known to be there
                if (u_getelem(file, element) != ZUV_OK) return false;
                switch (datatype) {
                case SP_DT_LOC: value[0] = float_at(element, pair); break;
                case SP_DT_AMP: value[0] = float_at(element, pair + 4); break;
                case SP_DT_VALID: value[0] = element[flag] != std::byte{0}; break;
                case SP_DT_DATA:
                    for (std::size_t i = 0; i < width; i++) value[i] = float_at(element, pair + 4 * i);
                    break;
                default: value[0] = metres * float_at(element, pair);
                }
                return true;
            }};
}

} // namespace

const sp_file_kind sp_pks_kind = {sp_open_pks, pks_header, pks_items, "Internal problem reading PKS file."};

sp_value read_pks(const fileparams& parms) {
    return sp_read_file(sp_pks_kind, parms);
}

} // namespace norva
