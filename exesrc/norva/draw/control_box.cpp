// The control box of the analysis windows: the journal position, and the place where a click moves it.
#include "draw/overlays.h"

#include "state/calls.h"
#include "state/defaults.h"
#include "vgph/vgsym.h"

#include <cstdio>

namespace norva {

constexpr float DIGIT_GAP = 0.1f; // between the last two digits and the others

cbox_digits split_cbox_number(int num) {
    char text[16];
    const int width = num <= 99 ? 2 : num < 10000 ? 4 : 6;
    std::snprintf(text, sizeof text, "%0*d", width, num);
    const std::string digits = text;
    if (width == 2) return {digits, ""};
    return {digits.substr(0, digits.size() - 2), digits.substr(digits.size() - 2)};
}

bool in_cbox(const _vgdisplay& disp, float x, float y) {
    return x < def.cbox_xsz && y > disp.ysize - def.cbox_ysz;
}

void draw_vg_cbox(const _vgdisplay& disp, vgframe_ptr& box, int num) {
    if (num < 0 || num > 999999) {
        popmsg("ERROR: bad num in draw_cbox()");
        return;
    }
    const float xsz = def.cbox_xsz, ysz = def.cbox_ysz;
    const float bottom = disp.ysize - ysz;
    const float inset = 1 / (disp.xpinch > 0 ? disp.xpinch : 100); // the outermost pixels are not shown
    vgobject_ptr outline = vg_new_object();
    vg_plot_object(*outline, 0, bottom, 0);
    vg_plot_object(*outline, xsz, bottom, 1);
    vg_plot_object(*outline, xsz, disp.ysize - inset, 1);
    vg_plot_object(*outline, 0, disp.ysize - inset, 1);
    vg_plot_object(*outline, 0, bottom, 1);

    const cbox_digits digits = split_cbox_number(num);
    const float height = ysz / 2;
    float width = vg_symlen(height, digits.front);
    if (!digits.last.empty()) width += DIGIT_GAP + vg_symlen(height, digits.last);
    const float x = (xsz - width) / 2, y = bottom + (ysz - height) / 2;
    vgobject_ptr number = vg_new_object();
    vg_obj_sym(*number, x, y, height, 0, digits.front);
    if (!digits.last.empty())
        vg_obj_sym(*number, x + vg_symlen(height, digits.front) + DIGIT_GAP, y, height, 0, digits.last);
    vg_attr_object(*number, 1, 0, 3);

    box = vg_new_frame();
    vg_add_object(*box, std::move(outline));
    vg_add_object(*box, std::move(number));
}

} // namespace norva
