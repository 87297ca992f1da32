// The picture of an image: what is kept of it, the zoom, and the drawing of its three types.
#include "draw/image_picture.h"

#include "contours.h"
#include "image_int.h"
#include "state/calls.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace norva {

image_picture xi_picture;
static kept_image img;

// --- Data

static float finite_or_zero(float v) {
    return std::isfinite(v) ? v : 0;
}

static void keep_amplitudes(const float* a, int nx, int ny) {
    img.nx0 = nx;
    img.ny0 = ny;
    img.asav.resize(static_cast<std::size_t>(nx) * static_cast<std::size_t>(ny));
    std::transform(a, a + img.asav.size(), img.asav.begin(), finite_or_zero);
    img.peak = *std::max_element(img.asav.begin(), img.asav.end());
    if (!(img.peak > 0)) return;
    const float part = 1 / img.peak;
    if (std::isfinite(part))
        for (float& v : img.asav) v *= part;
}

// Spacing of n samples from first to last. A single sample is one unit wide.
static double spacing(double first, double last, int n) {
    const double step = n > 1 ? (last - first) / (n - 1) : 0;
    return step > 0 ? step : 1;
}

// No gate is further away.
static bool plausible(const _vgdrect& r) {
    constexpr double far = 1e12;
    return std::fabs(r.x0) < far && std::fabs(r.y0) < far && std::fabs(r.x1) < far && std::fabs(r.y1) < far;
}

// Limits without extent take in half a sample on both sides.
static void widen(double& v0, double& v1, double step) {
    if (v1 - v0 > 1e-6 * step) return;
    v0 -= step / 2;
    v1 += step / 2;
}

static _vgdrect shown_limits(_vgdrect r) {
    widen(r.x0, r.x1, img.dx);
    widen(r.y0, r.y1, img.dy);
    return r;
}

// New limits inside those of the image.
static _vgdrect inside_image(_vgdrect r) {
    vg_norm_drect(r);
    const _vgdrect& all = img.level[0];
    return shown_limits({std::clamp(r.x0, all.x0, all.x1), std::clamp(r.y0, all.y0, all.y1),
                         std::clamp(r.x1, all.x0, all.x1), std::clamp(r.y1, all.y0, all.y1)});
}

static void keep_image(const _vgdrect& extent, const float* d, const float* x, const float* y, int npk,
                       const float* a, int nx, int ny) {
    img.d.clear();
    img.x.clear();
    img.y.clear();
    for (int k = 0; k < npk; k++) {
        if (!std::isfinite(d[k])) continue;
        img.d.push_back(d[k]);
        img.x.push_back(x[k]);
        img.y.push_back(y[k]);
    }
    keep_amplitudes(a, nx, ny);
    img.x1 = extent.x0;
    img.y1 = extent.y0;
    img.dx = spacing(extent.x0, extent.x1, nx);
    img.dy = spacing(extent.y0, extent.y1, ny);
    img.level[0] = shown_limits(extent);
}

sample_range samples_within(double first, double step, int n, double v0, double v1) {
    constexpr double slack = 1e-3; // of a sample, for limits that are rounded sample places
    const double low = std::ceil((v0 - first) / step - slack), high = std::floor((v1 - first) / step + slack);
    return {static_cast<int>(std::clamp(low, 0.0, static_cast<double>(n))),
            static_cast<int>(std::clamp(high, -1.0, n - 1.0))};
}

float image_amplitude(double x, double y) {
    if (img.asav.empty()) return 0;
    const double i = std::round((x - img.x1) / img.dx), j = std::round((y - img.y1) / img.dy);
    if (!(i >= 0 && i < img.nx0 && j >= 0 && j < img.ny0)) return 0;
    const float part = img.asav[static_cast<std::size_t>(j) * static_cast<std::size_t>(img.nx0) +
                                static_cast<std::size_t>(i)];
    return std::isfinite(1 / img.peak) ? part * img.peak : part;
}

// --- The three types

static void add_peaks(_vgframe& frame, _vgdataframe& df) {
    std::vector<float> radius(img.d.size());
    std::transform(img.d.begin(), img.d.end(), radius.begin(), [](float d) { return d / 2; });
    vgobject_ptr spots = vg_gph_spots_f(df, img.x, img.y, radius);
    vg_attr_object(*spots, 3, 0, 0);
    vg_add_object(frame, std::move(spots));
}

float dbn(float power, float least) {
    return power > 0 ? std::max(10 * std::log10(power), least) : least;
}

