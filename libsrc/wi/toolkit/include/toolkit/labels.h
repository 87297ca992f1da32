#pragma once
// What only shows: labels, pages of text, icons.

#include "toolkit/wi.h"

namespace norva {

// kind 0: left, 1: centred, 2: right; 4 added: a heading, larger and bold.
wi_obj* wi_mk_label(wi_obj* parent, const std::string& text, int kind);
void wi_label(wi_obj* wo, const std::string& text);
std::string wi_get_label(const wi_obj* wo);

// Many lines of text in a fixed-pitch font. The user may change it until wi_editpage_editable(wo, 0).
wi_obj* wi_mk_editpage(wi_obj* parent);
void wi_editpage_putstr(wi_obj* wo, const std::string& str);
std::string wi_editpage_getstr(const wi_obj* wo);
void wi_editpage_editable(wi_obj* wo, int flag);

// A small sign. Numbers outside the list show nothing.
enum class wi_icon_sign { none, information, question, warning, error };
wi_obj* wi_mk_icon(wi_obj* parent, wi_icon_sign sign);
void wi_icon(wi_obj* wo, wi_icon_sign sign);

} // namespace norva
