#pragma once
// Graphs: a data frame that maps data values to plot inches, curves clipped to it, and axes with round steps.

#include "vgph/vgph.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace norva {

// --- Rectangles

// Order the corners: x0 <= x1, y0 <= y1.
void vg_norm_rect(_vgrect& r);
void vg_norm_drect(_vgdrect& r);
// 1 when the point lies in the ordered box, edges included.
int vg_inrect(const _vgrect& r, float x, float y);
int vg_indrect(const _vgdrect& r, double x, double y);

// Clips the segment (x0, y0)-(x1, y1) of `line` to the ordered box. Returns 0 when nothing is left and `out`
// is not to be used; otherwise `out` is the part inside, in the same direction, cut ends exactly on the edge.
int vg_clip(const _vgrect& box, const _vgrect& line, _vgrect& out);
int vg_clip(const _vgdrect& box, const _vgdrect& line, _vgdrect& out);
// Where the line through the segment has the given x (y): the other coordinate. Returns 0 when the segment
// does not reach it.
int vg_x_seg(const _vgdrect& line, double x, double& y);
int vg_y_seg(const _vgdrect& line, double y, double& x);

// --- Data frames

struct _vgdataframe {
    float x0 = 0, y0 = 0, xlen = 0, ylen = 0;  // position and lengths, plot inches
    double vx0 = 0, vx1 = 0, vy0 = 0, vy1 = 0; // data limits; falling limits are fine
    std::string xlabel, ylabel;
    int dolims = 0;                // label the limits
    int doaux = 0;                 // second vertical scale ...
    double vauxy0 = 0, vauxy1 = 0; // ... its limits
    std::string auxlabel;          // ... and its label
    // From here on set by vg_gph_init.
    double dx = 0, dy = 0;          // spans vx1 - vx0, vy1 - vy0
    _vgdrect datbox;                // data limits, ordered
    _vgrect pltbox;                 // position, ordered
    double xscale = 0, yscale = 0;  // inches per data unit
    int xok = 0, yok = 0;           // the span is not zero
    float xbadloc = 0, ybadloc = 0; // where everything goes when it is
    double lstx = 0, lsty = 0;      // last point of a line; valid when lstok is not 0:
    int lstok = 0;                  // 0 none, 1 outside the limits, 2 inside
};

// The default frame: at 1.0, 1.0, 6.0 by 4.0 inches, limits labelled.
void vg_init_default_df(_vgdataframe& df, double vx0, double vx1, double vy0, double vy1,
                        std::string_view xlab, std::string_view ylab);
// Prepares a frame whose position and limits are set. To be called again after any change of them.
void vg_gph_init(_vgdataframe& df);
// The next point starts a new line.
void vg_gph_reset(_vgdataframe& df);

// Data to plot inches and back. A zero span puts all values at the middle of the axis, and gives vx0 (vy0)
// back.
float vg_x_loc(const _vgdataframe& df, double xval);
float vg_y_loc(const _vgdataframe& df, double yval);
double vg_x_val(const _vgdataframe& df, float xpos);
double vg_y_val(const _vgdataframe& df, float ypos);

// The next point of a line, which is clipped to the frame. A value that is no number ends the line.
void vg_gph_point(_vgobject& obj, _vgdataframe& df, double xval, double yval);

// Whole curves: each prepares the frame and makes an object. The shorter array counts.
vgobject_ptr vg_gph_line_xy(_vgdataframe& df, std::span<const float> x, std::span<const float> y);
vgobject_ptr vg_gph_line_xy_d(_vgdataframe& df, std::span<const double> x, std::span<const double> y);
// y at x0, x0 + xdelt, x0 + 2 xdelt ...
vgobject_ptr vg_gph_line_y_xdelt(_vgdataframe& df, std::span<const float> y, double x0, double xdelt);
vgobject_ptr vg_gph_line_y_xdelt_d(_vgdataframe& df, std::span<const double> y, double x0, double xdelt);
// Horizontal bars of length xlen (data units) centred on the points.
vgobject_ptr vg_gph_horiz_scat_xy(_vgdataframe& df, std::span<const float> x, std::span<const float> y,
                                  double xlen);
vgobject_ptr vg_gph_horiz_scat_xy_d(_vgdataframe& df, std::span<const double> x, std::span<const double> y,
                                    double xlen);
// Spots of radius z (plot inches) at the points that lie inside the limits.
vgobject_ptr vg_gph_spots_f(_vgdataframe& df, std::span<const float> x, std::span<const float> y,
                            std::span<const float> zarray);
vgobject_ptr vg_gph_spots_d(_vgdataframe& df, std::span<const double> x, std::span<const double> y,
                            std::span<const double> zarray);

// --- Axes

constexpr float vg_tic_label_height = 0.07f;
constexpr float vg_axis_label_height = 0.12f;

// One axis. The caller sets the inputs; vg_draw_axis fills the rest.
struct _vgaxisparm {
    double lim0 = 0, lim1 = 0;        // in: limits; falling limits are fine
    int nospan = 0;                   // 1: the limits do not span a usable range
    int inctype = 0;                  // chosen step: 1, 2 or 5
    int nlabs = 0;                    // number of major values
    std::array<double, 50> labvals{}; // the major values
    double incval = 0;                // the step, with sign
    int incsign = 0;                  // 1 for falling limits
    int inctens = 0;                  // power of ten of the step
    int axiserr = 0;                  // 1 after a numeric failure ...
    std::string errstr;               // ... told here
    float x0 = 0, y0 = 0, alen = 0;   // in: start and length, plot inches
    float min_minor = 0.02f;          // in: least spacing of minor tics, inches
    int dolabs = 0;                   // in: draw tic labels
    int reverse = 0;                  // in: tics and labels above (right of) the line, not below (left)
    int r90 = 0;                      // in: 1 for a vertical axis
    int doendlabs = 0;                // in: draw the limit labels
    double lim0j = 0, lim1j = 0;      // limits moved outward by one unit in the 13th digit
    double scale = 0;                 // inches per data unit
};

// Chooses the step and draws the line, tics and labels into `obj`. Tic labels take the strip from 0.135 to
// 0.205 inches off the line, on the side of the tics; limit labels stand outside that. Limits that span no
// usable range get one labelled tic in the middle.
void vg_draw_axis(_vgobject& obj, _vgaxisparm& a);

// One axis as an object. `horiz`: horizontal; `left`: tics below a horizontal, left of a vertical axis;
// `dolab`: tic labels; `dolims`: limit labels.
vgobject_ptr vg_axis(float x0, float y0, float len, double v0, double v1, int horiz, int left, int dolab,
                     int dolims);
// The box of four axes around a frame, with its labels and second scale.
vgobject_ptr vg_standard_frame(const _vgdataframe& df);

} // namespace norva
