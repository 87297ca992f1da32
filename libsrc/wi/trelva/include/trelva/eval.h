#pragma once
// Formulas: evaluation, the arithmetic operators and the conversions between value types. A failure is a
// value of type SP_ERROR with its message, never a stop.
//
//   formula  ->  [ operand { operator operand } ]        * and / before + and -, equal ones from the left
//   operator ->  +  -  *  /
//   operand  ->  number | string | word | variable | function "(" arguments ")" | "(" formula ")"
//   number   ->  [ - ] digits with at most one point [ e [+ or -] digits ]
//   string   ->  '"' any text without a quote '"'
//   arguments -> formula { "," formula }
//
// A "-" at the start or after an operator begins a number, so "2*-3" is a formula and "-X" is none. A name
// that is no variable is a word of its own text (red, AP); "#red" is a word even if a variable has its name.

#include "trelva/value.h"
#include "trelva/vars.h"

#include <string_view>

namespace norva {

// The value of a formula; a zero byte ends it. Brackets may be nested to any depth.
sp_value sp_eval_formula(sp_language& context, std::string_view formula);

// Calls a function (trelva/functions.h) with the arguments in `argstr`, formulas separated by commas. One
// empty formula is still an argument, of type SP_NULL.
sp_value sp_eval_function(sp_language& context, std::string_view name, std::string_view argstr);

// Operators.
constexpr int SP_PLUS = 1;
constexpr int SP_MINUS = 2;
constexpr int SP_MULT = 3;
constexpr int SP_DIVIDE = 4;

// One binary operation. Errors pass through, the left one first; a value of type SP_NULL leaves the other
// operand as it is; otherwise the right operand is brought to the type of the left one, except that arrays
// and numbers mix. Arrays work element by element over the shorter length. Strings join by +; every other
// operation on strings, and all on words, give the left operand. A divisor that is neither above nor below
// zero gives "Divide By Zero Error."
sp_value sp_combine(const sp_language& context, int op, sp_value val1, sp_value val2);

// The value as type `newtype`. Errors stay errors; a value of type SP_NULL stays one, with its fields filled
// as for the asked type (0.0 or "NULL"). Numbers become text by "%20.10g" with the blanks cut; a string is
// read as the number at its start; an array stands for its first element, 0.0 when it has none.
sp_value sp_convert(const sp_language& context, const sp_value& val, int newtype);

} // namespace norva
