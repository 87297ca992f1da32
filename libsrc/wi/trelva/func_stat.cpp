// Functions that make one number of any number of arguments.
#include "functions_int.h"

namespace norva {

namespace {

// Every element of every argument.
template <class F> void each_element(sp_args args, F f) {
    for (const sp_value& arg : args) {
        double one = 0.0;
        for (double x : sp_elements(arg, one)) f(x);
    }
}

std::size_t count(sp_args args) {
    std::size_t n = 0;
    for (const sp_value& arg : args) n += arg.type == SP_ARRAY ? arg.npts() : 1;
    return n;
}

double sum(sp_args args) {
    double total = 0.0;
    each_element(args, [&](double x) { total += x; });
    return total;
}

// The element that `beats` all others, 0 when there is none.
template <class F> sp_value extreme(sp_args args, F beats) {
    double best = 0.0;
    bool any = false;
    each_element(args, [&](double x) {
        if (!any || beats(x, best)) best = x;
        any = true;
    });
    return sp_mkscaler(best);
}

} // namespace

sp_value fn_min(sp_args args) {
    return extreme(args, [](double x, double best) { return x < best; });
}

sp_value fn_max(sp_args args) {
    return extreme(args, [](double x, double best) { return x > best; });
}

sp_value fn_sum(sp_args args) {
    return sp_mkscaler(sum(args));
}

sp_value fn_avg(sp_args args) {
    std::size_t n = count(args);
    return sp_mkscaler(n > 0 ? sum(args) / static_cast<double>(n) : 0.0);
}

sp_value fn_npts(sp_args args) {
    return sp_mkscaler(static_cast<double>(count(args)));
}

} // namespace norva
