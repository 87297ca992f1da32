// Tokens of a formula: one function for each kind.
#include "parse.h"

#include "trelva/eval.h"
#include "zuvsys/numparse.h"

#include <algorithm>

namespace norva {

namespace {

constexpr std::size_t npos = std::string_view::npos;

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool in_name(char c) {
    return is_letter(c) || is_digit(c) || c == '_';
}
bool in_any_name(char c) { // of a function, a variable or a word, before it is known which
    return in_name(c) || c == '$' || c == '%';
}
bool begins_word(char c) {
    return is_letter(c) || c == '_' || c == '$' || c == '%' || c == '#' || c == '@';
}
bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\n';
}

// The text still to be read, with small readers that stop at its end.
struct reader {
    std::string_view text;
    sp_parse_state& state;

    bool at_end() const { return state.ptr >= state.end; }
    char peek() const { return at_end() ? '\0' : text[state.ptr]; }
    template <class F> std::string_view take_while(F holds) {
        std::size_t from = state.ptr;
        while (!at_end() && holds(text[state.ptr])) state.ptr++;
        return text.substr(from, state.ptr - from);
    }
};

parse_token error_token(const char* message) {
    parse_token tok;
    tok.type = SP_TOK_ERROR;
    tok.val = sp_mkerror(message);
    return tok;
}

parse_token literal(sp_value val) {
    parse_token tok;
    tok.type = SP_TOK_LITERAL;
    tok.val = std::move(val);
    return tok;
}

// Length of the number at the start of `text`, 0 when it is none.
//
//   state  0 start, 1 after sign, 2 integer digits, 3 after point, 4 fraction digits,
//          5 after exponent letter, 6 after exponent sign, 7 exponent digits
std::size_t number_length(std::string_view text) {
    constexpr int most_digits = 40, most_exponent_digits = 3;
    int state = 0, digits = 0, exponent_digits = 0;
    std::size_t i = 0;
    for (; i < text.size(); i++) {
        char c = text[i];
        if (c == '+' || c == '-') {
            if (state != 0 && state != 5) break; // the next token
            state++;
        } else if (c == '.') {
            if (state > 2) return 0;
            state = 3;
        } else if (is_digit(c)) {
            (state < 5 ? digits : exponent_digits)++;
            if (digits > most_digits || exponent_digits > most_exponent_digits) return 0;
            state = state <= 2 ? 2 : state <= 4 ? 4 : 7;
        } else if (c == 'e' || c == 'E') {
            if (digits == 0 || state >= 5) return 0;
            state = 5;
        } else
            break;
    }
    bool whole = digits > 0 && (state < 5 || exponent_digits > 0);
    return whole ? i : 0;
}

parse_token parse_num(const reader& in) {
    std::string_view rest = in.text.substr(in.state.ptr, in.state.end - in.state.ptr);
    std::size_t length = number_length(rest);
    if (length == 0) return error_token("Syntax error (in a number).");
    in.state.ptr += length;
    return literal(sp_mkscaler(to_double(rest.substr(0, length))));
}

parse_token parse_string(const reader& in) {
    std::size_t from = in.state.ptr + 1;
    std::size_t quote = in.text.find('"', from);
    if (quote >= in.state.end) return error_token("Syntax error (in string).");
    in.state.ptr = quote + 1;
    return literal(sp_mkstring(std::string(in.text.substr(from, quote - from))));
}

// A bracket group or, with a name, a call, whose bracket stands at the read position.
parse_token bracketed(sp_formula& formula, const reader& in, int type, const char* message) {
    std::size_t close = formula.parse_brackets(in.state.ptr, in.state.end);
    if (close == npos) return error_token(message);
    parse_token tok;
    tok.type = type;
    tok.begin = in.state.ptr + 1;
    tok.end = close;
    in.state.ptr = close + 1;
    return tok;
}

parse_token parse_func(sp_formula& formula, reader& in) {
    constexpr const char* message = "Syntax error (in %func).";
    std::string_view name = in.take_while(in_name);
    if (in.peek() != '(') return error_token(message);
    parse_token tok = bracketed(formula, in, SP_TOK_FUNC, message);
    tok.name = name.substr(0, SP_NAME_LENGTH);
    return tok;
}

// A word drops one leading "#" and takes the next character whatever it is.
parse_token parse_word(reader& in) {
    if (in.peek() == '#') in.state.ptr++;
    std::size_t from = in.state.ptr;
    if (!in.at_end()) in.state.ptr++;
    in.take_while(in_name);
    return literal(sp_mkword(in.text.substr(from, in.state.ptr - from)));
}

// Tells a function, a variable and a word apart by what follows the name and by the names that are known.
int sp_parse_scanname(sp_language& context, std::string_view name, char next) {
    if (next == '#') return SP_TOK_LITERAL;
    if (next == '(') return SP_TOK_FUNC;
    return !name.empty() && sp_var_isvar(context, name) ? SP_TOK_VAR : SP_TOK_LITERAL;
}

parse_token parse_name(sp_language& context, sp_formula& formula, reader& in) {
    const std::size_t from = in.state.ptr;
    std::string_view name = in.take_while(in_any_name).substr(0, SP_NAME_LENGTH);
    int type = sp_parse_scanname(context, name, in.peek());
    if (type == SP_TOK_VAR) {
        parse_token tok;
        tok.type = type;
        tok.name = name;
        return tok;
    }
    in.state.ptr = from;
    return type == SP_TOK_FUNC ? parse_func(formula, in) : parse_word(in);
}

parse_token parse_operand(sp_language& context, sp_formula& formula, reader& in) {
    char c = in.peek();
    if (is_digit(c) || c == '.' || c == '-') return parse_num(in);
    if (begins_word(c)) return parse_name(context, formula, in);
    if (c == '"') return parse_string(in);
    if (c == '(') return bracketed(formula, in, SP_TOK_GROUP, "Syntax error (parser).");
    return error_token("Syntax error (parser).");
}

// The operator at the read position, 0 when an operand stands there.
int operator_type(char c, int lsttype) {
    switch (c) {
    case '+': return SP_PLUS;
    case '-': return lsttype == 1 ? 0 : SP_MINUS;
    case '*': return SP_MULT;
    case '/': return SP_DIVIDE;
    default: return 0;
    }
}

} // namespace

