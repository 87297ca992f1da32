#pragma once
// The variables of a script and the errors it gathers. Names compare without regard to the case of letters.
//
// A variable belongs to one of three classes:
//   0  provided by the program: the constants PI, TWOPI and C, and whatever the application feeds in
//   1  defined by a script line or by a command
//   2  protected: defined by a script line that begins with "-"
// Class 0 survives from one run of a script to the next; the others are flushed before it runs again.

#include "trelva/value.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace norva {

struct sp_var {
    int type = 0; // ownership class
    std::string name;
    std::string desc; // description, may be empty
    std::unique_ptr<sp_value> val;
};

struct sp_vlib {
    std::vector<sp_var> vars;                           // in order of definition
    std::unordered_map<std::string, std::size_t> index; // position by name in upper case
};

// What the language needs to know of its owner: every plot's context is one of these and more.
struct sp_language {
    std::unique_ptr<sp_vlib> vlib; // made on first use
    std::string errstr;            // errors gathered, a line each
};

// Errors. The text is a single blank when there are none.
void sp_err_add(sp_language& context, std::string_view err);
std::string sp_err_get(const sp_language& context);
void sp_err_flush(sp_language& context);

// Stores a value under a name as class `type` (0, 2; anything else is 1). Empty, or the message when the
// class of the name forbids it; the old value then stays. The program may overwrite anything, a protected
// line also a plain one. The description of a name outlives its values.
std::string sp_var_putval(sp_language& context, std::string_view name, sp_value val, int type);
// The stored value, or a value of type SP_NULL shared by all when the name is unknown. It stays at its place
// until the name is flushed; a new value of the name is stored at the same place.
const sp_value& sp_var_getval(sp_language& context, std::string_view name);
// The description of a known name; an unknown name is ignored and has a single blank, as has a name without.
void sp_var_putdesc(sp_language& context, std::string_view name, std::string_view desc);
std::string sp_var_getdesc(sp_language& context, std::string_view name);
int sp_var_isvar(sp_language& context, std::string_view name); // 1 or 0
// Name of the ipos-th variable (from 0, in order of definition) of class `memtype` whose value is of type
// `vartype`.
std::optional<std::string> sp_var_search(sp_language& context, int vartype, int memtype, int ipos);
// Removes every variable whose class is not 0; the others keep their order and their values' places.
void sp_var_flush(sp_language& context);
// Removes all variables; the constants are there again at the next use.
void sp_var_freelib(sp_language& context);

} // namespace norva
