// Values: the shared elements of arrays, makers, text for people.
#include "trelva/value.h"

#include "convert.h"

#include <algorithm>

namespace norva {

namespace {
std::size_t live_elements = 0;
}

sp_array::block::block(std::size_t n) : buf(n) {
    live_elements += n;
}

sp_array::block::~block() {
    live_elements -= buf.size();
}

std::size_t sp_array::live() {
    return live_elements;
}

std::span<double> sp_array::own() {
    if (!elems_) return {};
    if (!alone()) *this = sp_cpary(span());
    return elems_->buf.span();
}

sp_array sp_mkary(std::size_t npts) {
    sp_array ary;
    if (npts > 0) ary.elems_ = std::make_shared<sp_array::block>(npts);
    return ary;
}

sp_array sp_cpary(std::span<const double> from) {
    sp_array ary = sp_mkary(from.size());
    std::ranges::copy(from, ary.own().begin());
    return ary;
}

sp_value sp_get_blank_value() {
    return {};
}

sp_value sp_mkarray(sp_array ary) {
    sp_value val;
    val.type = SP_ARRAY;
    val.ary = std::move(ary);
    return val;
}

sp_value sp_mkword(std::string_view word) {
    sp_value val;
    val.type = SP_WORD;
    val.ename = word.substr(0, SP_NAME_LENGTH);
    return val;
}

sp_value sp_mkstring(std::string text) {
    sp_value val;
    val.type = SP_STRING;
    val.string = std::move(text);
    return val;
}

sp_value sp_mkscaler(double number) {
    sp_value val;
    val.type = SP_SCALER;
    val.scaler = number;
    return val;
}

sp_value sp_mkerror(std::string message) {
    sp_value val;
    val.type = SP_ERROR;
    val.string = std::move(message);
    return val;
}

sp_value sp_new_array(std::size_t npts) {
    if (npts > SP_MAX_ELEMENTS || sp_array::live() + npts > SP_MAX_LIVE)
        return sp_mkerror("Array is too large.");
    return sp_mkarray(sp_mkary(npts));
}

std::string sp_show(const sp_value& val) {
    switch (val.type) {
    case SP_WORD: return val.ename;
    case SP_STRING: return '"' + val.string + '"';
    case SP_SCALER: return sp_number_text(val.scaler);
    case SP_ERROR: return "error: " + val.string;
    case SP_ARRAY: break;
    default: return "NULL";
    }
    std::string text = "[";
    for (double x : val.ary) text += (text.size() > 1 ? " " : "") + sp_number_text(x);
    return text + "]";
}

} // namespace norva
