// The table of user defaults.
#include "state/defaults.h"

namespace norva {

using d = defaults;

static constexpr default_row rows[] = {
    {&d::cbox_xsz, 0.9f, ""},
    {&d::cbox_ysz, 0.3f, ""},
    {&d::pi_apmn, 0.05f, "Image - min amplitude:"},
    {&d::pi_npmx, 100, "Image - # of peaks:"},
    {&d::pi_npmx_max, 200, "Image - # of peaks max:"},
    {&d::pi_npmx_inc, 10, "Image - # of peaks inc:"},
    {&d::pi_diam, 0.1f, "Image - peak diameter (inches):"},
    {&d::pi_diam_max, 0.5f, "Image - max peak diam (inches):"},
    {&d::pi_wct, 20, "Image - length of cut (gates):"},
    {&d::pi_dct, 0.25f, "Image - sample spacing (gates):"},
    {&d::pi_ang_inc, 18, "Image - cut angle inc (deg):"},
    {&d::pi_kscl, 3, "Image - scaling:"},
    {&d::pi_ifx, 2, "Image - x interpolation fact:"},
    {&d::pi_ifx_max, 16, "Image - max x interpolation fact:"},
    {&d::pi_ify, 2, "Image - y interpolation fact:"},
    {&d::pi_ify_max, 16, "Image - max y interpolation fact:"},
    {&d::dp_ni, 16, "Doppler Profile - WDW:"},
    {&d::dp_if, 4, "Doppler Profile - IFACT"},
    {&d::dp_lag, 2, "Doppler Profile - LAG:"},
    {&d::dp_ti_inc, 0.1f, "Doppler Profile - time interval inc"},
    {&d::dp_ct_inc, 0.1f, "Doppler Profile - center time inc:"},
    {&d::dp_pkht, 1, "Doppler Profile - profile height:"},
    {&d::dp_ph_inc, 0.1f, "Doppler Profile - profile height inc:"},
    {&d::dp_trun, 1, "Doppler Profile - profile truncation:"},
    {&d::dp_pt_inc, 0.1f, "Doppler Profile - profile trunc inc:"},
    {&d::rp_if, 4, "Range Profile - interpolation factor:"},
    {&d::rp_if_max, 16, "Range Profile - max interpolation:"},
    {&d::rp_ti_inc, 0.1f, "Range Profile - time interval inc:"},
    {&d::rp_ct_inc, 0.1f, "Range Profile - center time inc:"},
    {&d::rp_pkht, 1, "Range Profile - profile height:"},
    {&d::rp_ph_inc, 0.1f, "Range Profile - profile height inc:"},
    {&d::rp_trun, 1, "Range Profile - profile truncation:"},
    {&d::rp_pt_inc, 0.1f, "Range Profile - profile trunc inc:"},
    {&d::mwi_nti, 9, "Moving Window Image - WDW:"},
    {&d::mwi_lag, 5, "Moving Window Image - LAG:"},
    {&d::mwi_npk, 1, "Moving Window Image - NPEAKS:"},
    {&d::spl_cntnty, 1, "Spline Window - continuity:"},
    {&d::spl_ncoef, 3, "Spline Window - ncoef:"},
};
static_assert(sizeof(rows) / sizeof(rows[0]) == 38);

std::span<const default_row> default_rows() {
    return rows;
}

void norva_init_defaults(defaults& values) {
    values.fname = "default.dflt";
    values.fltr = "*.pf*";
    for (const default_row& row : rows) values.*row.field = row.initial;
}

} // namespace norva
