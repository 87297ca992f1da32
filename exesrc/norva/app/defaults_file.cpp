// The ".dflt" file.
#include "app/user_defaults.h"

#include "app/names.h"
#include "state/calls.h"
#include "zuvsys/logicals.h"
#include "zuvsys/numparse.h"
#include "zuvsys/safefile.h"
#include "zuvsys/strprintf.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

namespace norva {

namespace fs = std::filesystem;

int dflt_autoload_flag = 0;

constexpr std::size_t MOST_BYTES = 65536; // of a file that is read; a real one has about 400

std::string defaults_text(const defaults& d, int autoload) {
    // The filter is one word of the file: a blank would end it, and without any the lines would shift.
    std::string filter = d.fltr.substr(0, d.fltr.find_first_of(" \t\n"));
    if (filter.empty()) filter = "*.pf*";
    std::string text = strprintf("%f\n", static_cast<double>(autoload)) + filter + "\n";
    for (const default_row& row : default_rows()) text += strprintf("%f\n", d.*row.field);
    return text;
}

static bool read_number(std::istream& in, float& value) {
    std::string word;
    if (!(in >> word)) return false;
    const std::optional<double> number = whole_double(word);
    if (!number) return false;
    value = static_cast<float>(*number);
    return std::isfinite(value);
}

// The flag counts truncated.
static bool is_set(float flag) {
    return std::fabs(flag) >= 1;
}

bool read_defaults_text(const std::string& text, defaults& d, int& autoload) {
    std::istringstream in(text);
    float flag = 0;
    defaults read = d;
    if (!read_number(in, flag) || !(in >> read.fltr)) return false;
    for (const default_row& row : default_rows())
        if (!read_number(in, read.*row.field)) return false;
    d = read;
    autoload = is_set(flag);
    return true;
}

static bool read_file(const std::string& name, std::string& text) {
    std::error_code ignored;
    if (!fs::is_regular_file(name, ignored)) return false;
    std::ifstream in(name, std::ios::binary);
    if (!in) return false;
    text.resize(MOST_BYTES);
    in.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(in.gcount()));
    return !in.bad();
}

int rw_dflt_file(const std::string& fname, const char* str) {
    std::string text;
    const bool done = *str == 'w'
                          ? write_text_safely(fname, defaults_text(def, dflt_autoload_flag))
                          : read_file(fname, text) && read_defaults_text(text, def, dflt_autoload_flag);
    if (!done) popmsg("Unable to open file!");
    return done;
}

// The first ".dflt" file of a folder, by name; empty when there is none.
static std::string first_file(const fs::path& folder) {
    std::string first;
    std::error_code fault;
    for (fs::directory_iterator entry(folder, fault), end; !fault && entry != end; entry.increment(fault)) {
        const std::string name = entry->path().filename().string();
        if (ext_eq(name, ".dflt") && (first.empty() || name < first)) first = name;
    }
    return first;
}

static std::string find_file() {
    const std::string here = first_file(".");
    if (!here.empty()) return here;
    const char* home = get_logical("HOME");
    if (!home) return {};
    const fs::path folder = home;
    const std::string there = first_file(folder);
    return there.empty() ? there : (folder / there).string();
}

void dflt_autoload(defaults& d) {
    norva_init_defaults(d);
    dflt_autoload_flag = 0;
    const std::string name = find_file();
    if (name.empty()) return;
    d.fname = name;
    std::string text;
    float flag = 0;
    if (!read_file(name, text)) return;
    std::istringstream in(text);
    if (read_number(in, flag) && is_set(flag)) rw_dflt_file(name, "r");
}

} // namespace norva
