// Generic access: one call for all types that have the quality. A null object and an object without the
// quality end the program with the two numbers of the routine.
#include "toolkit_int.h"

#include "toolkit/toolkit.h"

#include <algorithm>
#include <limits>

namespace norva {

static int checked_type(const wi_obj* wo, int pe) {
    if (!wo) wi_pe(pe, "wi.c");
    return wo->type;
}

[[noreturn]] static void bad_type(int pe) {
    wi_pe(pe, "wi.c", "bad object type.");
}

void wi_set_message(wi_obj* wo, const std::string& str) {
    switch (checked_type(wo, 8)) {
    case wi_type::filebox: return wi_filebox_setmsg(wo, str);
    case wi_type::editbox: return wi_editbox_setmsg(wo, str);
    case wi_type::msgbox: return wi_msgbox_setmsg(wo, str);
    case wi_type::ynbox: return wi_ynbox_setquestion(wo, str);
    default: bad_type(9);
    }
}

void wi_set_label(wi_obj* wo, const std::string& str) {
    switch (checked_type(wo, 10)) {
    case wi_type::button: return wi_button_label(wo, str);
    case wi_type::zuvapp: return wi_zuvapp_label(wo, str);
    case wi_type::status: return wi_status_label(wo, str);
    case wi_type::label: return wi_label(wo, str);
    case wi_type::filesel: return wi_filesel_label(wo, str);
    case wi_type::listsel: return wi_listsel_label(wo, str);
    case wi_type::incdecfld: return wi_incdecfld_label(wo, str);
    case wi_type::strfld: return wi_strfld_label(wo, str);
    case wi_type::numfld: return wi_numfld_label(wo, str);
    default: bad_type(11);
    }
}

void wi_set_split(wi_obj* wo, double split) {
    switch (checked_type(wo, 12)) {
    case wi_type::drect: return wi_drect_split(wo, split);
    case wi_type::status: return wi_status_split(wo, split);
    case wi_type::filesel: return wi_filesel_split(wo, split);
    case wi_type::listsel: return wi_listsel_split(wo, split);
    case wi_type::incdecfld: return wi_incdecfld_split(wo, split);
    case wi_type::strfld: return wi_strfld_split(wo, split);
    case wi_type::numfld: return wi_numfld_split(wo, split);
    default: bad_type(13);
    }
}

void wi_set_decimals(wi_obj* wo, int ndec) {
    switch (checked_type(wo, 14)) {
    case wi_type::incdecfld: return wi_incdecfld_decimals(wo, ndec);
    case wi_type::numfld: return wi_numfld_decimals(wo, ndec);
    default: bad_type(15);
    }
}

void wi_set_inc(wi_obj* wo, double inc) {
    if (checked_type(wo, 16) != wi_type::incdecfld) bad_type(17);
    wi_incdecfld_inc(wo, inc);
}

void wi_set_string(wi_obj* wo, const std::string& str) {
    switch (checked_type(wo, 18)) {
    case wi_type::status: return wi_status(wo, str);
    case wi_type::editbox: return wi_editbox_putstr(wo, str);
    case wi_type::filesel: return wi_filesel_putstr(wo, str);
    case wi_type::listsel: return wi_listsel_putstr(wo, str);
    case wi_type::incdecfld: return wi_incdecfld_putstr(wo, str);
    case wi_type::strfld: return wi_strfld_putstr(wo, str);
    case wi_type::numfld: return wi_numfld_putstr(wo, str);
    case wi_type::editpage: return wi_editpage_putstr(wo, str);
    default: bad_type(19);
    }
}

void wi_set_value(wi_obj* wo, double value) {
    switch (checked_type(wo, 20)) {
    case wi_type::incdecfld: return wi_incdecfld_putval(wo, value);
    case wi_type::numfld: return wi_numfld_putval(wo, value);
    default: bad_type(21);
    }
}

void wi_set_state(wi_obj* wo, int state) {
    if (checked_type(wo, 22) != wi_type::button) bad_type(23);
    wi_button_setstate(wo, state);
}

void wi_set_dir(wi_obj* wo, const std::string& dir) {
    switch (checked_type(wo, 24)) {
    case wi_type::filebox: return wi_filebox_setdir(wo, dir);
    case wi_type::filesel: return wi_filesel_setdir(wo, dir);
    default: bad_type(25);
    }
}

void wi_set_editable(wi_obj* wo, int flag) {
    switch (checked_type(wo, 26)) {
    case wi_type::togary: return wi_togary_editable(wo, flag);
    case wi_type::filesel: return wi_filesel_editable(wo, flag);
    case wi_type::listsel: return wi_listsel_editable(wo, flag);
    case wi_type::incdecfld: return wi_incdecfld_editable(wo, flag);
    case wi_type::strfld: return wi_strfld_editable(wo, flag);
    case wi_type::numfld: return wi_numfld_editable(wo, flag);
    case wi_type::editpage: return wi_editpage_editable(wo, flag);
    case wi_type::colorbut: return wi_colorbut_editable(wo, flag);
    default: bad_type(27);
    }
}

std::string wi_get_string(const wi_obj* wo) {
    switch (checked_type(wo, 28)) {
    case wi_type::status: return wi_status_getstr(wo);
    case wi_type::filebox: return wi_filebox_getname(wo);
    case wi_type::editbox: return wi_editbox_getstr(wo);
    case wi_type::filesel: return wi_filesel_getstr(wo);
    case wi_type::listsel: return wi_listsel_getstr(wo);
    case wi_type::incdecfld: return wi_incdecfld_getstr(wo);
    case wi_type::strfld: return wi_strfld_getstr(wo);
    case wi_type::numfld: return wi_numfld_getstr(wo);
    case wi_type::editpage: return wi_editpage_getstr(wo);
    default: bad_type(29);
    }
}

double wi_get_value(const wi_obj* wo) {
    switch (checked_type(wo, 30)) {
    case wi_type::incdecfld: return wi_incdecfld_getval(wo);
    case wi_type::numfld: return wi_numfld_getval(wo);
    default: bad_type(31);
    }
}

int wi_get_state(const wi_obj* wo) {
    if (checked_type(wo, 32) != wi_type::button) bad_type(33);
    return wi_button_getstate(wo);
}

int wi_get_int(const wi_obj* wo) {
    constexpr double low = std::numeric_limits<int>::min(), high = std::numeric_limits<int>::max();
    const double v = wi_get_value(wo);
    return v == v ? static_cast<int>(std::clamp(v, low, high)) : 0;
}

} // namespace norva
