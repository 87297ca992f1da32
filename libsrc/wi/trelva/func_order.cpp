// Sorting, largest first, and the order of elements as data.
#include "functions_int.h"
#include "zuvsys/bestint.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <vector>

namespace norva {

namespace {

struct ranked {
    double value;
    std::uint32_t place; // from 0
};

// The elements with their places, largest first, equal ones in their order. The order is that of exchanging
// neighbours while an earlier one is below a later one: not-a-number is neither, so nothing passes it.
std::vector<ranked> by_size(std::span<const double> data) {
    std::vector<ranked> order(data.size());
    for (std::size_t i = 0; i < data.size(); i++) order[i] = {data[i], static_cast<std::uint32_t>(i)};
    auto above = [](const ranked& a, const ranked& b) { return a.value > b.value; };
    auto is_nan = [](const ranked& r) { return std::isnan(r.value); };
    for (auto from = order.begin(); from != order.end();) {
        auto to = std::find_if(from, order.end(), is_nan);
        std::stable_sort(from, to, above);
        from = to == order.end() ? to : to + 1;
    }
    return order;
}

template <class F> sp_value ordered(sp_args args, F element_of) {
    sp_value joined = sp_join(args);
    if (joined.type == SP_ERROR) return joined;
    std::vector<ranked> order = by_size(joined.ary.span());
    std::ranges::transform(order, joined.ary.own().begin(), element_of);
    return joined;
}

} // namespace

sp_value fn_sort(sp_args args) {
    return ordered(args, [](const ranked& r) { return r.value; });
}

sp_value fn_rank(sp_args args) {
    return ordered(args, [](const ranked& r) { return r.place + 1.0; });
}

sp_value fn_shuffle(sp_args args) {
    double one1 = 0.0, one2 = 0.0;
    auto data = sp_elements(args[0], one1), order = sp_elements(args[1], one2);
    if (order.empty()) return sp_mkerror("No order data in SHUFFLE.");
    std::vector<double> out;
    out.reserve(order.size());
    for (double place : order) {
        auto at = static_cast<std::size_t>(std::max(bestint(place), 0)); // 0 is outside
        if (at >= 1 && at <= data.size()) out.push_back(data[at - 1]);
    }
    if (out.empty()) return sp_mkerror("No output data in SHUFFLE.");
    return sp_scaler_or_array(out);
}

} // namespace norva
