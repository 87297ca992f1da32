// The picture in the range profile window, on the display and on paper.
#include "range_int.h"

#include "draw/overlays.h"
#include "profile_parts.h"
#include "profiles/plot_window.h"
#include "signal/numbers.h"
#include "state/run.h"
#include "state/user.h"

#include <algorithm>
#include <cmath>

namespace norva {

constexpr double LIGHT = 299.792458; // m per microsecond

static double finite_or_zero(double v) {
    return std::isfinite(v) ? v : 0;
}

static void describe_profiles(rp_picture& p) {
    p.r1 = rp.r1;
    p.dr = rp.dr;
    p.nr = user.nr;
    p.t0 = user.t0;
    p.dt = user.dt;
    p.rpdata = {};
    if (have_profiles()) p.rpdata = user.rpdata.span().first(static_cast<std::size_t>(rp.nt) * user.nr);
    const plot_settings settings = plotwin_settings();
    p.height = settings.height;
    p.truncation = settings.truncation;
    p.scaling = settings.scaling;
    p.gate_metres = finite_or_zero(LIGHT / 2 / std::fabs(user.bw));
    p.prf = finite_or_zero(1 / static_cast<double>(user.wfri));
    p.xlam = finite_or_zero(LIGHT / cfreq(user.f0, user.df, user.nf));
    p.nsamp = user.nf;
    p.r0 = kw_r0;
}

void build_picture() {
    if (!rp.disp) return;
    fit_display(*rp.disp);
    rp_picture& p = rp.picture;
    describe_profiles(p);
    const time_span span = drawable_span(range_records(), rp.span);
    p.stime = span.stime;
    p.etime = span.etime;
    draw_vg_rp(*rp.disp, p);
    rp.span = {p.stime, p.etime, 0.5 * (p.stime + p.etime)};
    plotwin_put_times(rp.span.interval(), rp.span.ctime);
}

void render() {
    if (!rp.disp) return;
    vg_clear(*rp.disp);
    vg_render_frame(*rp.disp, rp.picture.frame.get());
    draw_vg_cbox(*rp.disp, rp.box, user.count);
    vg_render_frame(*rp.disp, rp.box.get());
    vg_render_object(*rp.disp, rp.line.get());
}

void redraw() {
    build_picture();
    render();
}

void drop_picture() {
    vg_del_frame(rp.picture.frame);
    vg_del_frame(rp.box);
}

std::string range_hardcopy() {
    if (!rp.disp || !rp.picture.frame) return "";
    return profile_hardcopy("range profile", *rp.disp, rp.picture.frame.get(), rp.box.get(), rp.line.get());
}

} // namespace norva
