// Evaluation of formulas. Groups and calls wait on a stack of levels, not on the program's own stack, so that
// brackets may be nested to any depth.
#include "trelva/eval.h"

#include "olist.h"
#include "parse.h"
#include "trelva/functions.h"

#include <memory>
#include <stack>

namespace norva {

namespace {

// A call whose arguments are being evaluated.
struct call {
    std::string name;
    std::size_t end; // end of the text of the arguments
    std::vector<sp_value> args;
};

// A formula being read: the whole, a bracket group, or the current argument of a call.
struct level {
    sp_parse_state in;
    olist list;
    std::unique_ptr<call> func; // for an argument
};

level group_level(std::size_t begin, std::size_t end) {
    level group;
    group.in = {begin, end, 1};
    return group;
}

// Turns a level to the argument of its call that begins at `begin`.
void read_argument(sp_formula& formula, level& now, std::size_t begin) {
    now.in = {begin, formula.argument_end(begin, now.func->end), 1};
    now.list = {};
}

level call_level(sp_formula& formula, std::string_view name, std::size_t begin, std::size_t end) {
    level first;
    first.func = std::make_unique<call>(call{std::string(name), end, {}});
    read_argument(formula, first, begin);
    return first;
}

sp_value run(sp_language& context, sp_formula& formula, level start) {
    std::stack<level> levels;
    levels.push(std::move(start));
    for (;;) {
        level& now = levels.top();
        sp_value result;
        parse_token tok = sp_parse_gettoken(context, formula, now.in);
        switch (tok.type) {
        case SP_TOK_GROUP: levels.push(group_level(tok.begin, tok.end)); continue;
        case SP_TOK_FUNC: levels.push(call_level(formula, tok.name, tok.begin, tok.end)); continue;
        case SP_TOK_VAR: olist_pushval(context, now.list, sp_var_getval(context, tok.name)); continue;
        case SP_TOK_LITERAL: olist_pushval(context, now.list, std::move(tok.val)); continue;
        case SP_TOK_ERROR: result = std::move(tok.val); break;
        case SP_TOK_END: result = olist_evaluate(context, std::move(now.list)); break;
        default: olist_pushopt(context, now.list, tok.type); continue;
        }
        // The level is at its end: its value is an argument, or an operand of the level below, or the result.
        if (now.func) {
            now.func->args.push_back(std::move(result));
            if (now.in.end < now.func->end) {
                read_argument(formula, now, now.in.end + 1);
                continue;
            }
            result = sp_function(context, now.func->name, now.func->args);
        }
        levels.pop();
        if (levels.empty()) return result;
        olist_pushval(context, levels.top().list, std::move(result));
    }
}

// Do brackets and quotes pair?
bool balanced(std::string_view text) {
    std::size_t open = 0;
    bool quoted = false;
    for (char c : text) {
        if (c == '"') quoted = !quoted;
        if (quoted) continue;
        if (c == '(') open++;
        if (c == ')' && open-- == 0) return false;
    }
    return open == 0 && !quoted;
}

std::string_view up_to_zero(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

} // namespace

sp_value sp_eval_formula(sp_language& context, std::string_view text) {
    sp_formula formula(up_to_zero(text));
    return run(context, formula, group_level(0, formula.str.size()));
}

sp_value sp_eval_function(sp_language& context, std::string_view name, std::string_view argstr) {
    sp_formula formula(up_to_zero(argstr));
    if (!balanced(formula.str)) return sp_mkerror("Syntax Error in function call.");
    return run(context, formula, call_level(formula, name, 0, formula.str.size()));
}

} // namespace norva
