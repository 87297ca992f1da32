#pragma once
// List select: a label and a drop-down list.

#include "toolkit/wi.h"

namespace norva {

// editable 1: any text may be typed; the return key then calls back. 0: only entries can be chosen. The first
// entry is selected.
wi_obj* wi_mk_listsel(wi_obj* parent, const std::string& label, int editable, double split,
                      const std::vector<std::string>& list);
// Selects the entry of this text; without one, an editable list shows the text and another shows nothing.
void wi_listsel_putstr(wi_obj* wo, const std::string& str);
std::string wi_listsel_getstr(const wi_obj* wo);
int wi_listsel_getindex(const wi_obj* wo); // from 0; -1: none
void wi_listsel_setlist(wi_obj* wo, const std::vector<std::string>& list);
void wi_listsel_selchng_cb(wi_obj* wo, wi_cb cb, int tag); // the user chose an entry or typed a text
void wi_listsel_split(wi_obj* wo, double split);
void wi_listsel_label(wi_obj* wo, const std::string& label);
void wi_listsel_editable(wi_obj* wo, int flag);
void wi_listsel_popup_on(wi_obj* wo); // opens the choice

} // namespace norva
