// The four arithmetic operations on two values of any types.
#include "trelva/eval.h"

#include <algorithm>
#include <bit>
#include <cstdint>

namespace norva {

namespace {

constexpr const char* by_zero = "Divide By Zero Error.";

// 1 for a divisor that counts as zero: one that is neither below nor above zero, so not-a-number does too. By
// its bits, since comparisons would keep a loop from running on whole vectors: without the sign and less one,
// only zero (all ones) and not-a-number (beyond infinity) have all eleven bits of the exponent set.
constexpr auto is_zero = [](double divisor) -> std::uint64_t {
    const std::uint64_t exponent = ((std::bit_cast<std::uint64_t>(divisor) << 1) - 1) >> 53;
    return (exponent + 1) >> 11;
};

constexpr auto never = [](double) -> std::uint64_t { return 0; };

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

// f of each element, and how many elements were bad: counted to the end, and in doubles, so that the loop
// runs on whole vectors.
template <class F, class Bad>
std::uint64_t each(std::span<double> c, const double* a, const double* b, bool many1, bool many2, F f,
                   Bad bad) {
    const std::size_t n = c.size();
    std::uint64_t count = 0;
    auto one = [&](std::size_t i, double x, double y) {
        c[i] = f(x, y);
        count += bad(y);
    };
    if (many1 && many2)
        for (std::size_t i = 0; i < n; i++) one(i, a[i], b[i]);
    else if (many1)
        for (std::size_t i = 0; i < n; i++) one(i, a[i], *b);
    else
        for (std::size_t i = 0; i < n; i++) one(i, *a, b[i]);
    return count;
}

// Operands are arrays or numbers, at least one of them an array. The result may stand on an operand's own
// elements, which is safe because an element is read before it is written.
template <class F, class Bad> sp_value elementwise(sp_value& val1, sp_value& val2, F f, Bad bad) {
    const bool many1 = val1.type == SP_ARRAY, many2 = val2.type == SP_ARRAY;
    const double sa = val1.scaler, sb = val2.scaler;
    const double *a = many1 ? val1.ary.data() : &sa, *b = many2 ? val2.ary.data() : &sb;
    sp_value result = result_array(val1, val2, result_length(val1, val2));
    if (result.type == SP_ERROR) return result;
    const std::uint64_t zeros = each(result.ary.own(), a, b, many1, many2, f, bad);
    return zeros > 0 ? sp_mkerror(by_zero) : result;
}

template <class F, class Bad> sp_value numeric(sp_value& val1, sp_value& val2, F f, Bad bad) {
    if (val1.type != SP_SCALER || val2.type != SP_SCALER) return elementwise(val1, val2, f, bad);
    return bad(val2.scaler) ? sp_mkerror(by_zero) : sp_mkscaler(f(val1.scaler, val2.scaler));
}

template <class F> sp_value numeric(sp_value& val1, sp_value& val2, F f) {
    return numeric(val1, val2, f, never);
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
    return numeric(
        val1, val2, [](double a, double b) { return a / b; }, is_zero);
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
