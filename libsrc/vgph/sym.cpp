// Stroke text.

#include "font.h"
#include "vgph/vgsym.h"

#include <cmath>
#include <numbers>

namespace norva {

float vg_symlen(float h, std::string_view s) {
    int units = 0;
    for (char c : s) {
        const auto glyph = font_glyph(static_cast<unsigned char>(c));
        if (!glyph.empty()) units += font_x(glyph[0]) + font_y(glyph[0]);
    }
    return units * (h / font_cell);
}

void vg_obj_sym(_vgobject& obj, float x0, float y0, float h, float rot, std::string_view s) {
    const double scale = static_cast<double>(h) / font_cell;
    const double a = rot * std::numbers::pi / 180;
    const double cosa = std::cos(a), sina = std::sin(a);
    int pen_at = 0; // units along the line of writing
    for (char c : s) {
        const auto glyph = font_glyph(static_cast<unsigned char>(c));
        if (glyph.empty()) continue;
        pen_at += font_x(glyph[0]); // left bearing
        int pendown = 1;
        for (std::uint16_t word : glyph.subspan(1)) {
            if (word == font_pen_up) {
                pendown = 0;
                continue;
            }
            const double along = (pen_at + font_x(word)) * scale;
            const double up = h * 0.5 + font_y(word) * scale;
            vg_plot_object(obj, static_cast<float>(x0 + along * cosa - up * sina),
                           static_cast<float>(y0 + along * sina + up * cosa), pendown);
            pendown = 1;
        }
        pen_at += font_y(glyph[0]); // right bearing
    }
}

vgobject_ptr vg_symbol(float x0, float y0, float height, float rot, std::string_view str) {
    vgobject_ptr obj = vg_new_object();
    vg_obj_sym(*obj, x0, y0, height, rot, str);
    return obj;
}

} // namespace norva
