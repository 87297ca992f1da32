// Functions of one or two real numbers, element by element on arrays.
#include "functions_int.h"

#include <algorithm>
#include <cmath>

namespace norva {

namespace {

bool never(double) {
    return false;
}
bool not_above_zero(double x) {
    return x <= 0.0;
}
bool below_zero(double x) {
    return x < 0.0;
}
// An odd limit, kept on purpose: 1 is refused and -1 is not.
bool out_of_bounds(double x) {
    return x >= 1.0 || x < -1.0;
}

// f of each element; the first element that is bad ends the call.
template <class F, class Bad> sp_value spfunc_x(sp_args args, F f, Bad bad, const char* message = "") {
    const sp_value& x = args[0];
    if (x.type != SP_ARRAY) {
        double number = sp_number(x);
        return bad(number) ? sp_mkerror(message) : sp_mkscaler(f(number));
    }
    sp_value result = sp_new_array(x.npts());
    if (result.type == SP_ERROR) return result;
    std::span<double> out = result.ary.own();
    for (std::size_t i = 0; i < out.size(); i++) {
        if (bad(x.ary[i])) return sp_mkerror(message);
        out[i] = f(x.ary[i]);
    }
    return result;
}

// Two arrays over the shorter length; a single number goes with every element of the other argument.
template <class F, class Bad> sp_value spfunc_xx(sp_args args, F f, Bad bad, const char* message = "") {
    double one1 = 0.0, one2 = 0.0;
    auto a = sp_elements(args[0], one1), b = sp_elements(args[1], one2);
    const bool many1 = args[0].type == SP_ARRAY, many2 = args[1].type == SP_ARRAY;
    if (!many1 && !many2) return bad(one1, one2) ? sp_mkerror(message) : sp_mkscaler(f(one1, one2));
    sp_value result = sp_new_array(!many1 ? b.size() : !many2 ? a.size() : std::min(a.size(), b.size()));
    if (result.type == SP_ERROR) return result;
    std::span<double> out = result.ary.own();
    for (std::size_t i = 0; i < out.size(); i++) {
        double x = a[many1 ? i : 0], y = b[many2 ? i : 0];
        if (bad(x, y)) return sp_mkerror(message);
        out[i] = f(x, y);
    }
    return result;
}

} // namespace

sp_value fn_sin(sp_args args) {
    return spfunc_x(
        args, [](double x) { return std::sin(x); }, never);
}
sp_value fn_cos(sp_args args) {
    return spfunc_x(
        args, [](double x) { return std::cos(x); }, never);
}
sp_value fn_tan(sp_args args) {
    return spfunc_x(
        args, [](double x) { return std::tan(x); }, never);
}
sp_value fn_asin(sp_args args) {
    return spfunc_x(
        args, [](double x) { return std::asin(x); }, out_of_bounds, "ASIN of number out of bounds.");
}
sp_value fn_acos(sp_args args) {
    return spfunc_x(
        args, [](double x) { return std::acos(x); }, out_of_bounds, "ACOS of number out of bounds.");
}
sp_value fn_atan(sp_args args) {
    return spfunc_x(
        args, [](double x) { return std::atan(x); }, never);
}
sp_value fn_exp(sp_args args) {
    return spfunc_x(
        args, [](double x) { return std::exp(x); }, never);
}
sp_value fn_nint(sp_args args) {
    return spfunc_x(
        args, [](double x) { return std::round(x); }, never);
}
sp_value fn_log10(sp_args args) {
    return spfunc_x(
        args, [](double x) { return std::log10(x); }, not_above_zero, "LOG10 of zero or negitive number.");
}
sp_value fn_logn(sp_args args) {
    return spfunc_x(
        args, [](double x) { return std::log(x); }, not_above_zero, "LOGN of zero or negitive number.");
}
sp_value fn_pow10(sp_args args) {
    return spfunc_x(
        args, [](double x) { return std::pow(10.0, x); }, never);
}
sp_value fn_sqrt(sp_args args) {
    return spfunc_x(
        args, [](double x) { return std::sqrt(x); }, below_zero, "SQRT of negitive number.");
}

sp_value fn_atan2(sp_args args) {
    return spfunc_xx(
        args, [](double y, double x) { return std::atan2(y, x); },
        [](double y, double x) { return y == 0.0 && x == 0.0; }, "ATAN2 both args zero.");
}
sp_value fn_pow(sp_args args) {
    return spfunc_xx(
        args, [](double a, double b) { return std::pow(a, b); }, [](double, double) { return false; });
}

} // namespace norva
