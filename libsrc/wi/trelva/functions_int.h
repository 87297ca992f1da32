#pragma once
// What the families of functions share: the rows of the function tables, and reading of arguments.

#include "convert.h"
#include "trelva/value.h"
#include "trelva/vars.h"

#include <climits>
#include <optional>
#include <span>
#include <string>

namespace norva {

using sp_args = std::span<const sp_value>;
using sp_routine = sp_value (*)(sp_args args);

constexpr int SP_ANY_NUMBER = INT_MAX;

// One built-in function.
struct sp_func_row {
    const char* name;
    int least, most;          // arguments; fewer or more give ...
    const char* wrong_number; // ... this message
    sp_routine routine;
};

// Calls the function of that name from a table; empty when the table does not have it.
std::optional<sp_value> sp_call_row(std::span<const sp_func_row> table, const std::string& name,
                                    sp_args args);

// The functions that read data files, and those of splines; empty for any other name.
std::optional<sp_value> sp_func_files(const std::string& name, sp_args args);
std::optional<sp_value> sp_func_spl(const std::string& name, sp_args args);

// --- Arguments

// The number of a value (sp_number) rounded by adding 0.5 and truncating, held to the range of int.
int sp_count(const sp_value& val);
// The elements of a value: those of an array, or its number alone, which is put to `one`.
std::span<const double> sp_elements(const sp_value& val, double& one);

// --- Results

// All elements of all arguments joined in order, as an array; an error when they are too many.
sp_value sp_join(sp_args args);
// A scalar for one element, an array for any other number of them.
sp_value sp_scaler_or_array(std::span<const double> elements);

// --- The families

sp_value fn_sin(sp_args), fn_cos(sp_args), fn_tan(sp_args), fn_asin(sp_args), fn_acos(sp_args),
    fn_atan(sp_args), fn_exp(sp_args), fn_nint(sp_args), fn_log10(sp_args), fn_logn(sp_args),
    fn_pow10(sp_args), fn_sqrt(sp_args), fn_atan2(sp_args), fn_pow(sp_args); // func_math.cpp

sp_value fn_rand(sp_args), fn_ramp(sp_args), fn_seq(sp_args), fn_subarray(sp_args), fn_validarray(sp_args),
    fn_notvalidarray(sp_args), fn_cliptop(sp_args), fn_clipbot(sp_args); // func_array.cpp

sp_value fn_min(sp_args), fn_max(sp_args), fn_avg(sp_args), fn_sum(sp_args),
    fn_npts(sp_args); // func_stat.cpp

sp_value fn_sort(sp_args), fn_rank(sp_args), fn_shuffle(sp_args); // func_order.cpp

sp_value fn_x2dindx(sp_args), fn_y2dindx(sp_args), fn_find2dpks(sp_args); // func_grid.cpp

sp_value fn_getkw(sp_args); // func_keyword.cpp

} // namespace norva
