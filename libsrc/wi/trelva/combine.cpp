// The four arithmetic operations on two values of any types.
#include "trelva/eval.h"

#include <algorithm>
#include <cstdint>

namespace norva {

namespace {

// A divisor counts as zero when it is neither below nor above zero, so not-a-number does too.
bool is_zero(double divisor) {
    return !(divisor < 0.0 || divisor > 0.0);
}

bool any_zero(std::span<const double> divisors) {
    // Counted to the end, in integers as wide as a double, so that the loop runs on whole vectors.
    std::int64_t zeros = 0;
    for (double divisor : divisors) zeros += is_zero(divisor) ? 1 : 0;
    return zeros > 0;
}

std::size_t result_length(const sp_value& val1, const sp_value& val2) {
    if (val1.type != SP_ARRAY) return val2.npts();
    return val2.type != SP_ARRAY ? val1.npts() : std::min(val1.npts(), val2.npts());
}

// An array of n elements for the result: that of an operand nobody else holds, or else a new one.
sp_value result_array(sp_value& val1, sp_value& val2, std::size_t n) {
    for (sp_value* val : {&val1, &val2})
        if (val->type == SP_ARRAY && val->npts() == n && val->ary.alone()) return std::move(*val);
    return sp_new_array(n);
}

// Operands are arrays or numbers, at least one of them an array. The result may stand on an operand's own
// elements, which is safe because an element is read before it is written.
template <class F> sp_value elementwise(sp_value& val1, sp_value& val2, F f) {
    const std::size_t n = result_length(val1, val2);
    const bool many1 = val1.type == SP_ARRAY, many2 = val2.type == SP_ARRAY;
    const double *a = val1.ary.data(), *b = val2.ary.data();
    const double sa = val1.scaler, sb = val2.scaler;
    sp_value result = result_array(val1, val2, n);
    if (result.type == SP_ERROR) return result;
    double* c = result.ary.own().data();
    if (many1 && many2)
        for (std::size_t i = 0; i < n; i++) c[i] = f(a[i], b[i]);
    else if (many1)
        for (std::size_t i = 0; i < n; i++) c[i] = f(a[i], sb);
    else
        for (std::size_t i = 0; i < n; i++) c[i] = f(sa, b[i]);
    return result;
}

template <class F> sp_value numeric(sp_value& val1, sp_value& val2, F f) {
    if (val1.type == SP_SCALER && val2.type == SP_SCALER) return sp_mkscaler(f(val1.scaler, val2.scaler));
    return elementwise(val1, val2, f);
}

sp_value sp_plus(sp_value& val1, sp_value& val2) {
    return numeric(val1, val2, [](double a, double b) { return a + b; });
}

sp_value sp_minus(sp_value& val1, sp_value& val2) {
    return numeric(val1, val2, [](double a, double b) { return a - b; });
}

sp_value sp_mult(sp_value& val1, sp_value& val2) {
    return numeric(val1, val2, [](double a, double b) { return a * b; });
}

sp_value sp_divide(sp_value& val1, sp_value& val2) {
    std::span<const double> divisors(&val2.scaler, 1);
    if (val2.type == SP_ARRAY) divisors = val2.ary.span().first(result_length(val1, val2));
    if (any_zero(divisors)) return sp_mkerror("Divide By Zero Error.");
    return numeric(val1, val2, [](double a, double b) { return a / b; });
}

sp_value join(sp_value val1, const sp_value& val2) {
    if (val1.string.size() + val2.string.size() > SP_MAX_STRING) return sp_mkerror("String is too long.");
    val1.string += val2.string;
    return val1;
}

// Both operands of one type, or arrays and numbers mixed.
sp_value operate(int op, sp_value& val1, sp_value& val2) {
    if (val1.type == SP_STRING && op == SP_PLUS) return join(std::move(val1), val2);
    if (val1.type == SP_STRING || val1.type == SP_WORD) return std::move(val1);
    switch (op) {
    case SP_PLUS: return sp_plus(val1, val2);
    case SP_MINUS: return sp_minus(val1, val2);
    case SP_MULT: return sp_mult(val1, val2);
    default: return sp_divide(val1, val2);
    }
}

bool mixes(const sp_value& val1, const sp_value& val2) {
    return (val1.type == SP_ARRAY && val2.type == SP_SCALER) ||
           (val1.type == SP_SCALER && val2.type == SP_ARRAY);
}

} // namespace

sp_value sp_combine(const sp_language& context, int op, sp_value val1, sp_value val2) {
    if (val1.type == SP_ERROR) return val1;
    if (val2.type == SP_ERROR || val1.type == SP_NULL) return val2;
    if (val2.type == SP_NULL) return val1;
    if (val1.type != val2.type && !mixes(val1, val2))
        val2 = sp_convert(context, val2, val1.type == SP_ARRAY ? SP_SCALER : val1.type);
    return operate(op, val1, val2);
}

} // namespace norva
