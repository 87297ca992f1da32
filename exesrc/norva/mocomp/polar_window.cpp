// The polar format window.
#include "mocomp/polar_window.h"

#include "mocomp/polar_keywords.h"
#include "state/calls.h"
#include "state/user.h"
#include "state/window_register.h"
#include "toolkit/toolkit.h"
#include "zuvsys/dirutil.h"
#include "zuvsys/program.h"
#include "zuvsys/strprintf.h"

#include <array>

namespace norva {

polar_calls polar_hooks;

struct row_words {
    const char* label;
    float plr_kws::*value;
    int decimals;
};
static constexpr std::array<row_words, 7> rows = {{
    {"Crossrange extent of target (m):", &plr_kws::xex, 3},
    {"Range extent of target (m):", &plr_kws::yex, 3},
    {"Distance to rotation axis/focal point (m):", &plr_kws::rc, 3},
    {"Depression angle with respect to plane of turntable (rad):", &plr_kws::de, 6},
    {"Turntable rotation between samples (rad):", &plr_kws::da, 6},
    {"Increment along rail between samples (m):", &plr_kws::du, 3},
    {"Squint angle (rad):", &plr_kws::sa, 6},
}};
enum row { DEPRESSION = 3, ROTATION, INCREMENT, SQUINT };
static const char* const geometries[] = {"turntable data", "rail data"};

static struct {
    wi_obj* fm = nullptr;
    wi_obj *geometry = nullptr, *image = nullptr;
    std::array<wi_obj*, rows.size()> field{};
    int on = 0;
} win;

void plr_kw_reset() {
    win = {};
}

static void build() {
    wi_set_window_name("NORVA: polar format");
    win.fm = wi_mk_form(nullptr, 400, 300);
    wi_hlp_setprog(win.fm, "norva:polar format");
    wi_zuvapp_quit(win.fm, 1, "Close", plr_kw_cb, 0);
    wi_mk_label(wi_form_parent(win.fm, 8, 6, 392, 28), "Polar Formatting (turntable data only)", 1 + 4);
    wi_obj* frame = wi_mk_frame(wi_form_parent(win.fm, 6, 34, 394, 260));
    wi_obj* cells = wi_mk_rectary(frame, static_cast<int>(rows.size()) + 1, 1, 0.01, 0.04);
    constexpr double split = 0.76;
    win.geometry =
        wi_mk_listsel(cells, "Geometry type:", 0, split, {std::begin(geometries), std::end(geometries)});
    for (std::size_t i = 0; i < rows.size(); i++)
        win.field[i] = wi_mk_numfld(cells, rows[i].label, split, rows[i].decimals);
    win.image = wi_mk_button(wi_form_parent(win.fm, 8, 268, 108, 292), "Image", 0, plr_kw_cb, 1);
    wi_mk_button(wi_form_parent(win.fm, 118, 268, 282, 292), "Save as kw's on File", 0, plr_kw_cb, 3);
    wi_mk_button(wi_form_parent(win.fm, 292, 268, 392, 292), "Cancel", 0, plr_kw_cb, 0);
    wi_size(win.fm, 400, 300);
    wi_position(win.fm, 300, 300);
    norva_reg(win.fm, "Polar Format");
}

int plr_kw_stat() {
    return win.on;
}

void plr_kw_init() {
    if (!win.fm) build();
    plr_kw_on();
}

void plr_kw_on() {
    if (!win.fm) return;
    wi_on(win.fm);
    win.on = 1;
    pkw_putvals(); // hides again what the geometry does not have
}

void plr_kw_off() {
    if (win.fm) wi_off(win.fm);
    win.on = 0;
}

void plr_kw_refresh(bool image_possible) {
    if (win.fm) wi_enable(win.image, image_possible);
}

void pkw_putvals() {
    const plr_kws& kws = *get_pkw();
    for (std::size_t i = 0; i < rows.size(); i++)
        if (kws.*rows[i].value != 0) wi_numfld_putval(win.field[i], kws.*rows[i].value);
    wi_listsel_putstr(win.geometry, geometries[kws.dtyp != 0]);
    plr_kw_cb(nullptr, 2);
}

static void take_fields() {
    plr_kws& kws = *get_pkw();
    kws.dtyp = wi_listsel_getindex(win.geometry) == 1;
    for (std::size_t i = 0; i < rows.size(); i++)
        kws.*rows[i].value = static_cast<float>(wi_numfld_getval(win.field[i]));
    kws.eflag = 1;
}

static void show_fields_of_geometry() {
    const bool rail = wi_listsel_getindex(win.geometry) == 1;
    wi_off(win.geometry); // only turntables are offered
    for (int i : {DEPRESSION, ROTATION}) (rail ? wi_off : wi_on)(win.field[static_cast<std::size_t>(i)]);
    for (int i : {INCREMENT, SQUINT}) (rail ? wi_on : wi_off)(win.field[static_cast<std::size_t>(i)]);
}

static void save_on_file() {
    std::string tool = "/QELMEXE/addkw";
    if (!zuvsys_is_file(tool.c_str())) tool = zuvsys_program_folder() + "/addkw";
    const plr_kws& k = *get_pkw();
    const auto real = [](const char* name, float value) {
        return strprintf("%s=%f", name, static_cast<double>(value));
    };
    const int status = zuvsys_run_program(
        {tool, user.rdfile, strprintf("dtype=%d", k.dtyp), real("xex", k.xex), real("yex", k.yex),
         real("rc", k.rc), real("de", k.de), real("da", k.da), real("du", k.du), real("sa", k.sa)});
    if (status == 0) return;
    popmsg(status < 0 ? "Cannot run the program " + tool + " that writes keywords!"
                      : "Unable to write keywords to file " + user.rdfile + "!");
}

void plr_kw_cb(wi_obj*, int tag) {
    switch (tag) {
    case 0: plr_kw_off(); break;
    case 1:
        take_fields();
        if (const std::string fault = polar_fault(*get_pkw()); !fault.empty())
            popmsg(fault);
        else if (polar_hooks.open_image)
            polar_hooks.open_image();
        break;
    case 2: show_fields_of_geometry(); break;
    case 3:
        take_fields();
        save_on_file();
        break;
    }
}

} // namespace norva
