// Spline functions.
#include "functions_int.h"

namespace norva {

std::optional<sp_value> sp_func_spl(const std::string&, sp_args) {
    return std::nullopt;
}

} // namespace norva
