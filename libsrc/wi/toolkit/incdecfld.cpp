// Increment field and up-down button.
#include "toolkit/fields.h"

#include "toolkit_int.h"

#include <cmath>

namespace norva {

// --- Up-down button

wi_obj* wi_mk_updownbut(wi_obj* parent, wi_cb up, int uptag, wi_cb down, int downtag) {
    wi_updownbut u;
    u.up_cb = up;
    u.down_cb = down;
    u.up_tag = uptag;
    u.down_tag = downtag;
    wi_obj* wo = new_widget(parent, wi_type::updownbut, u, {});
    add_win(wo, port_kind::up_down, 0, "");
    return wo;
}

void updownbut_pressed(wi_obj* wo, bool up) {
    const wi_updownbut u = std::get<wi_updownbut>(wo->obj);
    wi_obj* target = u.callbacktarget ? u.callbacktarget : wo;
    if (const auto* field = std::get_if<wi_incdecfld>(&target->obj)) {
        const wi_cb cb = up ? field->up_cb : field->down_cb;
        if (!cb) return numfld_step(target, up ? 1 : -1);
        return cb(target, up ? field->up_tag : field->down_tag);
    }
    if (const wi_cb cb = up ? u.up_cb : u.down_cb) cb(target, up ? u.up_tag : u.down_tag);
}

// --- Increment field

static auto& inc_rec(auto* wo, int pe) {
    return wi_rec<wi_incdecfld>(wo, wi_type::incdecfld, pe, "wiincdecfld.c");
}

wi_obj* wi_mk_incdecfld(wi_obj* parent, const std::string& label, double split, double inc) {
    wi_obj* wo = new_widget(parent, wi_type::incdecfld, wi_incdecfld{}, label);
    wo->open = true;
    wi_obj* pair = wi_mk_drect(wo, 1, 0.82);
    wo->open = false;
    wi_incdecfld& f = std::get<wi_incdecfld>(wo->obj);
    f.inc = inc;
    f.drect = pair;
    f.numfld = wi_mk_numfld(pair, label, split, 2);
    f.updownbut = wi_mk_updownbut(pair, nullptr, 0, nullptr, 0);
    std::get<wi_numfld>(f.numfld->obj).owner = wo;
    std::get<wi_updownbut>(f.updownbut->obj).callbacktarget = wo;
    return wo;
}

// One step of the increment. A step that lands on the limit but for rounding takes the limit itself.
void numfld_step(wi_obj* wo, int direction) {
    const wi_incdecfld& f = std::get<wi_incdecfld>(wo->obj);
    const bool up = direction > 0;
    double next = wi_incdecfld_getval(wo) + direction * f.inc;
    const double limit = up ? f.toplim : f.botlim;
    const double beyond = direction * (next - limit);
    if ((up ? f.usetoplim : f.usebotlim) && beyond > 0) {
        if (beyond > 1e-9 * std::abs(f.inc)) return;
        next = limit;
    }
    wi_incdecfld_putval(wo, next);
}

double wi_incdecfld_getval(const wi_obj* wo) {
    return wi_numfld_getval(inc_rec(wo, 1).numfld);
}

void wi_incdecfld_putval(wi_obj* wo, double value) {
    wi_numfld_putval(inc_rec(wo, 2).numfld, value);
}

std::string wi_incdecfld_getstr(const wi_obj* wo) {
    return wi_numfld_getstr(inc_rec(wo, 3).numfld);
}

void wi_incdecfld_putstr(wi_obj* wo, const std::string& str) {
    wi_numfld_putstr(inc_rec(wo, 4).numfld, str);
}

void wi_incdecfld_inc(wi_obj* wo, double inc) {
    inc_rec(wo, 5).inc = inc;
}

void wi_incdecfld_decimals(wi_obj* wo, int ndec) {
    wi_numfld_decimals(inc_rec(wo, 6).numfld, ndec);
}

void wi_incdecfld_toplim(wi_obj* wo, int use, double lim) {
    wi_incdecfld& f = inc_rec(wo, 7);
    f.usetoplim = use;
    f.toplim = lim;
}

void wi_incdecfld_botlim(wi_obj* wo, int use, double lim) {
    wi_incdecfld& f = inc_rec(wo, 8);
    f.usebotlim = use;
    f.botlim = lim;
}

void wi_incdecfld_editable(wi_obj* wo, int flag) {
    const wi_incdecfld& f = inc_rec(wo, 9);
    wi_numfld_editable(f.numfld, flag);
    wi_enable(f.updownbut, flag);
}

void wi_incdecfld_set_cb(wi_obj* wo, wi_cb up, int uptag, wi_cb down, int downtag, wi_cb ret, int rettag) {
    wi_incdecfld& f = inc_rec(wo, 10);
    f.up_cb = up;
    f.up_tag = uptag;
    f.down_cb = down;
    f.down_tag = downtag;
    wi_numfld_set_cb(f.numfld, ret, rettag);
}

void wi_incdecfld_split(wi_obj* wo, double split) {
    wi_numfld_split(inc_rec(wo, 11).numfld, split);
}

void wi_incdecfld_label(wi_obj* wo, const std::string& label) {
    wi_numfld_label(inc_rec(wo, 12).numfld, label);
}

} // namespace norva
