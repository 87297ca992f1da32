#pragma once
// What the files of the image picture share.

#include "draw/image_picture.h"

#include <span>
#include <vector>

namespace norva {

// The image that is shown. Amplitudes are held as parts of the largest one; `peak` makes them what was given.
struct kept_image {
    std::vector<float> d, x, y; // peaks: spot diameters, places
    int nx0 = 0, ny0 = 0;
    std::vector<float> asav;
    float peak = 0;
    double x1 = 0, dx = 0, y1 = 0, dy = 0; // first sample and spacing, gates; spacings are never 0
    _vgdrect level[IMG_ZOOM_LEVELS];       // limits of the zoom levels
};

// Gives the display the shape of its draw area and sets the frame for these limits.
void lay_out_image(_vgdisplay& disp, float ascale, const _vgdrect& limits, _vgdataframe& df);

// Samples of one axis, counted from 0: those at limits v0 to v1, and whether there are any.
struct sample_range {
    int first = 0, last = -1;
    int count() const { return last - first + 1; }
};
sample_range samples_within(double first, double step, int n, double v0, double v1);

// The colour cells of the frame's area and of the scale bar go to the display, or to the hardcopy.
void draw_color_cells(const _vgdisplay& disp, const _vgdataframe& df, const kept_image& img,
                      const image_scaling& s, _vghardcopy* hc);
void add_scale_bar(_vgframe& frame, const _vgdisplay& disp, const _vgdataframe& df, const image_scaling& s);

} // namespace norva