static void add_contours(_vgframe& frame, const _vgdataframe& df, const image_scaling& s) {
    const sample_range cols = samples_within(img.x1, img.dx, img.nx0, df.vx0, df.vx1);
    const sample_range rows = samples_within(img.y1, img.dy, img.ny0, df.vy0, df.vy1);
    if (cols.count() < 2 || rows.count() < 2) return;
    // Deep holes, zeros above all, are filled up to a little below the last contour: next to a bottomless one
    // the lines would stand on the samples.
    const float least = -0.5f * (static_cast<float>(s.nc) * s.dc + 40);
    std::vector<float> db;
    db.reserve(static_cast<std::size_t>(cols.count()) * static_cast<std::size_t>(rows.count()));
    for (int j = rows.first; j <= rows.last; j++) {
        const float* row = img.asav.data() + static_cast<std::size_t>(j) * img.nx0;
        for (int i = cols.first; i <= cols.last; i++) db.push_back(-2 * dbn(row[i], least));
    }
    vgobject_ptr lines = vg_new_object();
    vg_attr_object(*lines, 3, 0, 0);
    conturplt(*lines, df,
              {db, cols.count(), rows.count(), img.x1 + cols.first * img.dx, img.dx,
               img.y1 + rows.first * img.dy, img.dy},
              s.dc, s.nc, s.kc);
    vg_add_object(frame, std::move(lines));
}

// What stands against drawing these limits in this way; empty when nothing does.
static const char* objection(int type, const _vgdrect& limits) {
    const image_scaling& s = xi_picture.scaling;
    if (type == IMG_CONTOURS) {
        if (samples_within(img.x1, img.dx, img.nx0, limits.x0, limits.x1).count() > IMG_MAX_CONTOUR_COLUMNS)
            return "Crossrange dimension too large for contour plot.";
        if (s.nc > IMG_MAX_CONTOURS) return "Too many contours specified.  Must be < 51.";
    }
    if (type == IMG_COLOR && s.grd > get_ncolors())
        return "Error: not enough colors for color intensity image!";
    return nullptr;
}

static void build(_vgdisplay& disp, int type) {
    image_picture& p = xi_picture;
    lay_out_image(disp, p.xi_ascale, img.level[p.izoom], p.xy_df);
    p.frame = vg_new_frame();
    if (type == IMG_PEAKS) add_peaks(*p.frame, p.xy_df);
    if (type == IMG_CONTOURS) add_contours(*p.frame, p.xy_df, p.scaling);
    if (type == IMG_COLOR) add_scale_bar(*p.frame, disp, p.xy_df, p.scaling);
    vg_add_object(*p.frame, vg_standard_frame(p.xy_df));
    p.plot_type = type == IMG_COLOR ? 4 : type;
}

void draw_vg_img(_vgdisplay& disp, int control, int type, double x0, double y0, double x1, double y1,
                 const float* d, const float* x, const float* y, int npk, const float* a, int nx, int ny) {
    const _vgdrect given{x0, y0, x1, y1};
    image_picture& p = xi_picture;
    int izoom = p.izoom;
    if (control == IMG_NEW || control == IMG_SAME_ZOOM) {
        if (!a || nx < 1 || ny < 1 || !plausible(given)) return;
        keep_image(given, d, x, y, npk, a, nx, ny);
        if (control == IMG_NEW) p.izoom = izoom = 0;
        for (int k = 1; k <= izoom; k++) img.level[k] = inside_image(img.level[k]);
    }
    if (img.asav.empty()) return;
    if (control == IMG_ZOOM) {
        if (izoom >= IMG_ZOOM_LEVELS - 1) return popmsg("Cannot zoom any further!");
        if (!plausible(given)) return;
        img.level[++izoom] = inside_image(given);
    }
    if (control == IMG_UNZOOM && --izoom < 0) return popmsg("Cannot unzoom any further!");
    if (const char* why = objection(type, img.level[izoom])) return popmsg(why);
    p.izoom = izoom;
    build(disp, type);
    if (type == IMG_COLOR && control == IMG_REDRAW) draw_color_cells(disp, p.xy_df, img, p.scaling, p.chc);
}

void drop_vg_img() {
    img = {};
    xi_picture.frame.reset();
    xi_picture.izoom = 0;
    xi_picture.plot_type = 0;
}

_vgdrect image_limits() {
    return img.level[xi_picture.izoom];
}

} // namespace norva
