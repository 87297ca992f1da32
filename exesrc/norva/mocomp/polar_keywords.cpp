// The geometry record of polar formatting.
#include "mocomp/polar_keywords.h"

#include "fileio/ufile.h"
#include "zuvsys/strprintf.h"

#include <cmath>

namespace norva {

static plr_kws record;

plr_kws* get_pkw() {
    return &record;
}

void reset_kws() {
    record = {};
}

void rd_plr_kw(_zuvfile* p) {
    reset_kws();
    bool complete = true;
    const auto read = [&](const char* name, float& value) {
        value = static_cast<float>(u_kwget_d(p, name));
        complete &= u_error() == 1;
    };
    record.dtyp = u_kwget_i(p, "DTYPE");
    complete &= u_error() == 1;
    read("XEX", record.xex);
    read("YEX", record.yex);
    read("RC", record.rc);
    if (record.dtyp != 0) {
        read("DU", record.du);
        read("SA", record.sa);
    } else {
        read("DE", record.de);
        read("DA", record.da);
    }
    record.eflag = complete ? 1 : 2;
}

std::string polar_fault(const plr_kws& kws) {
    struct bound {
        const char* what;
        double value, above, to;
    };
    // Far beyond any range on the ground; keeps products of these numbers within single precision.
    constexpr double metres = 1e6;
    const bound bounds[] = {{"crossrange extent of the target", kws.xex, 0, metres},
                            {"range extent of the target", kws.yex, 0, metres},
                            {"distance to the rotation axis", kws.rc, 0, metres},
                            {"turntable rotation between samples", std::fabs(kws.da), 0, 1},
                            {"depression angle", std::fabs(kws.de), -1, 1.5}};
    for (const bound& b : bounds) {
        if (b.value > b.above && b.value <= b.to) continue;
        return b.above < 0
                   ? strprintf("Error: the %s must be from %g to %g!", b.what, -b.to, b.to)
                   : strprintf("Error: the %s must be a number other than 0, up to %g!", b.what, b.to);
    }
    return {};
}

} // namespace norva
