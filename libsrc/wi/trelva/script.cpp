// Scripts: reading and running the lines.
#include "trelva/script.h"

#include "trelva/eval.h"
#include "zuvsys/cstrings.h"
#include "zuvsys/strprintf.h"

#include <filesystem>
#include <fstream>
#include <istream>
#include <string>
#include <string_view>

namespace norva {

namespace {

constexpr std::string_view whitespace = " \t\n";

std::string_view rid_edge_blanks(std::string_view text) {
    std::size_t from = text.find_first_not_of(whitespace);
    if (from == std::string_view::npos) return {};
    return text.substr(from, text.find_last_not_of(whitespace) - from + 1);
}

// The next line, or the next SP_LINE_LENGTH characters of a longer one; false at the end of the script.
// `line_ended` tells whether its newline was met.
bool read_line(std::istream& script, std::string& line, bool& line_ended) {
    line.clear();
    line_ended = false;
    for (char c; line.size() < SP_LINE_LENGTH && script.get(c);) {
        line_ended = c == '\n';
        if (line_ended) break;
        line += c;
    }
    return line_ended || !line.empty();
}

// What of a line is told to the evaluator.
std::string_view statement_of(std::string& line) {
    if (line.ends_with('\r')) line.pop_back();
    if (const char* comment = c_strchrq(line.c_str(), ';'))
        line.resize(static_cast<std::size_t>(comment - line.c_str()));
    return rid_edge_blanks(line.c_str());
}

void report(sp_language& context, int lineno, const std::string& message) {
    sp_err_add(context, strprintf("Error (line %d): %s", lineno, message.c_str()));
}

void run_line(sp_language& context, std::string_view statement, int lineno) {
    if (statement.starts_with('#')) return;
    const bool protects = statement.starts_with('-');
    if (protects) statement.remove_prefix(1);
    std::size_t equals = statement.find('=');
    if (equals == std::string_view::npos) return;
    std::string_view name = rid_edge_blanks(statement.substr(0, equals));
    std::string_view formula = rid_edge_blanks(statement.substr(equals + 1));
    if (formula.empty()) return;

    sp_value val = sp_eval_formula(context, formula);
    if (val.type == SP_ERROR) {
        report(context, lineno, val.string);
        val.string = "Bad Value";
    }
    std::string refused = sp_var_putval(context, name, std::move(val), protects ? 2 : 1);
    if (!refused.empty()) report(context, lineno, refused);
}

} // namespace

void s_process(sp_language& context, std::istream& script) {
    std::string line;
    bool line_ended = true;
    for (int lineno = 1; read_line(script, line, line_ended); lineno += line_ended)
        run_line(context, statement_of(line), lineno);
}

bool s_process(sp_language& context, const std::string& fname) {
    std::error_code none;
    if (std::filesystem::is_directory(fname, none)) return false; // opens, but cannot be read
    std::ifstream script(fname, std::ios::binary);
    if (!script) return false;
    s_process(context, script);
    return true;
}

} // namespace norva
