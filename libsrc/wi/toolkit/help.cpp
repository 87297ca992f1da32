// Help keys: which topic belongs to a control.
#include "toolkit_int.h"

#include <cctype>

namespace norva {

void wi_hlp_setprog(wi_obj* wo, const std::string& words) {
    wi_obj* top = top_of(wo);
    if (!top) wi_pe(1, "wihlp.c");
    std::get<wi_zuvapp>(top->obj).hlpprog = words;
}

void wi_hlp_setstr(wi_obj* wo, const std::string& words) {
    if (!wo) wi_pe(2, "wihlp.c");
    wo->hlp = words;
}

static bool is_whole_key(const std::string& words) {
    return words.starts_with("help:");
}

// A label as words of a key: "Start Time (sec):" gives "start time (sec)".
static std::string key_words(std::string words) {
    while (!words.empty() && (words.back() == ':' || words.back() == ' ')) words.pop_back();
    for (char& c : words) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return words;
}

static bool is_one_control(int type) {
    return type == wi_type::incdecfld || type == wi_type::filesel || type == wi_type::status;
}

std::string wi_hlp_getstr(const wi_obj* wo) {
    if (!wo) wi_pe(3, "wihlp.c");
    const wi_obj* top = top_of(wo);
    const wi_obj* asked = wo;
    for (const wi_obj* above = wo; above; above = above->parent)
        if (is_one_control(above->type)) asked = above;
    while (asked != top && asked && asked->hlp.empty()) asked = asked->parent;
    const std::string words = asked ? asked->hlp : "";
    if (is_whole_key(words)) return words;
    const std::string program = top ? std::get<wi_zuvapp>(top->obj).hlpprog : "";
    std::string key = is_whole_key(program) ? program : "help:" + program;
    const std::string own = key_words(words);
    if (own.empty()) return key;
    return key.back() == ':' ? key + own : key + ':' + own;
}

void wi_hlp_srch(const std::string& key) {
    if (wi_hooks.help) wi_hooks.help(key);
}

} // namespace norva
