#pragma once
// What an object holds: the node of the tree and the fields of each type. For the toolkit's own files and for
// code that adds an object type (the standard plot); windows need wi.h and its companions only.

#include "toolkit/wi.h"

#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace norva {

namespace wi_type {
constexpr int form = 2, button = 3, drawarea = 4, zuvapp = 5, frame = 6, drect = 7, butary = 8, stdplt = 9,
              togary = 11, crop = 12, status = 13, filebox = 14, editbox = 15, msgbox = 16, ynbox = 17,
              rectary = 18, label = 19, filesel = 20, listsel = 21, updownbut = 22, incdecfld = 23,
              strfld = 24, numfld = 25, place = 26, editpage = 27, icon = 28, colorbut = 29, menubar = 31;
}

// --- Layout

struct wi_form {
    double xsize = 0, ysize = 0; // the form's own units
    wi_obj* last = nullptr;      // last place; the first is the object's child
};

struct wi_null { // a place in a form
    double x0relative = 0, y0relative = 0, x1relative = 0, y1relative = 0;
    wi_obj* next = nullptr;
};

struct wi_rectary {
    std::vector<wi_obj*> children; // null: a cell left empty
    int maxchildren = 0, nrows = 0, ncols = 0;
    double xcrop = 0, ycrop = 0;
};

struct wi_crop {
    double ctop = 0, cbottom = 0, cleft = 0, cright = 0;
};

struct wi_drect {
    int direction = 0;
    float sizefrac = 0;
    int nchild = 0;
    wi_obj* child2 = nullptr;
};

struct wi_zuvapp {
    std::string label;
    int qenable = 0;
    std::string qname;
    wi_cb cbquit = nullptr;
    int qtag = 5;
    std::string hlpprog; // words of the help keys
    bool stale = false;  // children were added since the last layout
};

// --- Widgets

// What the fields and the list have in common. Callbacks go to `owner`: the composite the field is part of,
// or itself.
struct wi_entry {
    port_win labelarea = 0, editarea = 0;
    double split = 0;
    std::string label;
    int editable = 1;
    wi_cb cr_cb = nullptr;
    int cr_tag = 0;
    wi_obj* owner = nullptr;
};
struct wi_strfld : wi_entry {};
struct wi_numfld : wi_entry {
    int ndec = 0;
};
struct wi_listsel : wi_entry {
    port_win staticarea = 0; // pure choice; shown instead of editarea when not editable
    std::vector<std::string> list;
};

struct wi_updownbut {
    wi_cb up_cb = nullptr, down_cb = nullptr;
    int up_tag = 0, down_tag = 0;
    wi_obj* callbacktarget = nullptr;
};

struct wi_incdecfld {
    wi_obj *numfld = nullptr, *updownbut = nullptr, *drect = nullptr;
    double inc = 1;
    int usetoplim = 0, usebotlim = 0;
    double toplim = 1e30, botlim = -1e30;
    wi_cb up_cb = nullptr, down_cb = nullptr;
    int up_tag = 0, down_tag = 0;
};

struct wi_button {
    std::string label;
    int type = 0, state = 0;
    wi_cb cbfunc = nullptr;
    int tag = 0;
    wi_obj* callbacktarget = nullptr;
    bool beside_entry = false; // as high as an entry field, and level with it
};

struct wi_butelm {
    std::string name;
    int type = 0;
    wi_obj* button = nullptr; // null: a blank
};
struct wi_butary {
    int nrows = 0, ncols = 0, maxbuttons = 0;
    wi_obj* rectanglearray = nullptr;
    std::vector<wi_butelm> ary;
    wi_obj* togary = nullptr; // set when the array is part of one
};

struct wi_togslot {
    int state = 0;
    wi_obj* button = nullptr;
};
struct wi_togary {
    int editable = 1, mode = 0;
    int activated = -1; // changed last by the user
    std::vector<wi_togslot> ary;
    wi_obj* butary = nullptr;
    wi_cb chng_cb = nullptr;
    int tag = 0;
};

struct wi_mb_but {
    int idnumber = -1; // command number; -1 beyond the menu table's limit
    int type = 0;      // 1: with a check mark
    wi_cb cbfunc = nullptr;
    int tag = 0;
    std::string label, hlp;
    int state = 0, enabled = 1;
    int depth = 0;        // 0: in the pulldown itself, 1: in a submenu of it ...
    bool submenu = false; // heads the deeper buttons that follow it
};
struct wi_mb_pd {
    std::string label, hlp;
    port_win button = 0;
    std::vector<wi_mb_but> ary;
    int currentmenu = 0; // depth at which the next button goes in
};
struct wi_menubar {
    int npd = 0; // room
    std::vector<wi_mb_pd> ary;
};

