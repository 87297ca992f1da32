// Functions that make arrays and cut them.
#include "functions_int.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace norva {

namespace {

// The C library's generator, seeded at the first call, so that runs repeat.
double next_random() {
    static bool seeded = false;
    if (!seeded) std::srand(1);
    seeded = true;
    return std::rand() / 2147483647.0;
}

double number_or(sp_args args, std::size_t i, double absent) {
    return i < args.size() ? sp_number(args[i]) : absent;
}

int count_or(sp_args args, std::size_t i, int absent) {
    return i < args.size() ? sp_count(args[i]) : absent;
}

// A mask element counts as set when it is above or below zero.
bool is_set(double mask) {
    return mask < 0.0 || mask > 0.0;
}

bool is_numeric(const sp_value& val) {
    return val.type == SP_ARRAY || val.type == SP_SCALER;
}

struct mask_rule {
    bool keep_set;         // which elements stay
    bool keep_beyond;      // those past the end of the mask
    const char* none_left; // a string, no error
    const char* bad_data;
    const char* bad_mask;
};

constexpr mask_rule valid_rule = {true, true, "No valid points.", "Bad 1st argument in VALIDARRAY.",
                                  "Bad 2nd argument in VALIDARRAY."};
constexpr mask_rule notvalid_rule = {false, false, "No nonvalid points.",
                                     "Bad 1st argument in NOTVALIDARRAY.",
                                     "Bad 2nd argument in NOTVALIDARRAY."};

sp_value masked_array(const sp_value& data, const sp_value& mask, const mask_rule& rule) {
    std::vector<double> kept;
    for (std::size_t i = 0; i < data.npts(); i++)
        if (i < mask.npts() ? is_set(mask.ary[i]) == rule.keep_set : rule.keep_beyond)
            kept.push_back(data.ary[i]);
    if (kept.empty()) return sp_mkstring(rule.none_left);
    return sp_mkarray(sp_cpary(kept));
}

sp_value masked_scaler(const sp_value& data, const sp_value& mask, const mask_rule& rule) {
    if (mask.npts() > 0 && is_set(mask.ary[0]) == rule.keep_set) return data;
    return sp_mkstring(rule.none_left);
}

// Only numeric data with an array as mask computes anything; what else is let through gives no value.
sp_value masked(const sp_value& data, const sp_value& mask, const mask_rule& rule) {
    if (!is_numeric(data)) return mask.type == SP_SCALER ? sp_value{} : sp_mkerror(rule.bad_data);
    if (mask.type == SP_NULL) return sp_mkerror(rule.bad_mask);
    if (mask.type != SP_ARRAY) return {};
    return data.type == SP_ARRAY ? masked_array(data, mask, rule) : masked_scaler(data, mask, rule);
}

template <class F> sp_value clipped(sp_args args, F beyond) {
    double one = 0.0;
    sp_value result = sp_scaler_or_array(sp_elements(args[0], one));
    const double clip = sp_number(args[1]);
    if (result.type == SP_SCALER && beyond(result.scaler, clip)) result.scaler = clip;
    for (double& x : result.ary.own()) x = beyond(x, clip) ? clip : x;
    return result;
}

} // namespace

sp_value fn_rand(sp_args args) {
    const int n = args.empty() || args[0].type == SP_NULL ? 1 : sp_count(args[0]);
    if (n < 2) return sp_mkscaler(next_random());
    sp_value result = sp_new_array(static_cast<std::size_t>(n));
    for (double& x : result.ary.own()) x = next_random();
    return result;
}

sp_value fn_ramp(sp_args args) {
    const double start = number_or(args, 0, 0.0), step = number_or(args, 1, 1.0);
    const int npts = std::max(count_or(args, 2, 1), 0);
    sp_value result = sp_new_array(static_cast<std::size_t>(npts));
    double i = 0.0;
    for (double& x : result.ary.own()) x = start + i++ * step;
    return result;
}

sp_value fn_seq(sp_args args) {
    return args.empty() ? sp_mkarray(sp_mkary(1)) : sp_join(args);
}

sp_value fn_subarray(sp_args args) {
    const int index = count_or(args, 1, 1), count = count_or(args, 2, 1);
    if (index < 1) return sp_mkerror("Bad index argument.");
    if (count < 1) return sp_mkerror("Bad count argument.");
    double one = 0.0;
    std::span<const double> data = sp_elements(args[0], one);
    const auto first = static_cast<std::size_t>(index) - 1;
    if (first >= data.size()) return sp_mkerror("Index out of bounds.");
    if (count == 1) return sp_mkscaler(data[first]);
    return sp_mkarray(sp_cpary(data.subspan(first, std::min<std::size_t>(count, data.size() - first))));
}

sp_value fn_validarray(sp_args args) {
    return masked(args[0], args[1], valid_rule);
}

sp_value fn_notvalidarray(sp_args args) {
    return masked(args[0], args[1], notvalid_rule);
}

sp_value fn_cliptop(sp_args args) {
    return clipped(args, [](double x, double clip) { return x > clip; });
}

sp_value fn_clipbot(sp_args args) {
    return clipped(args, [](double x, double clip) { return x < clip; });
}

} // namespace norva
