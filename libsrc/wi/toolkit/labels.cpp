// Labels, pages of text and icons.
#include "toolkit/labels.h"

#include "toolkit_int.h"

namespace norva {

// --- Label

static const wi_obj* checked(const wi_obj* wo, int type, int pe, const char* file) {
    if (!wo || wo->type != type) wi_pe(pe, file);
    return wo;
}

wi_obj* wi_mk_label(wi_obj* parent, const std::string& text, int kind) {
    const int side = kind & ~label_heading;
    if (side < label_left || side > label_right) wi_pe(1, "wilabel.c");
    wi_obj* wo = new_widget(parent, wi_type::label, std::monostate{}, {});
    add_win(wo, port_kind::label, kind, text);
    return wo;
}

void wi_label(wi_obj* wo, const std::string& text) {
    the_port().set_text(checked(wo, wi_type::label, 2, "wilabel.c")->wins.front(), text);
}

std::string wi_get_label(const wi_obj* wo) {
    return the_port().get_text(checked(wo, wi_type::label, 3, "wilabel.c")->wins.front());
}

// --- Edit page

static auto& page(auto* wo, int pe) {
    return wi_rec<wi_editpage>(wo, wi_type::editpage, pe, "wieditpage.c");
}

wi_obj* wi_mk_editpage(wi_obj* parent) {
    wi_obj* wo = new_widget(parent, wi_type::editpage, wi_editpage{}, {});
    std::get<wi_editpage>(wo->obj).editarea = add_win(wo, port_kind::page, 0, "");
    wi_editpage_editable(wo, 1);
    return wo;
}

void wi_editpage_putstr(wi_obj* wo, const std::string& str) {
    the_port().set_text(page(wo, 1).editarea, str);
}

std::string wi_editpage_getstr(const wi_obj* wo) {
    return the_port().get_text(page(wo, 2).editarea);
}

void wi_editpage_editable(wi_obj* wo, int flag) {
    wi_editpage& p = page(wo, 3);
    p.editable = flag != 0;
    the_port().read_only(p.editarea, !flag);
}

// --- Icon: a sign of the font, so that it grows with the text around it.

static const char* sign_text(wi_icon_sign sign) {
    switch (sign) {
    case wi_icon_sign::information: return "\u2139";
    case wi_icon_sign::question: return "?";
    case wi_icon_sign::warning: return "\u26a0"; // triangle with exclamation mark
    case wi_icon_sign::error: return "\u2716";   // heavy cross
    default: return "";
    }
}

wi_obj* wi_mk_icon(wi_obj* parent, wi_icon_sign sign) {
    wi_obj* wo = new_widget(parent, wi_type::icon, std::monostate{}, {});
    add_win(wo, port_kind::label, label_centre | label_heading, sign_text(sign));
    return wo;
}

void wi_icon(wi_obj* wo, wi_icon_sign sign) {
    the_port().set_text(checked(wo, wi_type::icon, 1, "wiicon.c")->wins.front(), sign_text(sign));
}

} // namespace norva
