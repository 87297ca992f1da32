// Number field, string field and status line: a label beside an entry.
#include "toolkit/fields.h"

#include "toolkit_int.h"
#include "zuvsys/numparse.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace norva {

void wi_format(std::string& out, double value, int ndec) {
    if (ndec > 0) {
        const int decimals = std::min(ndec, 12);
        out =
            -1e14 <= value && value < 1e14 ? format_fixed(value, decimals) : format_exponent(value, decimals);
    } else {
        // Far beyond the range of int: llround rounds halves away from zero too.
        out = -1e12 < value && value < 1e12 ? std::to_string(std::llround(value)) : format_exponent(value, 0);
    }
}

// --- Shared by all entries

void entry_label(wi_obj*, wi_entry& e, const std::string& label) {
    e.label = label;
    the_port().set_text(e.labelarea, label);
}

void entry_split(wi_obj* wo, wi_entry& e, double split) {
    e.split = split;
    relayout(wo);
}

wi_obj* entry_owner(wi_obj* wo, const wi_entry& e) {
    return e.owner ? e.owner : wo;
}

static void entry_editable(wi_entry& e, int flag) {
    e.editable = flag != 0;
    the_port().read_only(e.editarea, !flag);
}

static void check_split(double split, int pe, const char* file) {
    if (!(split >= 0 && split <= 1)) wi_pe(pe, file);
}

template <class R> static wi_obj* make_entry(wi_obj* parent, int type, R record) {
    const std::string label = record.label;
    wi_obj* wo = new_widget(parent, type, std::move(record), label);
    R& e = std::get<R>(wo->obj);
    e.labelarea = add_win(wo, port_kind::label, label_left, label);
    e.editarea = add_win(wo, port_kind::field, 0, "");
    return wo;
}

void entry_return(wi_obj* wo) {
    if (!wi_isenabled(wo)) return;
    wi_entry* e = nullptr;
    if (auto* n = std::get_if<wi_numfld>(&wo->obj)) {
        e = n;
        if (n->editable) wi_numfld_putval(wo, wi_numfld_getval(wo));
    } else if (auto* s = std::get_if<wi_strfld>(&wo->obj)) {
        e = s;
    } else {
        e = std::get_if<wi_listsel>(&wo->obj);
    }
    if (e && e->editable && e->cr_cb) e->cr_cb(entry_owner(wo, *e), e->cr_tag);
}

// --- Number field

static auto& num(auto* wo, int pe) {
    return wi_rec<wi_numfld>(wo, wi_type::numfld, pe, "winumfld.c");
}

wi_obj* wi_mk_numfld(wi_obj* parent, const std::string& label, double split, int ndec) {
    check_split(split, 1, "winumfld.c");
    wi_numfld n;
    n.label = label;
    n.split = split;
    n.ndec = ndec;
    wi_obj* wo = make_entry(parent, wi_type::numfld, n);
    wi_numfld_putval(wo, 0);
    return wo;
}

bool numfld_takes(char32_t ch) {
    return ch < 128 &&
           std::string_view("0123456789.eE+- \b").find(static_cast<char>(ch)) != std::string_view::npos;
}

void wi_numfld_putval(wi_obj* wo, double value) {
    const wi_numfld& n = num(wo, 2);
    std::string text;
    wi_format(text, value, n.ndec);
    the_port().set_text(n.editarea, text);
}

double wi_numfld_getval(const wi_obj* wo) {
    constexpr double most = std::numeric_limits<double>::max();
    return std::clamp(to_double(the_port().get_text(num(wo, 3).editarea)), -most, most);
}

void wi_numfld_putstr(wi_obj* wo, const std::string& str) {
    the_port().set_text(num(wo, 4).editarea, str);
}

std::string wi_numfld_getstr(const wi_obj* wo) {
    return the_port().get_text(num(wo, 5).editarea);
}

void wi_numfld_label(wi_obj* wo, const std::string& label) {
    entry_label(wo, num(wo, 6), label);
}

void wi_numfld_split(wi_obj* wo, double split) {
    check_split(split, 8, "winumfld.c");
    entry_split(wo, num(wo, 7), split);
}

void wi_numfld_editable(wi_obj* wo, int flag) {
    entry_editable(num(wo, 9), flag);
}

void wi_numfld_set_cb(wi_obj* wo, wi_cb cb, int tag) {
    wi_numfld& n = num(wo, 10);
    n.cr_cb = cb;
    n.cr_tag = tag;
}

void wi_numfld_decimals(wi_obj* wo, int ndec) {
    num(wo, 11).ndec = ndec;
}

// --- String field

static auto& str_rec(auto* wo, int pe) {
    return wi_rec<wi_strfld>(wo, wi_type::strfld, pe, "wistrfld.c");
}

wi_obj* wi_mk_strfld(wi_obj* parent, const std::string& label, double split) {
    check_split(split, 1, "wistrfld.c");
    wi_strfld s;
    s.label = label;
    s.split = split;
    return make_entry(parent, wi_type::strfld, s);
}

void wi_strfld_putstr(wi_obj* wo, const std::string& str) {
    the_port().set_text(str_rec(wo, 2).editarea, str);
}

std::string wi_strfld_getstr(const wi_obj* wo) {
    return the_port().get_text(str_rec(wo, 3).editarea);
}

void wi_strfld_label(wi_obj* wo, const std::string& label) {
    entry_label(wo, str_rec(wo, 4), label);
}

void wi_strfld_split(wi_obj* wo, double split) {
    check_split(split, 6, "wistrfld.c");
    entry_split(wo, str_rec(wo, 5), split);
}

void wi_strfld_editable(wi_obj* wo, int flag) {
    entry_editable(str_rec(wo, 7), flag);
}

void wi_strfld_set_cb(wi_obj* wo, wi_cb cb, int tag) {
    wi_strfld& s = str_rec(wo, 8);
    s.cr_cb = cb;
    s.cr_tag = tag;
}

// --- Status line

static wi_obj* status_fld(const wi_obj* wo, int pe) {
    return wi_rec<wi_statusline>(wo, wi_type::status, pe, "wistatus.c").strfld;
}

wi_obj* wi_mk_status(wi_obj* parent, const std::string& label) {
    wi_obj* wo = new_widget(parent, wi_type::status, wi_statusline{}, label);
    wo->open = true;
    wi_obj* fld = wi_mk_strfld(wo, label, label.empty() ? 0 : 0.2);
    wo->open = false;
    std::get<wi_statusline>(wo->obj).strfld = fld;
    wi_strfld_editable(fld, 0);
    return wo;
}

void wi_status(wi_obj* wo, const std::string& str) {
    wi_strfld_putstr(status_fld(wo, 1), str);
}

std::string wi_status_getstr(const wi_obj* wo) {
    return wi_strfld_getstr(status_fld(wo, 2));
}

void wi_status_label(wi_obj* wo, const std::string& label) {
    wi_strfld_label(status_fld(wo, 3), label);
}

void wi_status_split(wi_obj* wo, double split) {
    wi_strfld_split(status_fld(wo, 4), split);
}

} // namespace norva
