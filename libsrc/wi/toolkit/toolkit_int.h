#pragma once
// Shared by the toolkit's own files: making objects, checking arguments, walking the tree.

#include "toolkit/wi_obj.h"

#include <string>
#include <type_traits>
#include <utility>

namespace norva {

port_events& toolkit_events(); // the receiver of everything the port tells

// --- Checks

[[noreturn]] void wi_pe(int n, const char* file, const char* what = "bad arg.");

// The record of an object of this type; anything else ends the program.
template <class R, class W> auto& wi_rec(W* wo, int type, int n, const char* file) {
    using record = std::conditional_t<std::is_const_v<W>, const R, R>;
    record* r = wo && wo->type == type ? std::get_if<R>(&wo->obj) : nullptr;
    if (!r) wi_pe(n, file);
    return *r;
}

// --- Making

// An object of a layout type: with an empty parent in a new window that has this title.
wi_obj* new_layout(wi_obj* parent, int type, wi_union record, const std::string& title = {});
// A widget; its label becomes the words of the help key. With an empty parent in a window with a close
// button.
wi_obj* new_widget(wi_obj* parent, int type, wi_union record, const std::string& label);
wi_obj* new_place(wi_obj* form, wi_null where);
// A pop-up box: part of no layout.
wi_obj* new_box(wi_obj* parent, int type, wi_union record);
wi_obj* new_window(const std::string& title, int qenable);
// One more window of the object.
port_win add_win(wi_obj* wo, port_kind kind, int style, const std::string& text);

// --- Walking

wi_obj* top_of(wi_obj* wo); // the window object that wo is in; null for a box
inline const wi_obj* top_of(const wi_obj* wo) {
    return top_of(const_cast<wi_obj*>(wo));
}

// The objects right below wo, in tab order. Cells left empty are skipped.
std::vector<wi_obj*> children_of(const wi_obj* wo);
bool is_box(int type);
bool is_known(int type);

// --- Layout

int entry_height();        // of a field, in pixels
void relayout(wi_obj* wo); // again in the rectangle it has
void layout_if_stale(wi_obj* top);

// --- State

// Passes the grey state of wo and what is above it on to the windows of wo and what is below it.
void refresh_enabled(wi_obj* wo);
port_win shown_list(const wi_listsel& l); // that of the two lists which is in use

// --- What the port told, passed to the widget

void button_pressed(wi_obj* wo);
void togary_pressed(wi_obj* wo, const wi_obj* button);
void colorbut_pressed(wi_obj* wo);
void updownbut_pressed(wi_obj* wo, bool up);
void menubar_pressed(wi_obj* wo, port_win button);
void menudispatcher(int id);
void listsel_chosen(wi_obj* wo, int index);
bool listsel_popup_chosen(int id); // false: not an entry of an opened list
void entry_return(wi_obj* wo);
bool numfld_takes(char32_t ch);
void drawarea_paint(wi_obj* wo);
void drawarea_mouse(wi_obj* wo, port_mouse kind, int x, int y, int button);
void focus_next(const wi_obj* wo, port_win from, bool back);

// --- Fields, lists and labels share these

void entry_label(wi_obj* wo, wi_entry& e, const std::string& label);
void entry_split(wi_obj* wo, wi_entry& e, double split);
void numfld_step(wi_obj* incdec, int direction);
wi_obj* entry_owner(wi_obj* wo, const wi_entry& e);

void reset_menus();

} // namespace norva
