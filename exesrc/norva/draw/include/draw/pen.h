#pragma once
// A pen as plotters had it: moves and lines in plot inches, after the calls of that name.

#include "vgph/vggph.h"

#include <string_view>

namespace norva {

constexpr int PEN_DOWN = 2, PEN_UP = 3;

// Moves the pen to x, y, drawing on the way when it is down. Another pen gives "Bad pen input to plot_()!"
// and draws nothing.
void plot(_vgobject& obj, float x, float y, int pen);

// A text with letters of this height from x, y on, at `angle` degrees.
void symbal(_vgobject& obj, float x, float y, float height, std::string_view text, float angle);

} // namespace norva
