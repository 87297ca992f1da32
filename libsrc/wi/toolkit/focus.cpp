// Which control takes the keys: first, next and previous in the order of the tree.
#include "toolkit_int.h"

#include <algorithm>

namespace norva {

struct stop_at { // a place where tab stops
    const wi_obj* wo;
    port_win win;
};

static void add_stops(const wi_obj* wo, std::vector<stop_at>& stops) {
    switch (wo->type) {
    case wi_type::strfld:
    case wi_type::numfld: {
        const wi_entry& e = wo->type == wi_type::strfld
                                ? static_cast<const wi_entry&>(std::get<wi_strfld>(wo->obj))
                                : std::get<wi_numfld>(wo->obj);
        if (e.editable) stops.push_back({wo, e.editarea});
        break;
    }
    case wi_type::listsel: stops.push_back({wo, shown_list(std::get<wi_listsel>(wo->obj))}); break;
    case wi_type::button:
    case wi_type::colorbut:
    case wi_type::editpage:
    case wi_type::menubar:
        for (const port_win win : wo->wins) stops.push_back({wo, win});
        break;
    default: break;
    }
}

// All stops in wo, in the order of the tree; hidden and grey branches have none.
static void collect(const wi_obj* wo, std::vector<stop_at>& stops) {
    if (!wo->visible || !wo->enabled) return;
    add_stops(wo, stops);
    for (const wi_obj* c : children_of(wo)) collect(c, stops);
}

static bool is_inside(const wi_obj* wo, const wi_obj* branch) {
    while (wo && wo != branch) wo = wo->parent;
    return wo != nullptr;
}

static bool is_focusable_type(const wi_obj* wo) {
    return wo && is_known(wo->type) && !is_box(wo->type);
}

void wi_activate_first(wi_obj* wo) {
    if (!is_focusable_type(wo)) wi_exit("Bad parameter to wi_activate_first: bad window type ");
    std::vector<stop_at> stops;
    // The window itself may be hidden still.
    if (wo->type == wi_type::zuvapp) wo = wo->child;
    if (wo) collect(wo, stops);
    if (!stops.empty()) the_port().focus(stops.front().win);
}

// From `from`, or from the edge of wo when it is 0, with a step over everything inside wo.
void focus_next(const wi_obj* wo, port_win from, bool back) {
    if (!is_focusable_type(wo)) wi_exit("Could not activate this window type in wi_activate_findnext");
    const wi_obj* top = top_of(wo);
    std::vector<stop_at> stops;
    if (top && top->child) collect(top->child, stops);
    if (stops.empty()) return;
    const auto here = [&](const stop_at& s) { return from ? s.win == from : is_inside(s.wo, wo); };
    const auto first = std::find_if(stops.begin(), stops.end(), here);
    if (first == stops.end()) return the_port().focus(stops.front().win);
    if (back) return the_port().focus((first == stops.begin() ? stops.end() : first)[-1].win);
    const auto past = std::find_if_not(first, stops.end(), here);
    the_port().focus((past == stops.end() ? stops.begin() : past)->win);
}

void wi_activate_next(wi_obj* wo) {
    focus_next(wo, 0, false);
}

void wi_activate_prev(wi_obj* wo) {
    focus_next(wo, 0, true);
}

} // namespace norva
