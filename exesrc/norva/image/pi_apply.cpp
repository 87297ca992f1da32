// One action of the image, from the block to the picture: packs it, runs the processor, and carries what
// comes back to the picture, the raw data, the journal and the cut window.
#include "ximag_int.h"

#include "draw/image_overlays.h"
#include "draw/image_picture.h"
#include "journal/journal.h"
#include "mocomp/mocomp.h"
#include "mocomp/polar_keywords.h"
#include "state/calls.h"
#include "state/image_cut.h"
#include "state/run.h"
#include "state/user.h"
#include "state/write_out.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace norva {

constexpr float MOST_DELAY = 1e9f; // microseconds; beyond, a product with a frequency has no phase left

constexpr float MOST_DIAMETER = 20; // of a dot, inches: fills any picture, and is still drawn in no time

static bool goes_through_steps(int action) {
    return action == PI_GO || action == PI_STEP;
}

static bool is_step(int action) {
    return action >= PI_FLOP && action <= PI_WRITE && action != PI_POLAR;
}

static bool forms_image(int action) {
    return action == PI_INIT || action == PI_POLAR;
}

static std::span<std::int32_t> result_words() {
    static std::vector<std::int32_t> words(PI_RESULT_WORDS);
    return words;
}

// --- What happens to the raw data and to the journal

static float clip_level_of(const proimag_parms& pip, float hclip) {
    return pip.kscl == 1 ? hclip * hclip : pip.kscl == 2 ? hclip : std::sqrt(hclip);
}

static float hclip_of(int kscl, float level) {
    return kscl == 1 ? std::sqrt(level) : kscl == 2 ? level : level * level;
}

// Why no correction can be made out of a centering; empty when one can.
static std::string centering_refused() {
    if (user.mc.ptr >= MC_LAST_PTR) return "No more memory for user.mc (maxrecs=20)";
    if (!(std::fabs(user.bw) > 0) || !(std::fabs(user.f0 + 0.5 * (user.nf - 1) * user.df) > 0))
        return "The data have no bandwidth: the image cannot be centered.";
    return {};
}

static void record_correction(const std::vector<float>& delays) {
    mcfile& mc = user.mc;
    jbuf<double> t(delays.size());
    std::ranges::copy(delays, t.begin());
    mc.t[mc.ptr] = std::move(t);
    mc.flag[mc.ptr] = MC_DELAY;
    mc.nt[mc.ptr] = user.nt;
    mc.nt0[mc.ptr] = user.nt0;
    mc.nf[mc.ptr] = user.nf;
    mc.nf0[mc.ptr] = user.nf0;
}

static bool usable(const std::vector<float>& delays) {
    return std::ssize(delays) == user.nt + 1 &&
           std::ranges::all_of(delays, [](float v) { return std::fabs(v) < MOST_DELAY; });
}

// A fresh centering: the correction becomes the last one there is.
static void centre_data(const pi_result& r) {
    if (!usable(r.delays)) {
        popmsg("The correction is no delay that could be; nothing was changed.");
        return;
    }
    record_correction(r.delays);
    mcfile& mc = user.mc;
    mocomp(user.pfdata.data(), user.nf, user.nt, user.f0, user.df, user.rh, mc.t[mc.ptr].data());
    mc.ptr++;
    mc.nrecs = mc.ptr;
    xi.steps.centred.push_back(r.step);
}

// A stored centering has been reached: its correction counts from here on, as it was recorded. The data
// follow when the journal goes on from this image.
static void pass_centering(const pi_result& r) {
    mcfile& mc = user.mc;
    const auto& passed = xi.steps.centred;
    if (std::ranges::find(passed, r.step) != passed.end() || mc.ptr >= MC_LAST_PTR) return;
    if (mc.ptr >= mc.nrecs) {
        if (!usable(r.delays)) return;
        record_correction(r.delays);
        mc.nrecs = mc.ptr + 1;
    }
    mc.ptr++;
    xi.steps.centred.push_back(r.step);
    xi.steps.data_stale = true;
}

