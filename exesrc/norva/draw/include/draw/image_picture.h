#pragma once
// The picture of an image: crossrange to the right, range upward, in gates and at one scale, shown as peaks,
// contours or a colour map, with a stack of zoom levels. What is laid over it is in draw/image_overlays.h.
//
// The window's part:
//   xi_picture.scaling = ...;                       // what its scaling windows hold
//   draw_vg_img(disp, IMG_NEW, type, x1, y1, xmax, ymax, dp, xp, yp, npk, a, nx, ny);
//   vg_clear(disp);                                 // to render, now and whenever the display needs it
//   if (type == IMG_COLOR) draw_vg_img(disp, IMG_REDRAW, type); // colour cells are not kept: draws them now
//   vg_render_frame(disp, xi_picture.frame.get());
//   ... then the overlays, once each: they are removed by drawing them again over this very picture.
// When the display changes its size: IMG_REDRAW, overlays made anew, and render.

#include "vgph/vggph.h"
#include "vgph/vgxw.h"
#include "vgph/winplot.h"

#include <cstdint>

namespace norva {

// What draw_vg_img is to do.
constexpr int IMG_NEW = 0;       // a new image: data are copied, the zoom starts anew at the image's limits
constexpr int IMG_ZOOM = 1;      // one level in, to the limits x0, y0, x1, y1
constexpr int IMG_UNZOOM = 2;    // one level out
constexpr int IMG_REDRAW = 3;    // the same again, in another type, scaling or size
constexpr int IMG_SAME_ZOOM = 4; // new data under the zoom that is set

// How it is shown.
constexpr int IMG_PEAKS = 0, IMG_CONTOURS = 1, IMG_COLOR = 2;

constexpr int IMG_ZOOM_LEVELS = 20;
constexpr int IMG_MAX_CONTOURS = 50;
constexpr int IMG_MAX_CONTOUR_COLUMNS = 4096; // crossrange samples shown as contours

// The settings of the scaling windows, within their limits.
struct image_scaling {
    float dc = 6; // contours: step, dB; the first lies one step below the largest amplitude
    int nc = 5;   // their number
    int kc = 0;   // labels on each level, at most; 0: none
    // Colours run from the low clip to the largest amplitude.
    float low_clip = 0.05f; // an amplitude of 0 to 1, or dB of -100 to 0
    bool db = false;        // the second
    int grd = 256;          // colours in use, at least 1 and at most get_ncolors()
    float delta = 10;       // dB between the numbers of the scale bar
};

struct image_picture {
    // in
    image_scaling scaling;
    float xi_ascale = 1;        // size of the axes against texts and spots: 2 makes those half as large. At
                                // least 0.5 and at most 8 are used
    _vghardcopy* chc = nullptr; // the hardcopy in progress: IMG_REDRAW then sends the colour cells there,
                                // and not to the display
    // out
    _vgdataframe xy_df; // the frame: what turns plot inches into gates (vg_x_val, vg_y_val) and back
    vgframe_ptr frame;  // the picture; of a colour map everything but the cells. Empty before the first image
    int plot_type = 0;  // 0 peaks, 1 contours, 4 colour
    int izoom = 0;      // zoom level, 0 to 19
};
extern image_picture xi_picture; // one image at a time

// Makes xi_picture.frame and xy_df for a display, which gets the shape of its draw area.
//   type         IMG_PEAKS, IMG_CONTOURS, IMG_COLOR
//   x0 to y1     new data: place of the first and of the last sample, gates; IMG_ZOOM: two corners
//   d, x, y, npk the peaks: diameters in plot inches, places in gates
//   a, nx, ny    amplitudes, ny rows of nx, range increasing from row to row. What is no finite number counts
//                as 0
// x and y have one scale unless a side would be shorter than half an inch. By popmsg, leaving the picture as
// it is: "Cannot zoom any further!", "Cannot unzoom any further!", "Crossrange dimension too large for
// contour plot.", "Too many contours specified.  Must be < 51.", "Error: not enough colors for color
// intensity image!".
void draw_vg_img(_vgdisplay& disp, int control, int type, double x0 = 0, double y0 = 0, double x1 = 0,
                 double y1 = 0, const float* d = nullptr, const float* x = nullptr, const float* y = nullptr,
                 int npk = 0, const float* a = nullptr, int nx = 0, int ny = 0);

// Forgets the image, its zoom and the picture; settings stay.
void drop_vg_img();

// The limits shown, gates: of the current zoom level.
_vgdrect image_limits();

// Amplitude, as it was given, of the sample nearest to a point in gates; 0 outside the image.
float image_amplitude(double x, double y);

// --- Colours of the colour map: of equal perceived steps and rising lightness, from near black (0) to a
// light yellow (1), so that it reads in grey and without seeing red or green.
int get_ncolors();
int col_indx(double value);                // 0 to get_ncolors() - 1; what is no number counts as 0
std::uint32_t get_img_color(double value); // 24 bits, red in the low byte

} // namespace norva
