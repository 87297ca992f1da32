// Single buttons and arrays of them.
#include "toolkit/buttons.h"

#include "toolkit_int.h"

namespace norva {

// --- Button

static auto& but(auto* wo, int pe) {
    return wi_rec<wi_button>(wo, wi_type::button, pe, "wibutton.c");
}

static bool is_button_type(int type) {
    return type == 0 || type == 1;
}

wi_obj* wi_mk_button(wi_obj* parent, const std::string& label, int type, wi_cb cbfunc, int tag) {
    if (!is_button_type(type)) wi_pe(1, "wibutton.c");
    wi_button b;
    b.label = label;
    b.type = type;
    b.cbfunc = cbfunc;
    b.tag = tag;
    wi_obj* wo = new_widget(parent, wi_type::button, b, label);
    add_win(wo, type == 1 ? port_kind::toggle : port_kind::button, 0, label);
    return wo;
}

void button_pressed(wi_obj* wo) {
    const wi_button b = std::get<wi_button>(wo->obj);
    wi_obj* target = b.callbacktarget ? b.callbacktarget : wo;
    if (const auto* array = std::get_if<wi_butary>(&target->obj); array && array->togary)
        return togary_pressed(array->togary, wo);
    if (b.type == 1) wi_button_setstate(wo, !b.state);
    if (b.cbfunc) b.cbfunc(target, b.tag);
}

void wi_button_label(wi_obj* wo, const std::string& label) {
    but(wo, 2).label = label;
    the_port().set_text(wo->wins.front(), label);
}

std::string wi_button_getlabel(const wi_obj* wo) {
    return but(wo, 3).label;
}

void wi_button_setstate(wi_obj* wo, int state) {
    wi_button& b = but(wo, 4);
    if (b.type != 1) return;
    b.state = state != 0;
    the_port().set_check(wo->wins.front(), b.state != 0);
}

int wi_button_getstate(const wi_obj* wo) {
    return but(wo, 5).state;
}

// --- Button array

static auto& ary_rec(auto* wo, int pe) {
    return wi_rec<wi_butary>(wo, wi_type::butary, pe, "wibutary.c");
}

wi_obj* wi_mk_butary(wi_obj* parent, int nrows, int ncols) {
    if (nrows < 1 || ncols < 1) wi_pe(1, "wibutary.c");
    wi_obj* wo = new_widget(parent, wi_type::butary, wi_butary{}, {});
    wo->open = true;
    wi_obj* cells = wi_mk_rectary(wo, nrows, ncols, 1e-6, 1e-6);
    wo->open = false;
    wi_butary& a = std::get<wi_butary>(wo->obj);
    a.nrows = nrows;
    a.ncols = ncols;
    a.maxbuttons = nrows * ncols;
    a.rectanglearray = cells;
    return wo;
}

static wi_butary& with_room(wi_obj* wo, int pe) {
    wi_butary& a = ary_rec(wo, pe);
    if (static_cast<int>(a.ary.size()) >= a.maxbuttons) wi_pe(7, "wibutary.c", "button array full.");
    return a;
}

wi_obj* wi_butary_button(wi_obj* wo, const std::string& name, int type, wi_cb cbfunc, int tag) {
    wi_butary& a = with_room(wo, 6);
    wi_obj* button = wi_mk_button(a.rectanglearray, name, type, cbfunc, tag);
    std::get<wi_button>(button->obj).callbacktarget = wo;
    a.ary.push_back({.name = name, .type = type, .button = button});
    return button;
}

void wi_butary_blank(wi_obj* wo) {
    wi_butary& a = with_room(wo, 8);
    std::get<wi_rectary>(a.rectanglearray->obj).children.push_back(nullptr);
    a.ary.emplace_back();
}

static wi_obj* by_name(const wi_butary& a, const std::string& name) {
    for (const wi_butelm& e : a.ary)
        if (e.button && e.name == name) return e.button;
    return nullptr;
}

void wi_butary_setstate(wi_obj* wo, const std::string& name, int state) {
    wi_obj* button = by_name(ary_rec(wo, 11), name);
    if (!button) wi_exit("Invalid parameter to wi_butary_setstate: Bad button name.");
    wi_button_setstate(button, state);
}

int wi_butary_getstate(const wi_obj* wo, const std::string& name) {
    const wi_obj* button = by_name(ary_rec(wo, 13), name);
    if (!button) wi_pe(14, "wibutary.c", "Unknown button name.");
    return wi_button_getstate(button);
}

} // namespace norva