// The image stands at `step`: corrections of later centerings do not count.
static void unpass_centerings(int step) {
    auto& passed = xi.steps.centred;
    while (!passed.empty() && passed.back() > step) {
        passed.pop_back();
        user.mc.ptr--;
        xi.steps.data_stale = true;
    }
}

// The stored actions, on their way to the journal. They replace those that the image was opened with.
static void keep_actions(const pi_result& r) {
    const bool replaces = jary.allocated();
    jary.clear();
    if (r.nn <= 0) return;
    if (replaces) mng_jrnl(nullptr, -2);
    jary = with_image_steps(pi_make_jary(r, xi.pip.mc_level), xi.steps);
}

// --- What is shown

static void take_grid(proimag_parms& pip, const pi_result& r) {
    pip.kw = r.kw;
    pip.ifx = r.ifx;
    pip.ify = r.ify;
    pip.nx = r.nx;
    pip.x1 = r.x1;
    pip.dx = r.dx;
    pip.ny = r.ny;
    pip.y1 = r.y1;
    pip.dy = r.dy;
}

// The peak settings in force, which a step back changes too.
static void take_peak_settings(proimag_parms& pip, int step) {
    const float level = xi.steps.clip_at(step);
    pip.npmx = img.npmx;
    pip.kscl = img.kscl;
    pip.apmn = img.apmn;
    pip.diam = img.diam * level;
    xi.hclip = hclip_of(pip.kscl, level);
}

static void show_result(proimag_parms& pip, pi_result& r, int control) {
    xi.named_mode = r.mode;
    take_grid(pip, r);
    take_peak_settings(pip, r.step);
    for (float& d : r.dp) d = d > 0 ? std::min({d, pip.diam, MOST_DIAMETER}) : 0;
    take_picture_scaling();
    draw_vg_img(*xi.disp, control, pip.imgtype, r.x1, r.y1, image_x2(), image_y2(), r.dp.data(), r.xp.data(),
                r.yp.data(), r.npk, r.a.data(), r.nx, r.ny);
}

// A step that makes no picture of its own was reached: it shows that of the step below.
static void show_step_below(proimag_parms& pip, int step) {
    pi_result r;
    const auto go = [&r](int to) {
        proimag(std::array<std::int32_t, 2>{PI_GO, to}, result_words());
        return pi_unpack(result_words(), r);
    };
    for (int below = step - 1; below >= 0 && go(below); below--) {
        if (r.what != pi_result::IMAGE) continue;
        show_result(pip, r, IMG_NEW);
        break;
    }
    go(step);
}

static void open_cut(proimag_parms& pip, pi_result& r) {
    std::array<float, 6> used;
    proimagpar(used);
    pip.wct = used[0];
    pip.dct = used[1];
    pip.xpv = used[2];
    pip.ypv = used[3];
    pip.ang = used[4];
    cut_request cut{.mode = 0,
                    .lw = 1,
                    .kc = r.kc,
                    .n = static_cast<int>(r.cut.size() / 2),
                    .c1 = r.c1,
                    .dc = r.dc,
                    .data = std::move(r.cut)};
    pip.wct = static_cast<float>(cut.n) * cut.dc;
    if (!cut_window_stands()) return; // a stored cut that nothing here can show
    ximag_enable_flds(0);
    xi_hooks.xproc(cut);
    if (r.kwr > 0) popmsg("Warning: Cut may be invalid due to prior edit!");
}

static int picture_control(int asked, int mode) {
    if (goes_through_steps(asked)) return IMG_NEW;
    return mode == PI_PEAK_PARAMETERS || mode == PI_CUT ? IMG_SAME_ZOOM : IMG_NEW;
}

