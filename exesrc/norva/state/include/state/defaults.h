#pragma once
// The user's settable default values. All counts are floats too; users of a count truncate it.

#include <span>
#include <string>

namespace norva {

struct defaults {
    std::string fname, fltr;  // defaults file, filter of the raw data selector
    float cbox_xsz, cbox_ysz; // control box of the analysis windows, inches
    float pi_apmn, pi_npmx, pi_npmx_max, pi_npmx_inc, pi_diam, pi_diam_max, pi_wct, pi_dct, pi_ang_inc,
        pi_kscl;
    float pi_ifx, pi_ifx_max, pi_ify, pi_ify_max;
    float dp_ni, dp_if, dp_lag, dp_ti_inc, dp_ct_inc, dp_pkht, dp_ph_inc, dp_trun, dp_pt_inc;
    float rp_if, rp_if_max, rp_ti_inc, rp_ct_inc, rp_pkht, rp_ph_inc, rp_trun, rp_pt_inc;
    float mwi_nti, mwi_lag, mwi_npk;
    float spl_cntnty, spl_ncoef;
};

// One row for each number: its place, its initial value, its label in the defaults window (the two without
// a label have no field there). The order is that of the record, the file and the window.
struct default_row {
    float defaults::*field;
    float initial;
    const char* label;
};
std::span<const default_row> default_rows();

void norva_init_defaults(defaults& d); // every row's initial value and the two names

extern defaults def;

} // namespace norva
