// Menu bar: buttons that open pulldowns, and the way from a command number to the callback.
#include "toolkit/menus.h"

#include "toolkit_int.h"

namespace norva {

static constexpr std::size_t max_buttons = 20; // of one pulldown

static auto& bar(auto* wo, int pe) {
    return wi_rec<wi_menubar>(wo, wi_type::menubar, pe, "wimenubar.c");
}

wi_obj* wi_mk_menubar(wi_obj* parent, int npd) {
    if (npd < 1) wi_pe(1, "wimenubar.c");
    wi_menubar m;
    m.npd = npd;
    return new_widget(parent, wi_type::menubar, m, {});
}

int wi_menubar_pulldown(wi_obj* wo, const std::string& label) {
    wi_menubar& m = bar(wo, 6);
    if (static_cast<int>(m.ary.size()) >= m.npd) wi_pe(7, "wimenubar.c", "menubar full.");
    wi_mb_pd& pd = m.ary.emplace_back();
    pd.label = label;
    pd.button = add_win(wo, port_kind::button, 0, label);
    if (wi_obj* top = top_of(wo)) std::get<wi_zuvapp>(top->obj).stale = true;
    return static_cast<int>(m.ary.size()) - 1;
}

// A new button at the end of the pulldown begun last, in the submenu that is open there.
static wi_mb_but& new_button(wi_obj* wo, int pe) {
    wi_menubar& m = bar(wo, pe);
    if (m.ary.empty()) wi_pe(pe + 1, "wimenubar.c", "no pulldown.");
    wi_mb_pd& pd = m.ary.back();
    if (pd.ary.size() >= max_buttons) wi_pe(12, "wimenubar.c", "pulldown full.");
    wi_mb_but& b = pd.ary.emplace_back();
    b.depth = pd.currentmenu;
    b.idnumber = setmenuinfo({.menubar = wo,
                              .pulldown = static_cast<int>(m.ary.size()) - 1,
                              .button = static_cast<int>(pd.ary.size()) - 1});
    return b;
}

int wi_menubar_button(wi_obj* wo, const std::string& label, int type, wi_cb cbfunc, int tag) {
    wi_mb_but& b = new_button(wo, 10);
    b.label = label;
    b.type = type;
    b.cbfunc = cbfunc;
    b.tag = tag;
    return b.idnumber;
}

int wi_menubar_submenu(wi_obj* wo, const std::string& label) {
    wi_mb_but& b = new_button(wo, 13);
    b.label = label;
    b.submenu = true;
    ++bar(wo, 13).ary.back().currentmenu;
    return b.idnumber;
}

void wi_menubar_submenu_done(wi_obj* wo) {
    wi_menubar& m = bar(wo, 15);
    if (m.ary.empty() || m.ary.back().currentmenu == 0) wi_pe(16, "wimenubar.c", "no submenu.");
    --m.ary.back().currentmenu;
}

void wi_menubar_pd_label(wi_obj* wo, int pulldown, const std::string& label) {
    wi_menubar& m = bar(wo, 17);
    if (pulldown < 0 || pulldown >= static_cast<int>(m.ary.size())) wi_pe(18, "wimenubar.c");
    wi_mb_pd& pd = m.ary[static_cast<std::size_t>(pulldown)];
    pd.label = label;
    the_port().set_text(pd.button, label);
}

// The button of this bar with this command number. One beyond the menu table's limit has none: null.
static wi_mb_but* find_button(wi_obj* wo, int button, int pe) {
    wi_menubar& m = bar(wo, pe);
    if (button < 0) return nullptr;
    const wi_menuinfo* info = getmenuinfo(button);
    if (!info || info->menubar != wo) wi_pe(pe + 1, "wimenubar.c");
    return &m.ary[static_cast<std::size_t>(info->pulldown)].ary[static_cast<std::size_t>(info->button)];
}

void wi_menubar_b_label(wi_obj* wo, int button, const std::string& label) {
    if (wi_mb_but* b = find_button(wo, button, 19)) b->label = label;
}

void wi_menubar_setstate(wi_obj* wo, int button, int state) {
    if (wi_mb_but* b = find_button(wo, button, 21)) b->state = state != 0;
}

int wi_menubar_getstate(const wi_obj* wo, int button) {
    const wi_mb_but* b = find_button(const_cast<wi_obj*>(wo), button, 23);
    return b ? b->state : 0;
}

void wi_menubar_eset(wi_obj* wo, int button, int enable) {
    if (wi_mb_but* b = find_button(wo, button, 25)) b->enabled = enable != 0;
}

// The buttons from `at` on that lie at this depth or deeper, as the port takes them.
static std::vector<port_menu_entry> entries_of(const std::vector<wi_mb_but>& all, std::size_t& at,
                                               int depth) {
    std::vector<port_menu_entry> entries;
    while (at < all.size() && all[at].depth >= depth) {
        const wi_mb_but& b = all[at++];
        port_menu_entry& e = entries.emplace_back();
        e.id = b.idnumber;
        e.text = b.label;
        e.enabled = b.enabled != 0;
        e.checkable = b.type == 1;
        e.checked = b.type == 1 && b.state != 0;
        if (b.submenu) e.submenu = entries_of(all, at, b.depth + 1);
    }
    return entries;
}

void menubar_pressed(wi_obj* wo, port_win button) {
    for (const wi_mb_pd& pd : std::get<wi_menubar>(wo->obj).ary) {
        if (pd.button != button) continue;
        std::size_t at = 0;
        the_port().menu_popup(button, entries_of(pd.ary, at, 0));
    }
}

void menudispatcher(int id) {
    const wi_menuinfo* info = getmenuinfo(id);
    wi_mb_but* b = info ? find_button(info->menubar, id, 27) : nullptr;
    if (!b || !b->enabled || b->submenu) return;
    if (b->type == 1) b->state = !b->state;
    if (b->cbfunc) b->cbfunc(info->menubar, b->tag);
}

} // namespace norva
