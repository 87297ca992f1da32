#pragma once
// Menu bar: a row of buttons that share the width, each opening a pulldown of up to 20 buttons.
//
//   wi_obj* mb = wi_mk_menubar(place);
//   wi_menubar_pulldown(mb, "Image type");
//   wi_menubar_button(mb, "Peaks", 1, style_cb, 0);      // into the pulldown begun last
//   wi_menubar_submenu(mb, "More");
//   wi_menubar_button(mb, "Contours", 0, style_cb, 1);   // into the submenu
//   wi_menubar_submenu_done(mb);

#include "toolkit/wi.h"

namespace norva {

wi_obj* wi_mk_menubar(wi_obj* parent, int npd = 10);           // npd: room for so many pulldowns
int wi_menubar_pulldown(wi_obj* wo, const std::string& label); // begins a pulldown; its index, from 0
// A button in the pulldown begun last. type 1: with a check mark, which the program or a click changes before
// the callback runs. An empty label draws a separator. Returns the command number that names it below.
// Callbacks get the menu bar and the tag.
int wi_menubar_button(wi_obj* wo, const std::string& label, int type, wi_cb cbfunc, int tag);
int wi_menubar_submenu(wi_obj* wo, const std::string& label); // what follows goes into it; counts as a button
void wi_menubar_submenu_done(wi_obj* wo);
void wi_menubar_pd_label(wi_obj* wo, int pulldown, const std::string& label);
void wi_menubar_b_label(wi_obj* wo, int button, const std::string& label);
void wi_menubar_setstate(wi_obj* wo, int button, int state);
int wi_menubar_getstate(const wi_obj* wo, int button);
void wi_menubar_eset(wi_obj* wo, int button, int enable); // 0: grey

} // namespace norva
