// The layout objects, and how a window's size spreads down the tree. All in whole pixels of the window.
#include "toolkit_int.h"

#include "zuvsys/numparse.h"

#include <algorithm>
#include <cstdlib>

namespace norva {

// --- Making

wi_obj* wi_form_parent(wi_obj* wo, double x0, double y0, double x1, double y1) {
    if (!wo) wi_exit("Bad parameter to wi_form_parent.");
    if (wo->type != wi_type::form)
        wi_exit("Bad parameter to wi_form_parent. The object parameter must be a form object .");
    const wi_form& form = std::get<wi_form>(wo->obj);
    const auto inside = [](double v, double size) { return v >= 0 && v <= size; };
    if (!inside(x0, form.xsize) || !inside(x1, form.xsize) || !inside(y0, form.ysize) ||
        !inside(y1, form.ysize)) {
        std::string msg = "Bad coordinates in wi_form_parent:";
        for (const double v : {x0, y0, x1, y1, form.xsize, form.ysize}) msg += ' ' + format_fixed(v, 6);
        wi_exit(msg);
    }
    return new_place(wo, {.x0relative = x0 / form.xsize,
                          .y0relative = y0 / form.ysize,
                          .x1relative = x1 / form.xsize,
                          .y1relative = y1 / form.ysize,
                          .next = nullptr});
}

static bool is_fraction(double v) {
    return v >= 0 && v < 1;
}

wi_obj* wi_mk_rectary(wi_obj* parent, int nrows, int ncols, double xcrop, double ycrop) {
    if (nrows < 1 || ncols < 1)
        wi_exit("Bad argument to wi_mk_rectary.  Number of rows or columns is invalid.");
    if (!is_fraction(xcrop) || !is_fraction(ycrop))
        wi_exit("Bad argument to wi_mk_rectary.  Crop value is invalid.");
    wi_rectary r;
    r.maxchildren = nrows * ncols;
    r.nrows = nrows;
    r.ncols = ncols;
    r.xcrop = xcrop;
    r.ycrop = ycrop;
    return new_layout(parent, wi_type::rectary, r);
}

static void check_split(double split, int pe) {
    if (!(split > 0 && split < 1)) wi_pe(pe, "widrect.c");
}

wi_obj* wi_mk_drect(wi_obj* parent, int dir, double split) {
    check_split(split, 1);
    if (dir != 0 && dir != 1) wi_exit("PE 2, widrect.c bad arg.");
    wi_drect d;
    d.direction = dir;
    d.sizefrac = static_cast<float>(split);
    return new_layout(parent, wi_type::drect, d);
}

void wi_drect_split(wi_obj* wo, double split) {
    wi_drect& d = wi_rec<wi_drect>(wo, wi_type::drect, 3, "widrect.c");
    check_split(split, 4);
    d.sizefrac = static_cast<float>(split);
    relayout(wo);
}

wi_obj* wi_mk_crop(wi_obj* parent, double ctop, double cbottom, double cleft, double cright) {
    for (const double c : {ctop, cbottom, cleft, cright})
        if (!is_fraction(c)) wi_pe(1, "wicrop.c");
    return new_layout(parent, wi_type::crop,
                      wi_crop{.ctop = ctop, .cbottom = cbottom, .cleft = cleft, .cright = cright});
}

wi_obj* wi_mk_frame(wi_obj* parent) {
    wi_obj* wo = new_layout(parent, wi_type::frame, std::monostate{});
    wo->handle = add_win(wo, port_kind::frame, 0, "");
    return wo;
}

// --- Arithmetic

int entry_height() {
    return static_cast<int>(1.5 * the_port().char_height());
}

static void place_windows(wi_obj* wo, port_rect r) {
    for (const port_win win : wo->wins) the_port().move(win, r);
}

// The height of an entry field, in the middle of a higher cell.
static port_rect entry_rect(port_rect r) {
    const int high = entry_height();
    return {r.x, r.y + std::max(r.h - high, 0) / 2, r.w, high};
}

static void layout_drect(const wi_obj* wo, const wi_drect& d, port_rect r) {
    const bool sideways = d.direction == 1;
    const int size = sideways ? r.w : r.h;
    const int first = static_cast<int>(static_cast<float>(size) * d.sizefrac);
    if (d.nchild == 2) {
        if (sideways)
            onresize(d.child2, r.x + first, r.y, r.w - first, r.h);
        else
            onresize(d.child2, r.x, r.y + first, r.w, r.h - first);
    }
    if (sideways)
        onresize(wo->child, r.x, r.y, first, r.h);
    else
        onresize(wo->child, r.x, r.y, r.w, first);
}

static void layout_rectary(const wi_rectary& a, port_rect r) {
    const int cw = r.w / a.ncols, ch = r.h / a.nrows;
    const int dx = static_cast<int>(cw * a.xcrop), dy = static_cast<int>(ch * a.ycrop);
    for (std::size_t i = 0; i < a.children.size(); ++i) {
        const int row = static_cast<int>(i) / a.ncols, col = static_cast<int>(i) % a.ncols;
        onresize(a.children[i], r.x + col * cw + dx, r.y + row * ch + dy, cw - 2 * dx, ch - 2 * dy);
    }
}

static void layout_crop(const wi_obj* wo, const wi_crop& c, port_rect r) {
    const int left = static_cast<int>(r.w * c.cleft), top = static_cast<int>(r.h * c.ctop);
    onresize(wo->child, r.x + left, r.y + top, static_cast<int>(r.w - r.w * c.cright - left),
             static_cast<int>(r.h - r.h * c.cbottom - top));
}

static void layout_places(const wi_obj* first, port_rect r) {
    for (const wi_obj* p = first; p;) {
        const wi_null& n = std::get<wi_null>(p->obj);
        const int x0 = static_cast<int>(r.w * n.x0relative), x1 = static_cast<int>(r.w * n.x1relative);
        const int y0 = static_cast<int>(r.h * n.y0relative), y1 = static_cast<int>(r.h * n.y1relative);
        onresize(p->child, r.x + std::min(x0, x1), r.y + std::min(y0, y1), std::abs(x1 - x0),
                 std::abs(y1 - y0));
        p = n.next;
    }
}

static void layout_frame(const wi_obj* wo, port_rect r) {
    const port_size edge = the_port().edge_size();
    place_windows(const_cast<wi_obj*>(wo), {r.x, r.y - 2 * edge.h, r.w, r.h + 2 * edge.h});
    onresize(wo->child, r.x + edge.w, r.y + 3 * edge.h, r.w - 2 * edge.w, r.h - 4 * edge.h);
}

static void layout_entry(const wi_entry& e, const wi_listsel* list, port_rect r) {
    const port_rect level = entry_rect(r);
    const int label = static_cast<int>(r.w * e.split);
    port& p = the_port();
    p.move(e.labelarea, {level.x, level.y, label, level.h});
    const port_rect entry{level.x + label, level.y, level.w - label, level.h};
    p.move(e.editarea, entry);
    if (list) p.move(list->staticarea, entry);
}

static void layout_menubar(const wi_menubar& m, port_rect r) {
    if (m.ary.empty()) return;
    const int wide = r.w / static_cast<int>(m.ary.size());
    for (std::size_t i = 0; i < m.ary.size(); ++i)
        the_port().move(m.ary[i].button, {r.x + static_cast<int>(i) * wide, r.y, wide, r.h});
}

void onresize(wi_obj* wo, int x, int y, int width, int height) {
    if (!wo) return;
    const port_rect r{x, y, std::max(width, 0), std::max(height, 0)};
    wo->rect = r;
    switch (wo->type) {
    case wi_type::form: layout_places(wo->child, r); break;
    case wi_type::zuvapp: onresize(wo->child, 0, 0, r.w, r.h); break;
    case wi_type::frame: layout_frame(wo, r); break;
    case wi_type::drect: layout_drect(wo, std::get<wi_drect>(wo->obj), r); break;
    case wi_type::crop: layout_crop(wo, std::get<wi_crop>(wo->obj), r); break;
    case wi_type::rectary: layout_rectary(std::get<wi_rectary>(wo->obj), r); break;
    case wi_type::place: onresize(wo->child, x, y, r.w, r.h); break;
    case wi_type::strfld: layout_entry(std::get<wi_strfld>(wo->obj), nullptr, r); break;
    case wi_type::numfld: layout_entry(std::get<wi_numfld>(wo->obj), nullptr, r); break;
    case wi_type::listsel: {
        const wi_listsel& list = std::get<wi_listsel>(wo->obj);
        layout_entry(list, &list, r);
        break;
    }
    case wi_type::updownbut: place_windows(wo, entry_rect(r)); break;
    case wi_type::menubar: layout_menubar(std::get<wi_menubar>(wo->obj), r); break;
    case wi_type::button:
        place_windows(wo, std::get<wi_button>(wo->obj).beside_entry ? entry_rect(r) : r);
        break;
    default: // one window, or an inner object
        place_windows(wo, r);
        onresize(wo->child, x, y, r.w, r.h);
    }
}

void relayout(wi_obj* wo) {
    onresize(wo, wo->rect.x, wo->rect.y, wo->rect.w, wo->rect.h);
}

// A window that got more objects since its last resize lays itself out before it is looked at.
void layout_if_stale(wi_obj* top) {
    if (!top) return;
    bool& stale = std::get<wi_zuvapp>(top->obj).stale;
    if (!stale) return;
    stale = false;
    const port_rect r = the_port().client_rect(top->handle);
    onresize(top, 0, 0, r.w, r.h);
}

} // namespace norva
