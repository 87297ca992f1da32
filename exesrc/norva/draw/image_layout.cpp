// Where the image stands on its display.
#include "image_int.h"

#include <algorithm>
#include <cmath>

namespace norva {

// Around the frame, plot inches: axis labels on the left and below, the scale bar on the right, control box,
// last action and limit labels on top. The same for all types, so that a change of type moves nothing.
constexpr float LEFT = 0.6f, RIGHT = 1.05f, BOTTOM = 0.55f, TOP = 0.75f;
constexpr float SHORT_SIDE = 5; // of the display, at a scaling of the axes of 1
constexpr float LEAST_AXIS = 0.5f;
constexpr float LEAST_SCALING = 0.5f, MOST_SCALING = 8;

static void fit_display(_vgdisplay& disp, float ascale) {
    vg_resize(disp, 1, 1, 0); // learns the client size
    const float nx = static_cast<float>(disp.nx), ny = static_cast<float>(disp.ny);
    const float side = SHORT_SIDE * (ascale > 0 ? std::clamp(ascale, LEAST_SCALING, MOST_SCALING) : 1);
    if (nx < 1 || ny < 1)
        vg_resize(disp, side, side, 0); // nothing to see, but a frame for what is made meanwhile
    else if (nx < ny)
        vg_resize(disp, side, side * ny / nx, 0);
    else
        vg_resize(disp, side * nx / ny, side, 0);
}

void lay_out_image(_vgdisplay& disp, float ascale, const _vgdrect& limits, _vgdataframe& df) {
    fit_display(disp, ascale);
    df = {};
    vg_init_default_df(df, limits.x0, limits.x1, limits.y0, limits.y1, "Crossrange (gates)", "Range (gates)");
    const double width = disp.xsize - LEFT - RIGHT, height = disp.ysize - BOTTOM - TOP;
    const double xspan = limits.x1 - limits.x0, yspan = limits.y1 - limits.y0;
    const double scale = std::min(width / xspan, height / yspan);
    df.xlen = std::max(static_cast<float>(scale * xspan), LEAST_AXIS);
    df.ylen = std::max(static_cast<float>(scale * yspan), LEAST_AXIS);
    df.x0 = LEFT + (static_cast<float>(width) - df.xlen) / 2;
    df.y0 = BOTTOM + (static_cast<float>(height) - df.ylen) / 2;
    vg_gph_init(df);
}

} // namespace norva
