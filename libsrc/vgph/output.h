#pragma once
// What displays and paper share: the walk over an object, cells of a colour image, colours made of switches.

#include "port/port.h"
#include "vgph/vgph.h"

#include <cstdint>
#include <functional>
#include <span>

namespace norva {

// Hands the vectors of `obj` to `out` in one or more spans of moves and draws. A span starts with a move
// unless the object does not. Circles and spots are generated, clip boxes applied, other pen codes passed
// over.
void vg_walk(const _vgobject& obj, const std::function<void(std::span<const _vgvec>)>& out);

// Draws w by h cells over the rectangle between two opposite corners. `turned`: the picture is turned a
// quarter turn to the left. Nothing is drawn when the span does not hold w*h cells.
void draw_cells(port_win dc, port_point corner1, port_point corner2, bool turned,
                std::span<const std::uint32_t> rgb, int w, int h);

// 1.0 and more is full, anything below nothing.
std::uint32_t switch_color(double r, double g, double b);

} // namespace norva
