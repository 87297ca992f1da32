// Draw area: paints and the mouse.
#include "toolkit/drawarea.h"

#include "toolkit_int.h"

namespace norva {

static auto& area(auto* wo, int pe) {
    return wi_rec<wi_drawarea>(wo, wi_type::drawarea, pe, "widrawarea.c");
}

wi_obj* wi_mk_drawarea(wi_obj* parent, wi_cb expose_cb, int expose_tag, wi_cb resize_cb, int resize_tag) {
    wi_drawarea d;
    d.expose_cb = expose_cb;
    d.expose_tag = expose_tag;
    d.resize_cb = resize_cb;
    d.resize_tag = resize_tag;
    wi_obj* wo = new_widget(parent, wi_type::drawarea, d, {});
    wo->handle = add_win(wo, port_kind::draw, 0, "");
    return wo;
}

port_win wi_drawarea_getwidget(const wi_obj* wo) {
    area(wo, 1);
    return wo->wins.front();
}

void wi_drawarea_expose_cb(wi_obj* wo, wi_cb cb, int tag) {
    wi_drawarea& d = area(wo, 2);
    d.expose_cb = cb;
    d.expose_tag = tag;
}

void wi_drawarea_resize_cb(wi_obj* wo, wi_cb cb, int tag) {
    wi_drawarea& d = area(wo, 3);
    d.resize_cb = cb;
    d.resize_tag = tag;
}

void wi_drawarea_mouse_cb(wi_obj* wo, int kind, wi_mouse_cb cb, int tag) {
    wi_drawarea& d = area(wo, 4);
    const auto set = [&](wi_mouse_cb& to, int& to_tag) {
        to = cb;
        to_tag = tag;
    };
    switch (kind) {
    case 0: return set(d.mouse_down_cb, d.mouse_down_tag);
    case 1: return set(d.mouse_up_cb, d.mouse_up_tag);
    case 2: return set(d.mouse_move_cb, d.mouse_move_tag);
    case 3: set(d.mouse_freemv_cb, d.mouse_freemv_tag); break;
    default: wi_exit("Bad parameter passed to wi_drawarea_mouse_cb");
    }
    the_port().mouse_free(wo->wins.front(), cb != nullptr);
}

// Each area remembers its own size, so that two of them do not take each other's for a change.
static bool equaloldsize(wi_obj* wo) {
    wi_drawarea& d = std::get<wi_drawarea>(wo->obj);
    const port_rect r = the_port().client_rect(wo->wins.front());
    const port_size now{r.w, r.h};
    return std::exchange(d.seen, now) == now;
}

void drawarea_paint(wi_obj* wo) {
    if (!isrunning) return;
    const bool same = equaloldsize(wo);
    const wi_drawarea d = std::get<wi_drawarea>(wo->obj);
    if (!same && d.resize_cb) return d.resize_cb(wo, d.resize_tag);
    if (d.expose_cb) d.expose_cb(wo, d.expose_tag);
}

void drawarea_mouse(wi_obj* wo, port_mouse kind, int x, int y, int button) {
    wi_drawarea& d = std::get<wi_drawarea>(wo->obj);
    if (button < 0 || button > 2) return;
    const auto call = [&](wi_mouse_cb cb, int tag, int which) {
        if (cb) cb(wo, tag, x, y, which);
    };
    switch (kind) {
    case port_mouse::down:
        d.held[button] = true;
        d.button = button;
        return call(d.mouse_down_cb, d.mouse_down_tag, button);
    case port_mouse::up: d.held[button] = false; return call(d.mouse_up_cb, d.mouse_up_tag, button);
    case port_mouse::drag:
        // After the button pressed last went up, a drag belongs to one that is still down.
        for (int b = 0; b < 3 && !d.held[d.button]; ++b)
            if (d.held[b]) d.button = b;
        return call(d.mouse_move_cb, d.mouse_move_tag, d.button);
    case port_mouse::free_move:
        for (bool& held : d.held) held = false; // a release that went to another window
        return call(d.mouse_freemv_cb, d.mouse_freemv_tag, 0);
    }
}

} // namespace norva
