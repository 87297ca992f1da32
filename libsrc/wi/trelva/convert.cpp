// Conversions between value types.
#include "convert.h"

#include "trelva/eval.h"
#include "zuvsys/numparse.h"

#include <cmath>

namespace norva {

namespace {

// The name of a value's type, as a word.
const char* type_word(const sp_value& val) {
    switch (val.type) {
    case SP_ARRAY: return "ARRAY";
    case SP_STRING: return "STRING";
    case SP_SCALER: return "SCALER";
    default: return "NULL";
    }
}

sp_array one_element(double x) {
    sp_array ary = sp_mkary(1);
    ary.own()[0] = x;
    return ary;
}

// The fields of `val` as a value of type `newtype`, which is not its own.
sp_value converted(const sp_value& val, int newtype) {
    switch (newtype) {
    case SP_ARRAY: return sp_mkarray(one_element(sp_number(val)));
    case SP_WORD: return sp_mkword(type_word(val));
    case SP_STRING: return sp_mkstring(sp_text(val));
    case SP_SCALER: return sp_mkscaler(sp_number(val));
    case SP_ERROR:
        return sp_mkerror(val.type == SP_NULL ? "Manufactured error (NULL)." : "Manufactured error.");
    default: return {};
    }
}

} // namespace

double sp_number(const sp_value& val) {
    switch (val.type) {
    case SP_ARRAY: return val.npts() > 0 ? val.ary[0] : 0.0;
    case SP_STRING: return to_double(val.string);
    case SP_SCALER: return val.scaler;
    default: return 0.0;
    }
}

std::string sp_text(const sp_value& val) {
    switch (val.type) {
    case SP_WORD: return val.ename;
    case SP_STRING: return val.string;
    case SP_NULL: return "NULL";
    default: return sp_number_text(sp_number(val));
    }
}

std::string sp_number_text(double x) {
    return std::isnan(x) ? "nan" : format_general(x, 10);
}

sp_value sp_convert(const sp_language&, const sp_value& val, int newtype) {
    if (newtype == SP_NULL) return {};
    if (val.type == SP_ERROR || val.type == newtype) return val;
    sp_value result = converted(val, newtype);
    if (val.type == SP_NULL) result.type = SP_NULL;
    return result;
}

} // namespace norva
