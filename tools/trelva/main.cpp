// trelva: evaluates formulas and scripts of the plot language on the command line.
#include "trelva/eval.h"
#include "trelva/script.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

using namespace norva;

namespace {

constexpr const char* usage = "usage: trelva [-f SCRIPT] [FORMULA ...]\n";

constexpr const char* help = R"(
Evaluates formulas and scripts of the plot language.

  trelva '1+2*3'                  prints the value of each formula
  trelva -f style.trv             runs a script and prints the variables it defines
  trelva -f style.trv 'SUM(X)'    runs a script, then prints the value of each formula
  trelva < style.trv              the script comes from standard input, as with "-f -"

  -f, --file SCRIPT   the script to run; may be given several times
  -h, --help          this text
  --                  what follows are formulas, even when they begin with "-"

Values are printed as 7, [1 2 3], red, "text", NULL. Errors go to standard error, those of a script with
their line number.

Exit status: 0 when all went well, 1 when a formula or a script line failed, 2 when the command line is wrong
or a script cannot be read.
)";

struct options {
    bool help = false;
    std::string wrong; // what is wrong with the command line
    std::vector<std::string> scripts, formulas;
};

bool looks_like_number(const std::string& arg) {
    return arg.size() > 1 && (arg[1] == '.' || (arg[1] >= '0' && arg[1] <= '9'));
}

options read_options(const std::vector<std::string>& args) {
    options opt;
    for (std::size_t i = 0; i < args.size(); i++) {
        const std::string& arg = args[i];
        if (arg == "-h" || arg == "--help") {
            opt.help = true;
        } else if (arg == "-f" || arg == "--file") {
            if (i + 1 < args.size())
                opt.scripts.push_back(args[++i]);
            else
                opt.wrong = arg + " needs the name of a script";
        } else if (arg == "--") {
            opt.formulas.insert(opt.formulas.end(), args.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                                args.end());
            break;
        } else if (arg.starts_with('-') && !looks_like_number(arg)) {
            opt.wrong = "unknown option " + arg;
        } else {
            opt.formulas.push_back(arg);
        }
    }
    if (opt.scripts.empty() && opt.formulas.empty()) opt.scripts.push_back("-");
    return opt;
}

bool read_script(const std::string& name, std::string& text) {
    std::ostringstream all;
    if (name == "-") {
        all << std::cin.rdbuf();
    } else {
        std::error_code none;
        std::ifstream file(name, std::ios::binary);
        if (!file || std::filesystem::is_directory(name, none)) return false;
        all << file.rdbuf();
    }
    text = all.str();
    return true;
}

void warn_of_long_lines(const std::string& name, const std::string& text) {
    std::istringstream lines(text);
    int lineno = 0;
    for (std::string line; std::getline(lines, line);) {
        lineno++;
        if (line.ends_with('\r')) line.pop_back();
        if (line.size() > SP_LINE_LENGTH)
            std::cerr << name << ": line " << lineno << " is longer than " << SP_LINE_LENGTH
                      << " characters; the rest is read as a line of its own\n";
    }
}

// Runs a script; false when it has errors, which are printed.
bool run(sp_language& context, const std::string& name, const std::string& text) {
    warn_of_long_lines(name, text);
    std::istringstream script(text);
    sp_err_flush(context);
    s_process(context, script);
    std::istringstream errors(context.errstr);
    for (std::string error; std::getline(errors, error);) std::cerr << name << ": " << error << "\n";
    return context.errstr.empty();
}

void print_variables(const sp_language& context) {
    if (!context.vlib) return;
    for (const sp_var& var : context.vlib->vars)
        if (var.type != 0) std::cout << var.name << " = " << sp_show(*var.val) << "\n";
}

bool print_value(sp_language& context, const std::string& formula) {
    sp_value val = sp_eval_formula(context, formula);
    (val.type == SP_ERROR ? std::cerr << formula << ": " : std::cout) << sp_show(val) << "\n";
    return val.type != SP_ERROR;
}

} // namespace

int main(int argc, char** argv) {
    const options opt = read_options({argv + 1, argv + argc});
    if (opt.help) {
        std::cout << usage << help;
        return 0;
    }
    if (!opt.wrong.empty()) {
        std::cerr << "trelva: " << opt.wrong << "\n" << usage;
        return 2;
    }
    sp_language context;
    bool good = true;
    for (const std::string& name : opt.scripts) {
        std::string text;
        if (!read_script(name, text)) {
            std::cerr << "trelva: cannot read " << name << "\n";
            return 2;
        }
        good &= run(context, name, text);
    }
    if (opt.formulas.empty()) print_variables(context);
    for (const std::string& formula : opt.formulas) good &= print_value(context, formula);
    return good ? 0 : 1;
}