std::size_t sp_formula::parse_brackets(std::size_t open, std::size_t end) {
    if (closes.empty()) closes.resize(str.size());
    if (closes[open] > 0) return closes[open] < end ? closes[open] : npos;
    std::vector<std::size_t> opened;
    bool quoted = false;
    for (std::size_t i = open; i < end; i++) {
        if (str[i] == '"') quoted = !quoted;
        if (quoted) continue;
        if (str[i] == '(') opened.push_back(i);
        if (str[i] == ')') {
            closes[opened.back()] = i;
            opened.pop_back();
            if (opened.empty()) return i;
        }
    }
    return npos;
}

std::size_t sp_formula::argument_end(std::size_t from, std::size_t end) {
    bool quoted = false;
    for (std::size_t i = from; i < end; i++) {
        if (str[i] == '"') quoted = !quoted;
        if (quoted) continue;
        if (str[i] == ',') return i;
        if (str[i] == '(') i = std::min(parse_brackets(i, end), end);
    }
    return end;
}

parse_token sp_parse_gettoken(sp_language& context, sp_formula& formula, sp_parse_state& state) {
    reader in{formula.str, state};
    in.take_while(is_blank);
    if (in.at_end()) return {};
    parse_token tok;
    tok.type = operator_type(in.peek(), state.lsttype);
    if (tok.type > 0) {
        state.ptr++;
        state.lsttype = 1;
        return tok;
    }
    state.lsttype = 2;
    return parse_operand(context, formula, in);
}

} // namespace norva
