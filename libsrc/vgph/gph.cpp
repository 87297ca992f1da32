// Data frames: values to plot inches, and curves clipped to the frame.

#include "vgph/vggph.h"
#include "vgph/vgsym.h"

#include <algorithm>
#include <cmath>

namespace norva {

void vg_init_default_df(_vgdataframe& df, double vx0, double vx1, double vy0, double vy1,
                        std::string_view xlab, std::string_view ylab) {
    df = {};
    df.x0 = df.y0 = 1.0f;
    df.xlen = 6.0f;
    df.ylen = 4.0f;
    df.vx0 = vx0;
    df.vx1 = vx1;
    df.vy0 = vy0;
    df.vy1 = vy1;
    df.xlabel = xlab;
    df.ylabel = ylab;
    df.dolims = 1;
}

// Scale of one direction: inches per unit, or none for a span that is zero or no number.
static void set_scale(float pos, float len, double span, double& scale, int& ok, float& badloc) {
    const double s = len / span;
    ok = span != 0 && std::isfinite(span) && std::isfinite(s);
    scale = ok ? s : 0;
    badloc = pos + len * 0.5f;
}

void vg_gph_init(_vgdataframe& df) {
    df.dx = df.vx1 - df.vx0;
    df.dy = df.vy1 - df.vy0;
    df.datbox = {df.vx0, df.vy0, df.vx1, df.vy1};
    vg_norm_drect(df.datbox);
    df.pltbox = {df.x0, df.y0, df.x0 + df.xlen, df.y0 + df.ylen};
    vg_norm_rect(df.pltbox);
    set_scale(df.x0, df.xlen, df.dx, df.xscale, df.xok, df.xbadloc);
    set_scale(df.y0, df.ylen, df.dy, df.yscale, df.yok, df.ybadloc);
    df.lstx = df.lsty = 0;
    df.lstok = 0;
}

void vg_gph_reset(_vgdataframe& df) {
    df.lstok = 0;
}

// In double: a zoomed curve reaches far outside the frame, and its cut must still fall on the line.
static double x_inch(const _vgdataframe& df, double v) {
    return df.xok ? df.x0 + (v - df.vx0) * df.xscale : df.xbadloc;
}
static double y_inch(const _vgdataframe& df, double v) {
    return df.yok ? df.y0 + (v - df.vy0) * df.yscale : df.ybadloc;
}

float vg_x_loc(const _vgdataframe& df, double xval) {
    return static_cast<float>(x_inch(df, xval));
}
float vg_y_loc(const _vgdataframe& df, double yval) {
    return static_cast<float>(y_inch(df, yval));
}

double vg_x_val(const _vgdataframe& df, float xpos) {
    return df.xok && df.xscale != 0 ? df.vx0 + (xpos - df.x0) / df.xscale : df.vx0;
}
double vg_y_val(const _vgdataframe& df, float ypos) {
    return df.yok && df.yscale != 0 ? df.vy0 + (ypos - df.y0) / df.yscale : df.vy0;
}

static void plot(_vgobject& obj, double x, double y, int pendown) {
    vg_plot_object(obj, static_cast<float>(x), static_cast<float>(y), pendown);
}

void vg_gph_point(_vgobject& obj, _vgdataframe& df, double xval, double yval) {
    if (!std::isfinite(xval) || !std::isfinite(yval)) {
        df.lstok = 0;
        return;
    }
    constexpr int outside = 1, inside = 2;
    const int ok = vg_indrect(df.datbox, xval, yval) ? inside : outside;
    const double x = x_inch(df, xval), y = y_inch(df, yval);
    if (df.lstok == inside && ok == inside) {
        plot(obj, x, y, 1);
    } else if (df.lstok) {
        const _vgrect& box = df.pltbox;
        _vgdrect part;
        if (vg_clip({box.x0, box.y0, box.x1, box.y1}, {x_inch(df, df.lstx), y_inch(df, df.lsty), x, y},
                    part)) {
            plot(obj, part.x0, part.y0, 0);
            plot(obj, part.x1, part.y1, 1);
        }
        if (ok == inside) plot(obj, x, y, 0);
    } else if (ok == inside) {
        plot(obj, x, y, 0);
    }
    df.lstx = xval;
    df.lsty = yval;
    df.lstok = ok;
}

template <class T> static vgobject_ptr line_xy(_vgdataframe& df, std::span<const T> x, std::span<const T> y) {
    vg_gph_init(df);
    vgobject_ptr obj = vg_new_object();
    const std::size_t n = std::min(x.size(), y.size());
    obj->veclst.reserve(n + 2);
    for (std::size_t i = 0; i < n; i++) vg_gph_point(*obj, df, x[i], y[i]);
    return obj;
}

vgobject_ptr vg_gph_line_xy(_vgdataframe& df, std::span<const float> x, std::span<const float> y) {
    return line_xy(df, x, y);
}
vgobject_ptr vg_gph_line_xy_d(_vgdataframe& df, std::span<const double> x, std::span<const double> y) {
    return line_xy(df, x, y);
}

template <class T>
static vgobject_ptr line_y_xdelt(_vgdataframe& df, std::span<const T> y, double x0, double xdelt) {
    vg_gph_init(df);
    vgobject_ptr obj = vg_new_object();
    obj->veclst.reserve(y.size() + 2);
    for (std::size_t i = 0; i < y.size(); i++)
        vg_gph_point(*obj, df, x0 + static_cast<double>(i) * xdelt, y[i]);
    return obj;
}

vgobject_ptr vg_gph_line_y_xdelt(_vgdataframe& df, std::span<const float> y, double x0, double xdelt) {
    return line_y_xdelt(df, y, x0, xdelt);
}
vgobject_ptr vg_gph_line_y_xdelt_d(_vgdataframe& df, std::span<const double> y, double x0, double xdelt) {
    return line_y_xdelt(df, y, x0, xdelt);
}

template <class T>
static vgobject_ptr horiz_scat(_vgdataframe& df, std::span<const T> x, std::span<const T> y, double xlen) {
    vg_gph_init(df);
    vgobject_ptr obj = vg_new_object();
    for (std::size_t i = 0; i < std::min(x.size(), y.size()); i++) {
        vg_gph_reset(df);
        vg_gph_point(*obj, df, x[i] - xlen / 2, y[i]);
        vg_gph_point(*obj, df, x[i] + xlen / 2, y[i]);
    }
    return obj;
}

vgobject_ptr vg_gph_horiz_scat_xy(_vgdataframe& df, std::span<const float> x, std::span<const float> y,
                                  double xlen) {
    return horiz_scat(df, x, y, xlen);
}
vgobject_ptr vg_gph_horiz_scat_xy_d(_vgdataframe& df, std::span<const double> x, std::span<const double> y,
                                    double xlen) {
    return horiz_scat(df, x, y, xlen);
}

template <class T>
static vgobject_ptr spots(_vgdataframe& df, std::span<const T> x, std::span<const T> y,
                          std::span<const T> z) {
    vg_gph_init(df);
    vgobject_ptr obj = vg_new_object();
    for (std::size_t i = 0; i < std::min({x.size(), y.size(), z.size()}); i++) {
        if (!vg_indrect(df.datbox, x[i], y[i])) continue;
        vg_plot_object(*obj, vg_x_loc(df, x[i]), vg_y_loc(df, y[i]), 0);
        vg_plot_obj(*obj, static_cast<float>(z[i]), 0, vg_pen_spot);
    }
    return obj;
}

vgobject_ptr vg_gph_spots_f(_vgdataframe& df, std::span<const float> x, std::span<const float> y,
                            std::span<const float> zarray) {
    return spots(df, x, y, zarray);
}
vgobject_ptr vg_gph_spots_d(_vgdataframe& df, std::span<const double> x, std::span<const double> y,
                            std::span<const double> zarray) {
    return spots(df, x, y, zarray);
}

} // namespace norva
