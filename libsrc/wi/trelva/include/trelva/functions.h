#pragma once
// The built-in functions of the script language. doc/trelva.md describes each with an example.

#include "trelva/value.h"
#include "trelva/vars.h"

#include <span>
#include <string_view>

namespace norva {

// Calls the function of that name, in any case, with evaluated arguments. An argument that is an error is the
// result of every function but ERRSTR.
sp_value sp_function(sp_language& context, std::string_view name, std::span<const sp_value> vary);

} // namespace norva
