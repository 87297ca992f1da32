// The window's block into an action record, and a result record taken apart.
#include "image/proimag.h"
#include "mocomp/polar_keywords.h"
#include "signal/numbers.h"
#include "state/record_words.h"
#include "zuvsys/strprintf.h"

#include <algorithm>
#include <cmath>

namespace norva {

static pi_packed refuse(std::string text) {
    return {{}, std::move(text), false};
}

// Samples times factors are below the limit. Told apart from it without an overflow.
static bool fits(const proimag_parms& pip) {
    if (std::min({pip.nf, pip.nt, pip.ifx, pip.ify}) < 1) return false;
    std::int64_t i = 1;
    for (int factor : {pip.nf, pip.nt, pip.ifx, pip.ify}) {
        i *= factor;
        if (i > PI_MAX_DATA) return false;
    }
    return true;
}

// Dots are scaled so that the peak at the high threshold gets the full diameter.
static bool pack_peak_scaling(const proimag_parms& pip, float hclip, record_packer& p) {
    const float s = pip.kscl == 1 ? hclip * hclip : pip.kscl == 2 ? hclip : std::sqrt(hclip);
    if (!(s > 0)) return false;
    p.ints({pip.npmx, pip.kscl});
    p.reals({pip.apmn, pip.diam / s});
    return true;
}

static std::string cut_refusal(const proimag_parms& pip) {
    if (!(pip.dct > 0)) return "Sample spacing must be > 0.";
    const float n = pip.wct / pip.dct;
    if (!(n < PI_MAX_CUT + 1.0F))
        return strprintf("Too many points, must be < %d.\n  Try larger sample spacing.", PI_MAX_CUT);
    return {};
}

static void pack_data(const proimag_parms& pip, const pi_surroundings& around, record_packer& p) {
    p.ints({pip.nf, pip.nt, pip.kw, pip.ksx, pip.ksy, pip.ifx, pip.ify, pip.npmx, pip.kscl});
    p.reals({pip.apmn, pip.diam});
    if (pip.mode == PI_POLAR) {
        const plr_kws k = around.polar ? *around.polar : plr_kws{};
        p.ints({k.dtyp + 1});
        p.reals({k.xex, k.yex, around.f0, around.df, k.rc, k.da, k.du, k.sa, k.de});
    }
    p.reals(std::span<const float>(pip.q,
                                   2 * static_cast<std::size_t>(pip.nf) * static_cast<std::size_t>(pip.nt)));
}

pi_packed pi_pack(const proimag_parms& pip, const pi_surroundings& around) {
    if (pip.mode != PI_EXPORT && !fits(pip))
        return {{}, "pi_apply.c: Not enough memory for specified image!", true};
    pi_packed packed;
    record_packer p{packed.record};
    p.ints({pip.mode});
    switch (pip.mode) {
    case PI_INIT:
    case PI_POLAR: pack_data(pip, around, p); break;
    case PI_FLOP: p.ints({pip.kflop}); break;
    case PI_WEIGHT: p.ints({pip.kw}); break;
    case PI_PEAK_SCALING:
        if (!pack_peak_scaling(pip, around.hclip, p)) return refuse("Bad high clip value!");
        break;
    case PI_EDIT: p.reals({pip.xc1, pip.xc2, pip.yc1, pip.yc2}); break;
    case PI_INTERPOLATE: p.ints({pip.ifx, pip.ify}); break;
    case PI_PEAK_PARAMETERS: p.reals({pip.xc, pip.yc}); break;
    case PI_CUT:
        if (std::string text = cut_refusal(pip); !text.empty()) return refuse(std::move(text));
        p.reals({pip.wct, pip.dct, pip.xpv, pip.ypv, pip.ang});
        break;
    case PI_CENTER:
        p.reals({pip.xc, pip.yc, cfreq(around.f0, around.df, pip.nf), around.bw});
        p.ints({pip.kflop});
        break;
    case PI_GO:
    case PI_STEP: p.ints({pip.nbu}); break;
    case PI_RESTORE: {
        // jary: its length nn + 2, ns, nn - 1 words, the motion compensation level.
        const auto jary = around.jary;
        if (jary.size() < 2 || jary[0] < 2 || static_cast<std::size_t>(jary[0]) > jary.size())
            return refuse("ERROR restoring jary");
        p.ints({jary[0] - 2});
        p.words.insert(p.words.end(), jary.begin() + 1, jary.begin() + jary[0] - 1);
        break;
    }
    default: break;
    }
    return packed;
}

static void read_grid(record_reader& in, pi_result& r) {
    r.nx = in.integer();
    r.x1 = in.real();
    r.dx = in.real();
    r.ny = in.integer();
    r.y1 = in.real();
    r.dy = in.real();
    r.ascl = in.real();
}

static void read_status(record_reader& in, pi_result& r) {
    r.kw = in.integer();
    r.ksx = in.integer();
    r.ksy = in.integer();
    read_grid(in, r);
    r.npmx = in.integer();
    r.kscl = in.integer();
    r.apmn = in.real();
    r.diam = in.real();
}

static void read_image(record_reader& in, pi_result& r) {
    r.kw = in.integer();
    r.ifx = in.integer();
    r.ify = in.integer();
    read_grid(in, r);
    r.npk = in.integer();
    r.xp = in.reals(r.npk);
    r.yp = in.reals(r.npk);
    r.dp = in.reals(r.npk);
    r.a = in.reals(static_cast<std::int64_t>(r.nx) * r.ny);
    if (r.mode == PI_PEAK_PARAMETERS) {
        r.xpk = in.real();
        r.ypk = in.real();
        r.apk = in.real();
    } else if (r.mode == PI_CUT) {
        r.kc = in.integer();
        const int nc = in.integer();
        r.c1 = in.real();
        r.dc = in.real();
        r.cut = in.reals(2 * static_cast<std::int64_t>(nc));
        r.kwr = in.integer();
    } else if (r.mode == PI_CENTER) {
        const int n = in.integer();
        r.xc = in.real();
        r.yc = in.real();
        r.delays = in.reals(n);
    }
}

bool pi_unpack(std::span<const std::int32_t> out, pi_result& r) {
    r = {};
    record_reader in{out};
    r.step = in.integer();
    r.mode = in.integer();
    if (!in.good || r.step < 0) {
        r.message = record_message(out, PI_MESSAGE_CHARACTERS);
        return false;
    }
    switch (r.mode) {
    case PI_STATUS:
        r.what = pi_result::STATUS;
        read_status(in, r);
        break;
    case PI_WRITE:
        r.what = pi_result::DATA;
        r.nfp = in.integer();
        r.ntp = in.integer();
        r.ksx = in.integer();
        r.ksy = in.integer();
        r.data = in.reals(2 * static_cast<std::int64_t>(r.nfp) * r.ntp);
        break;
    case PI_STORE_CUT: r.what = pi_result::CUT_STORED; break;
    case PI_EXPORT:
        r.what = pi_result::EXPORTED;
        r.nn = in.integer();
        r.ns = in.integer();
        if (r.nn > 0) {
            const auto words = in.take(r.nn - 1);
            r.stored.assign(words.begin(), words.end());
        }
        break;
    case PI_END: r.what = pi_result::ENDED; break;
    default: r.what = pi_result::IMAGE; read_image(in, r);
    }
    if (in.good) return true;
    r = {};
    r.message = "Damaged result of the image processor";
    return false;
}

jbuf<std::int32_t> pi_make_jary(const pi_result& exported, int mc_level) {
    const std::size_t nn = exported.stored.size() + 1; // ns and the words
    jbuf<std::int32_t> jary(nn + 1000);
    jary[0] = static_cast<std::int32_t>(nn + 2);
    jary[1] = exported.ns;
    std::ranges::copy(exported.stored, jary.begin() + 2);
    jary[nn + 1] = mc_level;
    return jary;
}

} // namespace norva
