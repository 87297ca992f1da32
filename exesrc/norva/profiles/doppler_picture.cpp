// The picture in the Doppler profile window, on the display and on paper.
#include "doppler_int.h"

#include "draw/overlays.h"
#include "profile_parts.h"
#include "profiles/plot_window.h"
#include "state/user.h"

#include <cmath>

namespace norva {

static void describe_profiles(dp_picture& p) {
    p.d1 = dp.d1;
    p.dd = dp.dd;
    p.nf = dp.nf;
    p.t0 = user.dp_t0;
    p.dt = dp.dt;
    p.dpdata = user.dpdata.span().first(static_cast<std::size_t>(dp.nf) * user.dp_nc);
    const plot_settings settings = plotwin_settings();
    p.height = settings.height;
    p.truncation = settings.truncation;
    p.scaling = dp.power ? PLOT_POWER : PLOT_AMPLITUDE;
    const double hertz = 1 / (static_cast<double>(user.dt) * dp.ni);
    p.gate_hertz = std::isfinite(hertz) ? hertz : 0;
    p.wdw = dp.ni;
    p.ifact = dp.ip;
    p.lag = user.dp_lag;
}

void build_doppler() {
    if (!dp.disp) return;
    fit_display(*dp.disp);
    if (!have_doppler()) {
        drop_doppler();
        return;
    }
    dp_picture& p = dp.picture;
    describe_profiles(p);
    const time_span span = drawable_span(doppler_rows(), dp.span);
    p.stime = span.stime;
    p.etime = span.etime;
    draw_vg_dp(*dp.disp, p);
    dp.span = {p.stime, p.etime, 0.5 * (p.stime + p.etime)};
    plotwin_put_times(dp.span.interval(), dp.span.ctime);
}

void render_doppler() {
    if (!dp.disp) return;
    vg_clear(*dp.disp);
    vg_render_frame(*dp.disp, dp.picture.frame.get());
    draw_vg_cbox(*dp.disp, dp.box, user.count);
    vg_render_frame(*dp.disp, dp.box.get());
}

void drop_doppler() {
    vg_del_frame(dp.picture.frame);
    vg_del_frame(dp.box);
}

std::string doppler_hardcopy() {
    if (!dp.disp || !dp.picture.frame) return "";
    return profile_hardcopy("Doppler profile", *dp.disp, dp.picture.frame.get(), dp.box.get(), nullptr);
}

} // namespace norva
