// Functions of spline files: evaluation and breakpoints.
#include "cu/espl.h"
#include "cu/spl.h"
#include "fileio/ufile.h"
#include "functions_int.h"

namespace norva {

namespace {

sp_value fn_espl(sp_args args) {
    if (args[0].type == SP_NULL) return sp_mkerror("Bad argument type for filename.");
    espl_ptr spline = espl_read(sp_text(args[0]));
    if (!spline) return sp_mkerror("Unable to open spline file.");
    const int iderv = args.size() > 2 ? sp_count(args[2]) : 0;
    if (args[1].type != SP_ARRAY) return sp_mkscaler(espl(spline.get(), sp_number(args[1]), iderv));
    sp_value result = args[1];
    for (double& x : result.ary.own()) x = espl(spline.get(), x, iderv);
    return result;
}

sp_value fn_splbrks(sp_args args) {
    if (args[0].type != SP_STRING) return sp_mkerror("Bad argument type in SPLBRKS.");
    splfile_ptr file = openspl(args[0].string, "Old", 0);
    if (!file) return sp_mkerror("Unable to open Spline file in SPLBRKS.");
    sp_value times = sp_new_array(static_cast<std::size_t>(u_nelem(file.get())));
    u_timemove(file.get(), -1e29); // ahead of all data
    for (double& time : times.ary.own()) {
        int ncont = 0, flg2 = 0;
        if (getspl(file.get(), time, ncont, flg2, {}) != ZUV_OK)
            return sp_mkerror("Internal error in SPLBRKS (1).");
    }
    return times;
}

constexpr const char* bad_number = "Bad Number of arguments in ESPL.";

constexpr sp_func_row functions[] = {
    {"ESPL", 2, 3, bad_number, fn_espl},
    {"SPLEVAL", 2, 3, bad_number, fn_espl},
    {"SPLBRKS", 1, 1, "Bad Number of arguments in SPLBRKS.", fn_splbrks},
};

} // namespace

std::optional<sp_value> sp_func_spl(const std::string& name, sp_args args) {
    return sp_call_row(functions, name, args);
}

} // namespace norva