static void take_image(proimag_parms& pip, pi_result& r, int asked) {
    // A fresh centering changes no picture: the window closes over it.
    if (asked != PI_CENTER) show_result(pip, r, picture_control(asked, r.mode));
    if (r.mode == PI_PEAK_PARAMETERS) {
        pip.xc = r.xpk;
        pip.yc = r.ypk;
        pip.apk = r.apk;
    } else if (r.mode == PI_CUT) {
        open_cut(pip, r);
    } else if (r.mode == PI_CENTER) {
        pip.xc = r.xc;
        pip.yc = r.yc;
        if (asked == PI_CENTER)
            centre_data(r);
        else
            pass_centering(r);
    }
}

// --- One action

// Block and factors as they were before an action that was not done.
static void undo_request(proimag_parms& pip, int asked) {
    if (asked != PI_EDIT) pip.mode = xi.image_mode;
    if (asked == PI_INTERPOLATE && pip.nx > 0) {
        pip.ifx = img.ifx;
        pip.ify = img.ify;
    }
}

static pi_packed pack(const proimag_parms& pip) {
    if (pip.mode == PI_CENTER)
        if (std::string text = centering_refused(); !text.empty()) return {{}, std::move(text), false};
    pi_surroundings around{.f0 = user.f0,
                           .df = user.df,
                           .bw = user.bw,
                           .hclip = xi.hclip,
                           .polar = &xi.steps.geometry,
                           .jary = {}};
    std::vector<std::int32_t> stored;
    if (pip.mode == PI_RESTORE && jary) {
        image_steps ignored;
        if (!take_image_steps(jary.span(), stored, ignored)) stored.assign(jary.begin(), jary.end());
        around.jary = stored;
    }
    return pi_pack(pip, around);
}

// A fresh action has become a step.
static void note_step(const proimag_parms& pip, const pi_result& r, int asked, float hclip) {
    xi.changed = true;
    xi.steps.forget_from(r.step);
    if (asked == PI_PEAK_SCALING) xi.steps.clips.push_back({r.step, clip_level_of(pip, hclip)});
}

bool pi_apply(proimag_parms* block) {
    proimag_parms& pip = *block;
    const int asked = pip.mode;
    const pi_packed packed = pack(pip);
    if (packed.record.empty()) {
        if (packed.too_large) {
            pip.mode = xi.image_mode;
            pip.ifx = img.ifx;
            pip.ify = img.ify;
            journal_hooks.enable_fields(1);
        } else {
            undo_request(pip, asked);
        }
        popmsg(packed.refusal);
        return false;
    }
    const computation running;
    proimag(packed.record, result_words());
    if (asked == PI_END) return true;
    pi_result r;
    if (!pi_unpack(result_words(), r)) {
        undo_request(pip, asked);
        if (forms_image(asked)) kill_ximag();
        popmsg(r.message);
        return false;
    }
    // A step back never stops at a cut, whose window would come up.
    if (asked == PI_STEP && pip.nbu == -1 && r.mode == PI_CUT && r.step > 0) return pi_apply(block);
    if (asked == PI_GO && pip.nbu == 100) { // to the last step, on the way out
        pip.mode = r.mode;
        return true;
    }
    pip.count = r.step;
    pip.mode = xi.image_mode = r.mode;
    if (is_step(asked)) note_step(pip, r, asked, xi.hclip);
    if (goes_through_steps(asked)) unpass_centerings(r.step);
    switch (r.what) {
    case pi_result::IMAGE: take_image(pip, r, asked); break;
    case pi_result::DATA:
        if (asked == PI_WRITE)
            write_pfx_out(r.nfp, r.ntp, r.ksx, r.data);
        else
            show_step_below(pip, r.step);
        break;
    case pi_result::STATUS:
        if (asked != PI_STATUS) show_step_below(pip, r.step);
        break;
    case pi_result::CUT_STORED: pip.mode = xi.image_mode = PI_CUT; break;
    case pi_result::EXPORTED: keep_actions(r); break;
    default: break;
    }
    return true;
}

} // namespace norva
