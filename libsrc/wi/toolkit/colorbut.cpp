// Colour button: one colour of a fixed table, stepped through by clicks.
#include "toolkit/buttons.h"

#include "toolkit_int.h"

#include <algorithm>
#include <array>

namespace norva {

static constexpr std::uint32_t rgb(std::uint32_t r, std::uint32_t g, std::uint32_t b) {
    return r | g << 8 | b << 16;
}

static constexpr std::array<std::uint32_t, wi_colorbut_ncolors> colors = {
    rgb(255, 255, 255), // white
    rgb(0, 0, 0),       // black
    rgb(255, 0, 0),     // red
    rgb(0, 0, 255),     // blue
    rgb(0, 255, 0),     // green
    rgb(255, 255, 0),   // yellow
    rgb(128, 0, 128),   // purple
    rgb(128, 64, 0),    // brown
    rgb(255, 102, 255), // pink
    rgb(255, 128, 0),   // orange
    rgb(0, 255, 255),   // cyan
    rgb(255, 0, 255),   // magenta
    rgb(0, 128, 192),   // turquoise
    rgb(255, 128, 128), // salmon
    rgb(192, 192, 192), // gray
};

std::uint32_t wi_colorbut_rgb(int color) {
    if (color < 0 || color >= wi_colorbut_ncolors) wi_pe(1, "wicolorbut.c");
    return colors[static_cast<std::size_t>(color)];
}

static auto& col(auto* wo, int pe) {
    return wi_rec<wi_colorbut>(wo, wi_type::colorbut, pe, "wicolorbut.c");
}

wi_obj* wi_mk_colorbut(wi_obj* parent, wi_cb chgcb, int tag) {
    wi_colorbut c;
    c.enablearray.assign(wi_colorbut_ncolors, 1);
    c.chgcb = chgcb;
    c.tag = tag;
    wi_obj* wo = new_widget(parent, wi_type::colorbut, c, "color");
    add_win(wo, port_kind::swatch, 0, "");
    wi_colorbut_setcolor(wo, 0);
    return wo;
}

void wi_colorbut_setcolor(wi_obj* wo, int color) {
    wi_colorbut& c = col(wo, 2);
    the_port().swatch_colour(wo->wins.front(), wi_colorbut_rgb(color));
    c.currentcolor = color;
}

int wi_colorbut_getcolor(const wi_obj* wo) {
    return col(wo, 3).currentcolor;
}

static void count_enabled(wi_colorbut& c) {
    c.alldisabled = std::none_of(c.enablearray.begin(), c.enablearray.end(), [](int on) { return on != 0; });
}

void wi_colorbut_colorstate(wi_obj* wo, int color, int enable) {
    wi_colorbut& c = col(wo, 4);
    if (color < 0 || color >= wi_colorbut_ncolors) wi_pe(5, "wicolorbut.c");
    c.enablearray[static_cast<std::size_t>(color)] = enable != 0;
    count_enabled(c);
}

void wi_colorbut_setary(wi_obj* wo, std::span<const int> enable) {
    wi_colorbut& c = col(wo, 6);
    for (std::size_t i = 0; i < c.enablearray.size(); ++i)
        c.enablearray[i] = i < enable.size() && enable[i] != 0;
    count_enabled(c);
}

std::vector<int> wi_colorbut_getary(const wi_obj* wo) {
    return col(wo, 7).enablearray;
}

void wi_colorbut_editable(wi_obj* wo, int flag) {
    col(wo, 8).editable = flag != 0;
}

void wi_colorbut_chng_cb(wi_obj* wo, wi_cb chgcb, int tag) {
    wi_colorbut& c = col(wo, 9);
    c.chgcb = chgcb;
    c.tag = tag;
}

void colorbut_pressed(wi_obj* wo) {
    const wi_colorbut& c = std::get<wi_colorbut>(wo->obj);
    if (!c.editable || c.alldisabled) return;
    int next = c.currentcolor;
    do next = (next + 1) % wi_colorbut_ncolors;
    while (!c.enablearray[static_cast<std::size_t>(next)]);
    wi_colorbut_setcolor(wo, next);
    if (c.chgcb) c.chgcb(wo, c.tag);
}

} // namespace norva
