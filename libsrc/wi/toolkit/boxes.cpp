// Edit, message and yes-no box.
#include "toolkit/boxes.h"
#include "toolkit/buttons.h"
#include "toolkit/fields.h"
#include "toolkit/labels.h"

#include "toolkit_int.h"

namespace norva {

// --- Edit box

static auto& edit(auto* wo, int pe) {
    return wi_rec<wi_editbox>(wo, wi_type::editbox, pe, "wieditbox.c");
}

wi_obj* wi_mk_editbox(wi_obj* parent, const std::string& msg, wi_cb accept_cb, int tag) {
    wi_editbox e;
    e.msg = msg;
    e.accept_cb = accept_cb;
    e.tag = tag;
    return new_box(parent, wi_type::editbox, e);
}

// The controls of the box's window carry the box as their pointer.
static void accept(wi_obj* control, int) {
    wi_obj* wo = static_cast<wi_obj*>(wi_recall(control));
    wi_editbox& e = std::get<wi_editbox>(wo->obj);
    e.text = wi_strfld_getstr(e.strfld);
    wi_off(e.window);
    if (e.accept_cb) e.accept_cb(wo, e.tag);
}

static void cancel(wi_obj* control, int) {
    wi_off(std::get<wi_editbox>(static_cast<wi_obj*>(wi_recall(control))->obj).window);
}

static void close(wi_obj* window, int) {
    wi_off(window);
}

static void build(wi_obj* wo, wi_editbox& e) {
    wi_obj* top = wi_mk_zuvapp(nullptr, "Input:");
    wi_obj* form = wi_mk_form(top, 40, 12);
    e.window = top;
    e.label = wi_mk_label(wi_form_parent(form, 1, 0.5, 39, 4), e.msg, 0);
    e.strfld = wi_mk_strfld(wi_form_parent(form, 1, 4, 39, 7.5), "", 0);
    wi_obj* ok = wi_mk_button(wi_form_parent(form, 8, 8, 18, 11.5), "OK", 0, accept, 0);
    wi_obj* no = wi_mk_button(wi_form_parent(form, 22, 8, 32, 11.5), "Cancel", 0, cancel, 0);
    wi_strfld_set_cb(e.strfld, accept, 0);
    for (wi_obj* control : {e.strfld, ok, no}) wi_store(control, wo);
    wi_zuvapp_quit(top, 1, "Cancel", close, 0);
    wi_size(top, 320, 90);
    wi_position(top, 300, 300);
}

void wi_editbox_popup(wi_obj* wo) {
    wi_editbox& e = edit(wo, 1);
    if (!e.window) build(wo, e);
    wi_strfld_putstr(e.strfld, e.text);
    wi_on(e.window);
    wi_activate_first(e.window);
}

std::string wi_editbox_getstr(const wi_obj* wo) {
    return edit(wo, 2).text;
}

void wi_editbox_putstr(wi_obj* wo, const std::string& str) {
    wi_editbox& e = edit(wo, 3);
    e.text = str;
    if (e.strfld) wi_strfld_putstr(e.strfld, str);
}

void wi_editbox_setmsg(wi_obj* wo, const std::string& msg) {
    wi_editbox& e = edit(wo, 4);
    e.msg = msg;
    if (e.label) wi_label(e.label, msg);
}

// --- Message box

wi_obj* wi_mk_msgbox(wi_obj* parent, const std::string& msg) {
    return new_box(parent, wi_type::msgbox, wi_msgbox{.msg = msg});
}

void wi_msgbox_setmsg(wi_obj* wo, const std::string& msg) {
    wi_rec<wi_msgbox>(wo, wi_type::msgbox, 1, "wimsgbox.c").msg = msg;
}

void wi_msgbox_popup(wi_obj* wo) {
    wi_popmsg(wi_rec<wi_msgbox>(wo, wi_type::msgbox, 2, "wimsgbox.c").msg);
}

void wi_popmsg(const std::string& msg) {
    the_port().message("Message:", msg, {});
}

// --- Yes-no box

static auto& question(auto* wo, int pe) {
    return wi_rec<wi_ynbox>(wo, wi_type::ynbox, pe, "wiynbox.c");
}

wi_obj* wi_mk_ynbox(wi_obj* parent, const std::string& text, wi_cb yes_cb, int yes_tag, wi_cb no_cb,
                    int no_tag) {
    wi_ynbox y;
    y.question = text;
    y.yes_cb = yes_cb;
    y.yes_tag = yes_tag;
    y.no_cb = no_cb;
    y.no_tag = no_tag;
    return new_box(parent, wi_type::ynbox, y);
}

void wi_ynbox_setquestion(wi_obj* wo, const std::string& text) {
    question(wo, 1).question = text;
}

void wi_ynbox_popup(wi_obj* wo) {
    the_port().yes_no("Question:", question(wo, 2).question, [wo](bool yes) {
        const wi_ynbox y = std::get<wi_ynbox>(wo->obj);
        if (const wi_cb cb = yes ? y.yes_cb : y.no_cb) cb(wo, yes ? y.yes_tag : y.no_tag);
    });
}

} // namespace norva
