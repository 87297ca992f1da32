// List select. Two lists lie in the same place, one that can be typed into and one that cannot; the one in
// use is shown.
#include "toolkit/lists.h"

#include "toolkit_int.h"

#include <algorithm>

namespace norva {

static constexpr int popup_id = 1000; // command numbers above those of the menu table
static wi_obj* popup_of = nullptr;    // the list whose choice is open

static auto& lst(auto* wo, int pe) {
    return wi_rec<wi_listsel>(wo, wi_type::listsel, pe, "wilistsel.c");
}

port_win shown_list(const wi_listsel& l) {
    return l.editable ? l.editarea : l.staticarea;
}

static void check_split(double split, int pe) {
    if (!(split >= 0 && split <= 1)) wi_pe(pe, "wilistsel.c");
}

wi_obj* wi_mk_listsel(wi_obj* parent, const std::string& label, int editable, double split,
                      const std::vector<std::string>& list) {
    check_split(split, 1);
    wi_listsel record;
    record.label = label;
    record.split = split;
    record.editable = editable != 0;
    wi_obj* wo = new_widget(parent, wi_type::listsel, record, label);
    wi_listsel& l = std::get<wi_listsel>(wo->obj);
    l.labelarea = add_win(wo, port_kind::label, label_left, label);
    l.editarea = add_win(wo, port_kind::combo_edit, 0, "");
    l.staticarea = add_win(wo, port_kind::combo, 0, "");
    the_port().show(editable ? l.staticarea : l.editarea, false);
    wi_listsel_setlist(wo, list);
    return wo;
}

static int index_of(const wi_listsel& l, const std::string& str) {
    const auto it = std::find(l.list.begin(), l.list.end(), str);
    return it == l.list.end() ? -1 : static_cast<int>(it - l.list.begin());
}

void wi_listsel_putstr(wi_obj* wo, const std::string& str) {
    const wi_listsel& l = lst(wo, 2);
    const int index = index_of(l, str);
    the_port().list_select(shown_list(l), index);
    if (index < 0 && l.editable) the_port().set_text(l.editarea, str);
}

std::string wi_listsel_getstr(const wi_obj* wo) {
    const wi_listsel& l = lst(wo, 3);
    if (l.editable) return the_port().get_text(l.editarea);
    const int index = wi_listsel_getindex(wo);
    return index < 0 ? std::string{} : l.list[static_cast<std::size_t>(index)];
}

int wi_listsel_getindex(const wi_obj* wo) {
    const wi_listsel& l = lst(wo, 4);
    const int index = the_port().list_index(shown_list(l));
    return index >= 0 && index < static_cast<int>(l.list.size()) ? index : -1;
}

void wi_listsel_setlist(wi_obj* wo, const std::vector<std::string>& list) {
    wi_listsel& l = lst(wo, 5);
    l.list = list;
    the_port().list_set(l.editarea, list);
    the_port().list_set(l.staticarea, list);
}

void wi_listsel_selchng_cb(wi_obj* wo, wi_cb cb, int tag) {
    wi_listsel& l = lst(wo, 6);
    l.cr_cb = cb;
    l.cr_tag = tag;
}

void wi_listsel_split(wi_obj* wo, double split) {
    check_split(split, 7);
    entry_split(wo, lst(wo, 7), split);
}

void wi_listsel_label(wi_obj* wo, const std::string& label) {
    entry_label(wo, lst(wo, 8), label);
}

void wi_listsel_editable(wi_obj* wo, int flag) {
    wi_listsel& l = lst(wo, 9);
    if (l.editable == (flag != 0)) return;
    const std::string now = wi_listsel_getstr(wo);
    the_port().show(shown_list(l), false);
    l.editable = flag != 0;
    wi_listsel_putstr(wo, now);
    the_port().show(shown_list(l), wo->visible);
}

void listsel_chosen(wi_obj* wo, int) {
    const wi_listsel& l = std::get<wi_listsel>(wo->obj);
    if (l.cr_cb) l.cr_cb(entry_owner(wo, l), l.cr_tag);
}

void wi_listsel_popup_on(wi_obj* wo) {
    const wi_listsel& l = lst(wo, 10);
    if (!wi_isenabled(wo)) return;
    std::vector<port_menu_entry> entries;
    const int now = wi_listsel_getindex(wo);
    for (std::size_t i = 0; i < l.list.size(); ++i) {
        port_menu_entry& e = entries.emplace_back();
        e.id = popup_id + static_cast<int>(i);
        e.text = l.list[i];
        e.checkable = true;
        e.checked = static_cast<int>(i) == now;
    }
    popup_of = wo;
    the_port().menu_popup(shown_list(l), entries);
}

bool listsel_popup_chosen(int id) {
    if (id < popup_id) return false;
    const wi_listsel* l = popup_of ? &std::get<wi_listsel>(popup_of->obj) : nullptr;
    const int index = id - popup_id;
    if (!l || index >= static_cast<int>(l->list.size())) return true;
    the_port().list_select(shown_list(*l), index);
    listsel_chosen(popup_of, index);
    return true;
}

void reset_menus() {
    popup_of = nullptr;
}

} // namespace norva
