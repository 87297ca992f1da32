// REAFILE: range, elevation and azimuth of a track; rate and acceleration of the range by local fits.
#include "cu/rea.h"
#include "cu/genrea.h"
#include "file_read.h"
#include "local_fit.h"

#include <array>
#include <cstddef>

namespace norva {

namespace {

void take(const _reaelement& element, int datatype, std::span<double> value) {
    switch (datatype) {
    case SP_DT_RANGE: value[0] = element.range; break;
    case SP_DT_ELEVATION: value[0] = static_cast<double>(element.elevation); break;
    case SP_DT_AZIMUTH: value[0] = static_cast<double>(element.azimuth); break;
    case SP_DT_DATA:
        value[0] = element.range;
        value[1] = static_cast<double>(element.elevation);
        value[2] = static_cast<double>(element.azimuth);
        break;
    default: value[0] = element.flag;
    }
}

sp_item_source rea_items(_zuvfile* file, const fileparams& parms) {
    switch (parms.datatype) {
    case SP_DT_RANGE:
    case SP_DT_ELEVATION:
    case SP_DT_AZIMUTH:
    case SP_DT_AUTO:
    case SP_DT_DATA:
    case SP_DT_VALID: break;
    default: return {};
    }
    const std::size_t width = parms.datatype == SP_DT_DATA ? 3 : 1;
    return {width, [file, datatype = parms.datatype](std::span<double> value) {
                std::array<std::byte, REA_ELEMSIZE> bytes{};
                if (u_getelem(file, bytes) != ZUV_OK) return false;
                take(rea_unpack(bytes), datatype, value);
                return true;
            }};
}

sp_value rea_header(_zuvfile* file, int datatype) {
    switch (datatype) {
    case SP_DT_PRF: return sp_keyword_value(file, "prf");
    case SP_DT_XLAM: return sp_keyword_value(file, "xlam");
    case SP_DT_NSAMP: return sp_mkscaler(static_cast<double>(u_nelem(file)));
    default: return {};
    }
}

sp_value read(fileparams parms, int datatype) {
    sp_file_kind kind = sp_rea_kind;
    if (sp_is_time(datatype)) kind.read_failed = "Internal problem reading REA file (1).";
    parms.datatype = datatype;
    return sp_read_file(kind, parms);
}

// A derivative of the range, by a fit around each element.
sp_value fitted_range(const fileparams& parms, int order) {
    const sp_value times = read(parms, SP_DT_TIME);
    if (times.type == SP_ERROR) return times;
    const sp_value range = read(parms, SP_DT_RANGE);
    if (range.type == SP_ERROR) return range;
    const sp_value valid = read(parms, SP_DT_VALID);
    if (valid.type == SP_ERROR) return valid;
    sp_value result = sp_new_array(times.npts());
    if (result.type == SP_ERROR) return result;
    const std::span<const double> mask = parms.fitall ? std::span<const double>() : valid.ary.span();
    sp_local_fit(times.ary.span(), range.ary.span(), mask, parms.navg, parms.wtauto != 0, order,
                 result.ary.own());
    return result;
}

} // namespace

const sp_file_kind sp_rea_kind = {opengenrea, rea_header, rea_items,
                                  "Internal problem reading REA file (2)."};

sp_value read_rea(const fileparams& parms) {
    switch (parms.datatype) {
    case SP_DT_RATE: return fitted_range(parms, 1);
    case SP_DT_ACC: return fitted_range(parms, 2);
    default: return read(parms, parms.datatype);
    }
}

} // namespace norva
