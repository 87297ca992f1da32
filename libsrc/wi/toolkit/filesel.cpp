// File select and file box.
#include "toolkit/boxes.h"
#include "toolkit/buttons.h"
#include "toolkit/fields.h"

#include "toolkit_int.h"
#include "zuvsys/dirutil.h"
#include "zuvsys/logicals.h"

#include <cctype>
#include <sstream>

namespace norva {

void wi_filesel_checkdir(const std::string& name, std::string& out) {
    if (zuvsys_dirlen(name) > 0) {
        out = name;
        return;
    }
    const char* qelm = get_logical("QELM");
    std::string home = qelm && *qelm ? qelm : wi_hooks.home_dir;
    if (!home.empty() && home.back() != '/' && home.back() != '\\') home += '/';
    out = home.empty() ? name : home + "data/" + name;
}

static bool is_mask(const std::string& name) {
    return name.find_first_of("*?") != std::string::npos;
}

// "*.jou*" as it stands; a pattern without a point, "jou*", is one of extensions. "*" asks for nothing
// special.
static std::string as_mask(const std::string& pattern) {
    if (pattern.empty() || pattern == "*" || pattern == "*.*") return {};
    if (pattern.front() == '.') return '*' + pattern;
    return pattern.find('.') == std::string::npos ? "*." + pattern : pattern;
}

// --- File box

static auto& box(auto* wo, int pe) {
    return wi_rec<wi_filebox>(wo, wi_type::filebox, pe, "wifilebox.c");
}

wi_obj* wi_mk_filebox(wi_obj* parent, const std::string& title, const std::string& filter, wi_cb accept_cb,
                      int tag) {
    wi_filebox f;
    f.title = title;
    f.accept_cb = accept_cb;
    f.tag = tag;
    wi_obj* wo = new_box(parent, wi_type::filebox, f);
    std::string start;
    wi_filesel_checkdir(filter, start);
    wi_filebox_setdir(wo, start);
    std::get<wi_filebox>(wo->obj).filter = as_mask(filter.substr(zuvsys_dirlen(filter)));
    return wo;
}

// The three choices of the dialog: what the caller asked for, the program's own files, everything.
static std::vector<port_filter> filestringparser(const std::string& mask) {
    std::vector<port_filter> filters;
    std::string word;
    for (const char c : mask)
        if (std::isalnum(static_cast<unsigned char>(c)))
            word += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    if (!mask.empty()) {
        port_filter& own = filters.emplace_back();
        own.name = word.empty() ? mask : word + " Files";
        std::istringstream patterns(mask);
        for (std::string one; std::getline(patterns, one, ';');) own.patterns.push_back(one);
    }
    filters.push_back({.name = "ZUV Files",
                       .patterns = {"*.iq", "*.rea", "*.pks", "*.spl", "*.dop", "*.gat", "*.img", "*.vec"}});
    filters.push_back({.name = "All Files", .patterns = {"*.*", "*"}}); // the second: names without a point
    return filters;
}

void wi_filebox_popup(wi_obj* wo) {
    const wi_filebox& f = box(wo, 2);
    port_file_request request;
    request.title = f.title;
    request.dir = zuvsys_is_directory(f.defdir.c_str()) ? f.defdir : "";
    request.filters = filestringparser(f.filter);
    the_port().ask_file(request, [wo](const std::string& name) {
        if (name.empty()) return;
        wi_filebox& chosen = std::get<wi_filebox>(wo->obj);
        chosen.filestr = name;
        chosen.defdir = name.substr(0, zuvsys_dirlen(name));
        if (chosen.accept_cb)
            chosen.accept_cb(chosen.callbacktarget ? chosen.callbacktarget : wo, chosen.tag);
    });
}

std::string wi_filebox_getname(const wi_obj* wo) {
    return box(wo, 3).filestr;
}

void wi_filebox_setdir(wi_obj* wo, const std::string& dir) {
    wi_filebox& f = box(wo, 4);
    if (zuvsys_is_directory(dir.c_str())) {
        f.defdir = dir;
        return;
    }
    const std::size_t length = zuvsys_dirlen(dir);
    f.defdir = zuvsys_path(dir.substr(0, length)); // none: the current directory
    if (const std::string name = dir.substr(length); is_mask(name)) f.filter = as_mask(name);
}

void wi_filebox_setmsg(wi_obj* wo, const std::string& title) {
    box(wo, 5).title = title;
}

// --- File select

static auto& sel(auto* wo, int pe) {
    return wi_rec<wi_filesel>(wo, wi_type::filesel, pe, "wifilesel.c");
}

static void changed(wi_obj* wo, int) {
    const wi_filesel& s = sel(wo, 1);
    if (s.chng_cb) s.chng_cb(wo, s.tag);
}

static void file_chosen(wi_obj* wo, int) {
    const wi_filesel& s = sel(wo, 2);
    wi_strfld_putstr(s.strfld, wi_filebox_getname(s.filebox));
    changed(wo, 0);
}

static void open_pressed(wi_obj* wo, int) {
    wi_filebox_popup(sel(wo, 3).filebox);
}

wi_obj* wi_mk_filesel(wi_obj* parent, const std::string& label, const std::string& filter, double split) {
    wi_obj* wo = new_widget(parent, wi_type::filesel, wi_filesel{}, label);
    wo->open = true;
    wi_obj* pair = wi_mk_drect(wo, 1, 0.85);
    wo->open = false;
    wi_filesel& s = std::get<wi_filesel>(wo->obj);
    s.drect = pair;
    s.strfld = wi_mk_strfld(pair, label, split);
    s.button = wi_mk_button(pair, "Open", 0, open_pressed, 0);
    s.filebox = wi_mk_filebox(wo, label, filter, file_chosen, 0);
    std::get<wi_filebox>(s.filebox->obj).callbacktarget = wo;
    wi_button& open = std::get<wi_button>(s.button->obj);
    open.callbacktarget = wo;
    open.beside_entry = true;
    std::get<wi_strfld>(s.strfld->obj).owner = wo;
    wi_strfld_set_cb(s.strfld, changed, 0);
    return wo;
}

std::string wi_filesel_getstr(const wi_obj* wo) {
    return wi_strfld_getstr(sel(wo, 4).strfld);
}

void wi_filesel_putstr(wi_obj* wo, const std::string& str) {
    wi_strfld_putstr(sel(wo, 5).strfld, str);
}

void wi_filesel_setdir(wi_obj* wo, const std::string& dir) {
    wi_filebox_setdir(sel(wo, 6).filebox, dir);
}

void wi_filesel_label(wi_obj* wo, const std::string& label) {
    wi_strfld_label(sel(wo, 7).strfld, label);
}

void wi_filesel_split(wi_obj* wo, double split) {
    wi_strfld_split(sel(wo, 8).strfld, split);
}

void wi_filesel_editable(wi_obj* wo, int flag) {
    const wi_filesel& s = sel(wo, 9);
    wi_strfld_editable(s.strfld, flag);
    wi_enable(s.button, flag);
}

void wi_filesel_chng_cb(wi_obj* wo, wi_cb cb, int tag) {
    wi_filesel& s = sel(wo, 10);
    s.chng_cb = cb;
    s.tag = tag;
}

} // namespace norva
