#pragma once
// Buttons: single, arrays of buttons, arrays of toggles, colour buttons.

#include "toolkit/wi.h"

#include <cstdint>
#include <span>

namespace norva {

// --- Button. type 0: push button; type 1: toggle, whose state changes before the callback runs.
wi_obj* wi_mk_button(wi_obj* parent, const std::string& label, int type, wi_cb cbfunc, int tag);
void wi_button_label(wi_obj* wo, const std::string& label);
std::string wi_button_getlabel(const wi_obj* wo);
void wi_button_setstate(wi_obj* wo, int state); // does nothing on a push button
int wi_button_getstate(const wi_obj* wo);       // 0 for a push button

// --- Array of rows by cols buttons, filled row by row. The callbacks get the array, not the button. Buttons
// are found by their label; the first of equal labels counts.
wi_obj* wi_mk_butary(wi_obj* parent, int nrows, int ncols);
wi_obj* wi_butary_button(wi_obj* wo, const std::string& name, int type, wi_cb cbfunc, int tag); // the button
void wi_butary_blank(wi_obj* wo); // leaves the next cell empty
void wi_butary_setstate(wi_obj* wo, const std::string& name, int state);
int wi_butary_getstate(const wi_obj* wo, const std::string& name);

// --- One column of toggles. Mode 0 (at first): exactly one is on. 1: at most one. 2: at least one. 3: free.
wi_obj* wi_mk_togary(wi_obj* parent, const std::vector<std::string>& labels);
int wi_togary_getindex(const wi_obj* wo); // the first that is on, or -1
int wi_togary_getstate(const wi_obj* wo, int index);
void wi_togary_setstate(wi_obj* wo, int index, int state);
std::vector<int> wi_togary_getary(const wi_obj* wo);
void wi_togary_setary(wi_obj* wo, std::span<const int> states); // by the rules of the mode
void wi_togary_setmode(wi_obj* wo, int mode);
void wi_togary_editable(wi_obj* wo, int flag);
void wi_togary_chng_cb(wi_obj* wo, wi_cb cb, int tag); // after the user changed one

// --- Colour button: shows one colour of a fixed table, and goes to the next enabled one when clicked. The
// indices and colours are those of the plots' palette: 0 white, 1 black, 2 red, 3 blue ...
constexpr int wi_colorbut_ncolors = 15;
wi_obj* wi_mk_colorbut(wi_obj* parent, wi_cb chgcb, int tag); // all colours enabled, shows 0
void wi_colorbut_setcolor(wi_obj* wo, int color);
int wi_colorbut_getcolor(const wi_obj* wo);
void wi_colorbut_colorstate(wi_obj* wo, int color, int enable);
void wi_colorbut_setary(wi_obj* wo, std::span<const int> enable); // one per colour; what is missing is off
std::vector<int> wi_colorbut_getary(const wi_obj* wo);
void wi_colorbut_editable(wi_obj* wo, int flag);
void wi_colorbut_chng_cb(wi_obj* wo, wi_cb chgcb, int tag);
std::uint32_t wi_colorbut_rgb(int color); // red in the low byte

} // namespace norva
