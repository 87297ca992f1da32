#pragma once
// The stroke font, packed. A glyph is a row of 16-bit words; x stands in the low byte and y in the next one,
// both as 64 minus the coordinate:
//
//   first word      left and right bearing in the place of x and y: how far the pen moves before and after
//   the strokes 16384           pen up: the next word is a move; every glyph starts so 0               end of
//   the glyph
//
// A cell is 21 units high: the height of a capital letter. y = 0 lies in the middle of the cell, the foot of
// the letters at -10. The readable source of the table is in font.cpp.

#include <cstdint>
#include <span>

namespace norva {

constexpr int font_cell = 21;
constexpr std::uint16_t font_pen_up = 16384;

constexpr int font_x(std::uint16_t word) {
    return 64 - (word & 0xff);
}
constexpr int font_y(std::uint16_t word) {
    return 64 - (word >> 8);
}

// The words of a glyph, first to the one before the zero; empty for a character without one (also for codes
// of 128 on).
std::span<const std::uint16_t> font_glyph(unsigned char code);

} // namespace norva