struct wi_drawarea {
    wi_cb expose_cb = nullptr, resize_cb = nullptr;
    int expose_tag = 0, resize_tag = 0;
    wi_mouse_cb mouse_down_cb = nullptr, mouse_up_cb = nullptr, mouse_move_cb = nullptr,
                mouse_freemv_cb = nullptr;
    int mouse_down_tag = 0, mouse_up_tag = 0, mouse_move_tag = 0, mouse_freemv_tag = 0;
    bool held[3] = {};                // buttons down
    int button = 0;                   // the one pressed last
    port_size seen{.w = -1, .h = -1}; // size at the last paint
};

struct wi_filebox {
    wi_cb accept_cb = nullptr;
    int tag = 0;
    std::string filestr, title, defdir, filter;
    wi_obj* callbacktarget = nullptr;
};
struct wi_filesel {
    wi_obj *filebox = nullptr, *strfld = nullptr, *button = nullptr, *drect = nullptr;
    wi_cb chng_cb = nullptr;
    int tag = 0;
};
struct wi_editbox {
    std::string msg, text;
    wi_cb accept_cb = nullptr;
    int tag = 0;
    wi_obj *window = nullptr, *label = nullptr, *strfld = nullptr; // made at the first pop-up
};
struct wi_msgbox {
    std::string msg;
};
struct wi_ynbox {
    std::string question;
    wi_cb yes_cb = nullptr, no_cb = nullptr;
    int yes_tag = 0, no_tag = 0;
};

struct wi_colorbut {
    std::vector<int> enablearray;
    int currentcolor = 0;
    int editable = 1;
    int alldisabled = 0;
    wi_cb chgcb = nullptr;
    int tag = 0;
};

struct wi_statusline {
    wi_obj* strfld = nullptr;
};
struct wi_editpage {
    port_win editarea = 0;
    int editable = 1;
};

// An object type of another library that is built of toolkit objects: see wi_mk_holder.
struct wi_holder {
    std::shared_ptr<void> record;
};

using wi_union =
    std::variant<std::monostate, wi_form, wi_null, wi_rectary, wi_crop, wi_drect, wi_zuvapp, wi_strfld,
                 wi_numfld, wi_listsel, wi_updownbut, wi_incdecfld, wi_button, wi_butary, wi_togary,
                 wi_menubar, wi_drawarea, wi_filebox, wi_filesel, wi_editbox, wi_msgbox, wi_ynbox,
                 wi_colorbut, wi_statusline, wi_editpage, wi_holder>;

struct wi_obj {
    int type = 0;
    port_win handle = 0; // its window, or the nearest one of the parents
    int ison = 0;
    std::string hlp; // words of the help key, or the whole key
    void* point = nullptr;
    wi_union obj;
    wi_obj* child = nullptr;
    wi_obj* shell = nullptr; // the top-level object, for objects that own a window
    wi_obj* parent = nullptr;

    std::vector<port_win> wins; // all windows of its own, a top window excepted
    port_rect rect;             // last given by onresize
    bool visible = true, enabled = true;
    bool open = false; // takes one child although its type takes none: a composite being built
};

// An object of a foreign type (as wi_type::stdplt) that consists of one inner object: the next object made
// with it as parent. Layout, on and off, focus and grey pass through. `record` is the maker's own; wi_store
// stays free for the application.
wi_obj* wi_mk_holder(wi_obj* parent, int type, std::shared_ptr<void> record);
// The record of a holder of this type; null for anything else.
void* wi_holder_record(const wi_obj* wo, int type);

// Gives wo and what it holds this rectangle of its window, in pixels.
void onresize(wi_obj* wo, int x, int y, int width, int height);

// The window table: 20000 entries, more are dropped without a word.
wi_obj* getwiobject(port_win win);
void setwiobject(port_win win, wi_obj* wo);

// The menu table: 400 entries; an entry's index is its command number.
struct wi_menuinfo {
    wi_obj* menubar = nullptr;
    int pulldown = 0, button = 0; // indices in the bar and in the pulldown
    bool operator==(const wi_menuinfo&) const = default;
};
int setmenuinfo(const wi_menuinfo& info); // command number, or -1 when the table is full
const wi_menuinfo* getmenuinfo(int id);   // null: no such command
int getmenuid(const wi_menuinfo& info);   // command number of an entry, or -1

} // namespace norva
