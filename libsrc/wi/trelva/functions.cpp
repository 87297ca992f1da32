// The table of built-in functions, their dispatch, and the reading of arguments.
#include "trelva/functions.h"

#include "functions_int.h"
#include "zuvsys/cstrings.h"

#include <algorithm>

namespace norva {

namespace {

constexpr const char* bad_number = "Bad number of arguments.";
constexpr int any = SP_ANY_NUMBER;

constexpr sp_func_row functions[] = {
    // Radians and real numbers, element by element; the first argument counts.
    {"SIN", 1, any, bad_number, fn_sin},
    {"COS", 1, any, bad_number, fn_cos},
    {"TAN", 1, any, bad_number, fn_tan},
    {"ASIN", 1, any, bad_number, fn_asin},
    {"ACOS", 1, any, bad_number, fn_acos},
    {"ATAN", 1, any, bad_number, fn_atan},
    {"EXP", 1, any, bad_number, fn_exp},
    {"NINT", 1, any, bad_number, fn_nint},
    {"LOG10", 1, any, bad_number, fn_log10},
    {"LOGN", 1, any, bad_number, fn_logn},
    {"POW10", 1, any, bad_number, fn_pow10},
    {"SQRT", 1, any, bad_number, fn_sqrt},
    {"ATAN2", 2, 2, bad_number, fn_atan2},
    {"POW", 2, 2, bad_number, fn_pow},
    // Numbers from many.
    {"MIN", 0, any, "", fn_min},
    {"MAX", 0, any, "", fn_max},
    {"AVG", 0, any, "", fn_avg},
    {"SUM", 0, any, "", fn_sum},
    {"NPTS", 0, any, "", fn_npts},
    // Arrays.
    {"RAND", 0, any, "", fn_rand},
    {"RAMP", 0, any, "", fn_ramp},
    {"SEQ", 0, any, "", fn_seq},
    {"SUBARRAY", 1, any, bad_number, fn_subarray},
    {"VALIDARRAY", 2, 2, bad_number, fn_validarray},
    {"NOTVALIDARRAY", 2, 2, bad_number, fn_notvalidarray},
    {"CLIPTOP", 2, 2, "Wrong number of arguments in CLIPTOP.", fn_cliptop},
    {"CLIPBOT", 2, 2, "Wrong number of arguments in CLIPBOT.", fn_clipbot},
    {"SORT", 1, any, "No arguments in SORT.", fn_sort},
    {"RANK", 1, any, "No arguments in RANK.", fn_rank},
    {"SHUFFLE", 2, 2, "Wrong number of arguments in SHUFFLE.", fn_shuffle},
    // Grids, stored row by row.
    {"X2DINDX", 2, 2, "Wrong number of arguments in X2DINDX.", fn_x2dindx},
    {"Y2DINDX", 2, 2, "Wrong number of arguments in X2DINDX.", fn_y2dindx}, // the name stands as it is
    {"FIND2DPKS", 2, 2, "Wrong number of arguments in FIND2DPKS.", fn_find2dpks},
    // Files.
    {"GETKW", 2, 2, "Bad number of Arguments in GETWK.", fn_getkw}, // spelled so
};

// A copy of its argument, an error as a string of its message: the one function that sees errors.
sp_value fn_errstr(sp_args args) {
    if (args.size() != 1) return sp_mkerror("Wrong number of Arguments in ERRSTR.");
    return args[0].type == SP_ERROR ? sp_mkstring(args[0].string) : args[0];
}

bool in_bounds(const sp_func_row& row, sp_args args) {
    return args.size() >= static_cast<std::size_t>(row.least) &&
           args.size() <= static_cast<std::size_t>(row.most);
}

} // namespace

std::optional<sp_value> sp_call_row(std::span<const sp_func_row> table, const std::string& name,
                                    sp_args args) {
    auto row = std::ranges::find_if(table, [&](auto& r) { return c_iseqx(r.name, name.c_str()); });
    if (row == table.end()) return std::nullopt;
    return in_bounds(*row, args) ? row->routine(args) : sp_mkerror(row->wrong_number);
}

sp_value sp_function(sp_language&, std::string_view spelled, sp_args args) {
    const std::string name(spelled);
    if (c_iseqx(name.c_str(), "ERRSTR")) return fn_errstr(args);
    auto error = std::ranges::find(args, SP_ERROR, &sp_value::type);
    if (error != args.end()) return *error;
    if (auto val = sp_func_files(name, args)) return *val;
    if (auto val = sp_func_spl(name, args)) return *val;
    if (auto val = sp_call_row(functions, name, args)) return *val;
    return sp_mkerror("Unknown function.");
}

int sp_count(const sp_value& val) {
    double x = sp_number(val) + 0.5;
    if (!(x > INT_MIN)) return x <= INT_MIN ? INT_MIN : 0; // not-a-number gives 0
    return x < INT_MAX ? static_cast<int>(x) : INT_MAX;
}

std::span<const double> sp_elements(const sp_value& val, double& one) {
    if (val.type == SP_ARRAY) return val.ary.span();
    one = sp_number(val);
    return {&one, 1};
}

sp_value sp_join(sp_args args) {
    std::size_t n = 0;
    for (const sp_value& arg : args) n += arg.type == SP_ARRAY ? arg.npts() : 1;
    sp_value joined = sp_new_array(n);
    if (joined.type == SP_ERROR) return joined;
    auto to = joined.ary.own().begin();
    for (const sp_value& arg : args) {
        double one = 0.0;
        to = std::ranges::copy(sp_elements(arg, one), to).out;
    }
    return joined;
}

sp_value sp_scaler_or_array(std::span<const double> elements) {
    if (elements.size() == 1) return sp_mkscaler(elements[0]);
    sp_value val = sp_new_array(elements.size());
    if (val.type == SP_ARRAY) std::ranges::copy(elements, val.ary.own().begin());
    return val;
}

} // namespace norva
