// The picture in the range profile window, on the display and on paper.
#include "range_int.h"

#include "draw/overlays.h"
#include "profiles/plot_window.h"
#include "signal/numbers.h"
#include "state/run.h"
#include "state/user.h"
#include "vgph/winplot.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>

namespace norva {

constexpr double LIGHT = 299.792458;                  // m per microsecond
constexpr float DISPLAY_HEIGHT = 5, MIN_WIDTH = 6.4f; // plot inches; below that the notes would collide

// The display takes the shape of the draw area, so that the picture fills it at any window size.
static void fit_display() {
    vg_resize(*rp.disp, 1, 1, 0); // learns the client size
    const float nx = static_cast<float>(rp.disp->nx), ny = static_cast<float>(rp.disp->ny);
    if (nx < 1 || ny < 1) return;
    const float width = std::max(DISPLAY_HEIGHT * nx / ny, MIN_WIDTH);
    vg_resize(*rp.disp, width, width * ny / nx, 0);
}

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
    fit_display();
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
    // Fills a sheet of 11 by 8.5 inches up to a margin on all sides, with the journal's name on top.
    const float margin = 0.5f, header = 0.3f;
    const float scale =
        std::min((11 - 2 * margin) / rp.disp->xsize, (8.5f - 2 * margin - header) / rp.disp->ysize);
    vghardcopy_ptr hc = vg_hc_init("range profile", 0, scale, scale, margin, margin, 1);
    vg_hc_frame(*hc, rp.picture.frame.get());
    vg_hc_frame(*hc, rp.box.get());
    vg_hc_object(*hc, rp.line.get());
    hc_hdr(*hc, 0, rp.disp->ysize + 0.1f, user.jfile);
    const bool opened = hc->context != 0;
    vg_hc_done(*hc);
    std::error_code ignored;
    return opened && std::filesystem::exists(hc->tfname, ignored) ? hc->tfname : "";
}

} // namespace norva
