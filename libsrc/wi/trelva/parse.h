#pragma once
// Tokens of a formula. The whole formula is scanned in place: a bracket group, and an argument of a call, is
// the part of it between two positions, its end read as the formula's end.

#include "trelva/value.h"
#include "trelva/vars.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace norva {

// A formula with the brackets paired so far, so that nested groups are scanned once and not once per depth.
struct sp_formula {
    std::string_view str;
    std::vector<std::size_t> closes; // position of the bracket that closes the one here; 0 not known

    explicit sp_formula(std::string_view text) : str(text) {}

    // Position of the bracket that closes the one at `open`, quoted text skipped; npos when there is none
    // before `end`.
    std::size_t parse_brackets(std::size_t open, std::size_t end);
    // First comma from `from` on outside brackets and quotes, `end` when there is none. The brackets pair.
    std::size_t argument_end(std::size_t from, std::size_t end);
};

// Where one part of a formula is being read.
struct sp_parse_state {
    std::size_t ptr = 0; // read position
    std::size_t end = 0; // end of the part
    int lsttype = 1;     // 1 after an operator or at the start, 2 after an operand
};

// Token types; 1 to 4 are the operators of trelva/eval.h.
constexpr int SP_TOK_GROUP = 5;   // a bracket group: begin, end
constexpr int SP_TOK_FUNC = 6;    // a call: name; its arguments: begin, end
constexpr int SP_TOK_VAR = 7;     // a variable: name
constexpr int SP_TOK_LITERAL = 8; // a number, string or word: val
constexpr int SP_TOK_ERROR = 9;   // val, an error
constexpr int SP_TOK_END = 10;    // end of the formula

struct parse_token {
    int type = SP_TOK_END;
    std::string_view name;
    std::size_t begin = 0, end = 0;
    sp_value val;
};

// Reads the next token.
parse_token sp_parse_gettoken(sp_language& context, sp_formula& formula, sp_parse_state& state);

} // namespace norva
