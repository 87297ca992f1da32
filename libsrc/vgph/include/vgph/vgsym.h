#pragma once
// Shapes made of vectors: stroke text, circles and spots.

#include "vgph/vgph.h"

#include <string_view>
#include <vector>

namespace norva {

// --- Stroke text. `h` is the height of a capital letter, `rot` the writing direction in degrees,
// counterclockwise; x0, y0 is the lower left corner of the text. Characters outside ASCII 32 to 126 are
// skipped.

// Width of a text, plot inches.
float vg_symlen(float h, std::string_view s);
// Adds a text to an object.
void vg_obj_sym(_vgobject& obj, float x0, float y0, float h, float rot, std::string_view s);
// A new object with a text.
vgobject_ptr vg_symbol(float x0, float y0, float height, float rot, std::string_view str);

// --- Circles and spots

// Add a circle (spot) of radius r at x, y to an object, clipped to the box x0, y0 to x1, y1 when drawn. All
// plot inches.
void vg_circle_clip(_vgobject& obj, float r, float x, float y, float x0, float y0, float x1, float y1);
void vg_spot_clip(_vgobject& obj, float r, float x, float y, float x0, float y0, float x1, float y1);

// The moves and draws that make a circle or a spot, appended to `out`. The chords of a circle stay within
// 1/density of it; the strokes of a spot lie 1/density apart. A radius that is no number adds nothing.
void vg_vecgen_circle(float x, float y, float r, std::vector<_vgvec>& out);
void vg_vecgen_spot(float x, float y, float r, std::vector<_vgvec>& out);
void vg_vecgen_circle_clip(float x, float y, float r, const _vgrect& clip, std::vector<_vgvec>& out);
void vg_vecgen_spot_clip(float x, float y, float r, const _vgrect& clip, std::vector<_vgvec>& out);
// Sets the density, in dots per inch, when above 0. It starts at 300.
void vg_vecgen_dotdensity(int iden);

} // namespace norva
