#pragma once
// Fields: number, string, increment and status field, and the pair of small buttons.
//
// A field is a label part, `split` of its width, and an entry part with a height of one and a half text
// lines, in the middle of what it is given.

#include "toolkit/wi.h"

namespace norva {

// The text of a number. ndec above 0: that many decimals, at most 12, for -1e14 <= value < 1e14, else
// exponent form. ndec 0 or below: the nearest whole number for -1e12 < value < 1e12, else exponent form with
// no decimals.
void wi_format(std::string& out, double value, int ndec);

// --- Number field. Takes digits, ".", "e", "E", "+", "-" and blank. The return key rewrites the number in
// its canonical form and calls back. Shows 0 at first.
wi_obj* wi_mk_numfld(wi_obj* parent, const std::string& label, double split, int ndec);
void wi_numfld_putval(wi_obj* wo, double value);
double wi_numfld_getval(const wi_obj* wo); // 0 when the text is no number
void wi_numfld_putstr(wi_obj* wo, const std::string& str);
std::string wi_numfld_getstr(const wi_obj* wo);
void wi_numfld_label(wi_obj* wo, const std::string& label);
void wi_numfld_split(wi_obj* wo, double split);
void wi_numfld_editable(wi_obj* wo, int flag);
void wi_numfld_set_cb(wi_obj* wo, wi_cb cb, int tag);
void wi_numfld_decimals(wi_obj* wo, int ndec); // for the next value put

// --- String field. The return key calls back.
wi_obj* wi_mk_strfld(wi_obj* parent, const std::string& label, double split);
void wi_strfld_putstr(wi_obj* wo, const std::string& str);
std::string wi_strfld_getstr(const wi_obj* wo);
void wi_strfld_label(wi_obj* wo, const std::string& label);
void wi_strfld_split(wi_obj* wo, double split);
void wi_strfld_editable(wi_obj* wo, int flag);
void wi_strfld_set_cb(wi_obj* wo, wi_cb cb, int tag);

// --- Increment field: a number field of 2 decimals beside an up-down button, which steps by inc within the
// limits. A step that would pass a limit does nothing. The limits do not hold for typed values.
wi_obj* wi_mk_incdecfld(wi_obj* parent, const std::string& label, double split, double inc);
double wi_incdecfld_getval(const wi_obj* wo);
void wi_incdecfld_putval(wi_obj* wo, double value);
std::string wi_incdecfld_getstr(const wi_obj* wo);
void wi_incdecfld_putstr(wi_obj* wo, const std::string& str);
void wi_incdecfld_inc(wi_obj* wo, double inc);
void wi_incdecfld_decimals(wi_obj* wo, int ndec);
void wi_incdecfld_toplim(wi_obj* wo, int use, double lim);
void wi_incdecfld_botlim(wi_obj* wo, int use, double lim);
void wi_incdecfld_editable(wi_obj* wo, int flag); // flag 0 stops the arrows too
// Up and down replace the stepping: the callback steps the value itself. A null one leaves the built-in step.
// ret is called on the return key. All three get the increment field.
void wi_incdecfld_set_cb(wi_obj* wo, wi_cb up, int uptag, wi_cb down, int downtag, wi_cb ret, int rettag);
void wi_incdecfld_split(wi_obj* wo, double split);
void wi_incdecfld_label(wi_obj* wo, const std::string& label);

// --- Up-down button alone.
wi_obj* wi_mk_updownbut(wi_obj* parent, wi_cb up, int uptag, wi_cb down, int downtag);

// --- Status line: a string field that only the program writes.
wi_obj* wi_mk_status(wi_obj* parent, const std::string& label);
void wi_status(wi_obj* wo, const std::string& str);
std::string wi_status_getstr(const wi_obj* wo);
void wi_status_label(wi_obj* wo, const std::string& label);
void wi_status_split(wi_obj* wo, double split);

} // namespace norva
