// Hardcopy: objects on a page of the platform.

#include "vgph/winplot.h"
#include "line_run.h"
#include "output.h"
#include "vgph/vgsym.h"

#include "zuvsys/cstrings.h"
#include "zuvsys/logicals.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <filesystem>
#include <utility>

namespace norva {

// --- Colours for printing

static std::array<std::uint32_t, 16> print_colors{0xffffff}; // white paper, the rest black

void vghc_newcolor(int col, double r, double g, double b) {
    if (col >= 0 && col < static_cast<int>(print_colors.size())) print_colors[col] = switch_color(r, g, b);
}

// --- Settings

vg_hc_preset& vg_hc_presets() {
    static vg_hc_preset preset;
    return preset;
}

void vg_hc_preset_file(std::string_view name) {
    vg_hc_presets().ask = false;
    vg_hc_presets().file = name;
}

static std::string setting(const char* name) {
    const char* value = get_logical(name);
    return value ? value : "";
}

static std::string without_edge_blanks(std::string text) {
    c_ridedgews(text.data());
    return text.c_str();
}

void vg_hc_getenv(_vghardcopy& hc) {
    constexpr std::pair<const char*, int> types[] = {
        {"CPS", vg_hc_cps}, {"PS", vg_hc_ps}, {"HPGL", vg_hc_hpgl}, {"TEK", vg_hc_tek}};
    const std::string word = setting("QELMHCTYPE");
    for (auto [name, type] : types)
        if (c_strcmpx(name, word.c_str()) == 0) hc.type = type;
    if (std::string queue = setting("QELMHCQUEUE"); !queue.empty()) hc.queue = queue;
    if (std::string path = without_edge_blanks(setting("QELMHCPATH")); !path.empty()) hc.path = path;
    if (c_strcmpx("NO", setting("QELMHCPRINT").c_str()) == 0) hc.doprt = 0;
    if (c_strcmpx("NO", setting("QELMHCDELETE").c_str()) == 0) hc.del = 0;
    if (std::string command = setting("QELMHCUSER"); !command.empty()) {
        hc.dousr = 1;
        hc.usrcmd = command;
    }
}

// --- Opening

// "<folder>/<name>_20240131_235959.pdf", with a count behind where such a file is there already.
static std::string pdf_name(const _vghardcopy& hc) {
    std::string name = hc.filename;
    for (char& c : name) {
        const bool plain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        if (!plain && c != '-' && c != '_' && c != '.') c = '_';
    }
    if (name.empty()) name = "plot";
    char stamp[32];
    const std::time_t now = std::time(nullptr);
    std::strftime(stamp, sizeof stamp, "_%Y%m%d_%H%M%S", std::localtime(&now));
    const std::filesystem::path stem = std::filesystem::path(hc.path) / (name + stamp);
    std::error_code ignored;
    std::string file = stem.string() + ".pdf";
    for (int n = 2; n < 1000 && std::filesystem::exists(file, ignored); n++)
        file = stem.string() + "_" + std::to_string(n) + ".pdf";
    return file;
}

static void tell(const char* text) {
    the_port().message("Message:", text, {});
}

vghardcopy_ptr vg_hc_init(std::string_view file, int type, float xscale, float yscale, float xoff, float yoff,
                          int invxy) {
    auto made = std::make_unique<_vghardcopy>();
    _vghardcopy& hc = *made;
    vg_hc_getenv(hc);
    if (type > 0) hc.type = type;
    hc.filename = file;
    hc.xscale = xscale;
    hc.yscale = yscale;
    hc.xoff = xoff;
    hc.yoff = yoff;
    hc.invxy = invxy;
    hc.lineset = vg_lineset;
    hc.mover = vg_mover;

    vg_hc_preset& preset = vg_hc_presets();
    if (!preset.dir.empty()) hc.path = preset.dir;
    const std::string given = std::exchange(preset.file, {});
    hc.tfname = given.empty() ? pdf_name(hc) : given;

    const port_page_job job{hc.filename, hc.tfname, invxy != 0, preset.ask && hc.doprt && given.empty()};
    switch (the_port().page_begin(job)) {
    case port_page_result::cancel: tell("Print Canceled."); break;
    case port_page_result::error: tell("Print Error."); break;
    case port_page_result::ok:
        hc.context = port_page;
        hc.paper = the_port().page_caps().paper;
        hc.pinch = std::min(hc.paper.w, hc.paper.h) / 8.5;
        break;
    }
    return made;
}

void vg_hc_done(_vghardcopy& hc) {
    if (!hc.context) return;
    hc.context = 0;
    if (the_port().page_end() != port_page_result::ok) tell("Print Error.");
}

// --- Drawing

// The plot's x runs along the long side of the paper with invxy, along the short one without. Paper that lies
// the other way gets the picture turned a quarter turn to the left.
static bool turned(const _vghardcopy& hc) {
    return (hc.invxy != 0) != (hc.paper.w > hc.paper.h);
}

port_point vg_mover(const _vghardcopy& hc, float x, float y) {
    const double u = (static_cast<double>(x) * hc.xscale + hc.xoff) * hc.pinch;
    const double v = (static_cast<double>(y) * hc.yscale + hc.yoff) * hc.pinch;
    auto held = [](double d) { // far points bend a line and do not lose it
        constexpr double far = 1e6;
        return d > -far ? static_cast<int>(std::lround(std::min(d, far))) : static_cast<int>(-far);
    };
    const int right = hc.paper.w - 1, bottom = hc.paper.h - 1;
    return turned(hc) ? port_point{held(right - v), held(bottom - u)} : port_point{held(u), held(bottom - v)};
}

void vg_lineset(_vghardcopy& hc, int color, int linetype, int linethick) {
    if (color == hc.currentcolor && linetype == hc.currentlinestyle && linethick == hc.currentthickness)
        return;
    hc.currentcolor = color;
    hc.currentlinestyle = linetype;
    hc.currentthickness = linethick;
    the_port().pen(hc.context, print_colors[std::clamp(color, 0, vg_overlay_color)], linetype,
                   std::max(1, linethick - 1));
}

void vg_hc_drawvec(_vghardcopy& hc, std::span<const _vgvec> vec) {
    if (!hc.context) return;
    line_run run(hc.context);
    for (const _vgvec& v : vec) {
        const port_point p = hc.mover(hc, v.x, v.y);
        v.pen == vg_pen_move ? run.move(p) : run.draw(p);
    }
    run.end();
    hc.nvector += static_cast<int>(vec.size());
    hc.nstroke += run.strokes();
}

void vg_hc_object(_vghardcopy& hc, const _vgobject* obj) {
    if (!hc.context || !obj || !obj->visible) return;
    hc.lineset(hc, obj->color, obj->linetype, obj->linethick);
    vg_walk(*obj, [&hc](std::span<const _vgvec> vec) { vg_hc_drawvec(hc, vec); });
}

void vg_hc_frame(_vghardcopy& hc, const _vgframe* frame) {
    if (!frame) return;
    for (const vgobject_ptr& obj : frame->objptr) vg_hc_object(hc, obj.get());
}

void vg_hc_cells(_vghardcopy& hc, const _vgrect& box, std::span<const std::uint32_t> rgb, int w, int h) {
    if (!hc.context) return;
    draw_cells(hc.context, hc.mover(hc, box.x0, box.y0), hc.mover(hc, box.x1, box.y1), turned(hc), rgb, w, h);
}

void vg_hc_date(_vghardcopy& hc, float x0, float y0, float height, std::string_view text) {
    const std::time_t now = std::time(nullptr);
    std::string date = std::ctime(&now);
    date.erase(date.find_last_not_of('\n') + 1);
    const std::string line = text.empty() ? date : std::string(text) + "   " + date;
    vg_hc_object(hc, vg_symbol(x0, y0, height, 0, line).get());
}

void vg_hardcopy(const _vgframe* frame) {
    vghardcopy_ptr hc = vg_hc_init("plot", 0, 1.0f, 1.0f, 1.0f, 1.0f, 1);
    vg_hc_frame(*hc, frame);
    vg_hc_done(*hc);
}

} // namespace norva
