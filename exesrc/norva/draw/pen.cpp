// Moves and lines of a plotter's pen.
#include "draw/pen.h"

#include "state/calls.h"
#include "vgph/vgsym.h"

namespace norva {

void plot(_vgobject& obj, float x, float y, int pen) {
    if (pen != PEN_DOWN && pen != PEN_UP)
        popmsg("Bad pen input to plot_()!");
    else
        vg_plot_object(obj, x, y, pen == PEN_DOWN);
}

void symbal(_vgobject& obj, float x, float y, float height, std::string_view text, float angle) {
    vg_obj_sym(obj, x, y, height, angle, text);
}

} // namespace norva
