#pragma once
// The object tree of the user interface: start, tree, layout, on and off, generic access, focus.
//
// A window is a tree of objects, built with wi_mk_... calls that take the parent first. The tree knows no
// pixels: every rectangle follows from the window's size by proportion, on each resize. Objects live as long
// as the process; callers hold plain handles and free nothing. An empty parent gives the object a window of
// its own, 600 by 600 units (see wi_size) and hidden until wi_on.
//
// The widgets are in the other headers of this folder; toolkit.h includes all of them. What an object holds
// inside is in wi_obj.h, for code that adds object types.
//
// A null or wrongly typed object is a fault of the calling code and ends the program through wi_exit.
//
// A window comes about like this:
//
//   wi_set_window_name("NORVA: example");
//   wi_obj* fm = wi_mk_form(nullptr, 40, 30);                          // 40 by 30 units of its own
//   wi_obj* ok = wi_mk_button(wi_form_parent(fm, 1, 1, 10, 4), "OK", 0, ok_cb, 7);
//   wi_size(fm, 400, 300);
//   wi_on(fm);

#include <string>
#include <string_view>
#include <vector>

#include "port/port.h"

namespace norva {

struct wi_obj;

// Called with the object that fired and the tag given with the routine.
using wi_cb = void (*)(wi_obj* wo, int tag);
// Mouse in a draw area: pixels from its upper left corner; button 0 left, 1 middle, 2 right. A free move (no
// button held) passes 0.
using wi_mouse_cb = void (*)(wi_obj* wo, int tag, int x, int y, int button);

// --- Start

// 0 until the application's main has returned, then 1. A draw area paints nothing before. Tests that build
// windows without WinMain set it themselves.
extern int isrunning;

// The program start: splits the command line, lets `app_main` build the windows, and runs the port's loop.
// The port must be set (set_port). Returns the code given to wi_quit, 0 when the last word was a window's
// close.
using wi_main = void (*)(int argc, char** argv);
int WinMain(int argc, char** argv, wi_main app_main);

// A fixed program word, then one word per run of characters other than blank, tab, newline and zero byte.
// There are no quotes.
std::vector<std::string> parsecommandline(std::string_view line);

// To be called by the application with its arguments: a last argument "helpedit" turns help edit mode on and
// is dropped.
void wi_main_init(int& argc, char** argv);
bool wi_help_edit();

// Leaves the loop of WinMain.
void wi_quit(int code);
// Shows `msg` under the title "Error message:" and ends the process with status -1.
[[noreturn]] void wi_exit(const std::string& msg);

// Kept for the callers; they have nothing to do.
void wi_run();
void wi_init_check();
void wi_working(int flag);
void wi_popmsg_init(wi_obj* wo);

// --- Tree

// A form of xsize by ysize units of its own; places in it are made by wi_form_parent. Sizes not above zero
// end the program.
wi_obj* wi_mk_form(wi_obj* parent, double xsize, double ysize);
// A place in a form: its corners in the form's units, 0 to the form's size. Holds one child.
wi_obj* wi_form_parent(wi_obj* wo, double x0, double y0, double x1, double y1);
// nrows by ncols equal cells, filled row by row, each child inset by the fraction xcrop, ycrop of a cell (0
// up to but not including 1) on each side.
wi_obj* wi_mk_rectary(wi_obj* parent, int nrows, int ncols, double xcrop, double ycrop);
// Two children. dir 1: left and right of the split; dir 0: above and below. split: fraction of the first,
// above 0 and below 1.
wi_obj* wi_mk_drect(wi_obj* parent, int dir, double split);
void wi_drect_split(wi_obj* wo, double split);
// One child in what remains after cutting these fractions of the parent off, each 0 up to but not
// including 1.
wi_obj* wi_mk_crop(wi_obj* parent, double ctop, double cbottom, double cleft, double cright);
// A border line with one child inside.
wi_obj* wi_mk_frame(wi_obj* parent);
// A window of its own with one child. `parent` plays no part: windows do not nest.
wi_obj* wi_mk_zuvapp(wi_obj* parent, const std::string& label);
// What the close button does; for wo or the window it was made with. enable 0: nothing. With a callback: it
// is called with the window object and tag, and decides (wi_off hides). Without one the window goes and the
// program's loop ends, if wi_hooks.crsh_safe agrees. `name` is the wording of the close operation.
void wi_zuvapp_quit(wi_obj* wo, int enable, const std::string& name, wi_cb cbfunc, int tag);
void wi_zuvapp_label(wi_obj* wo, const std::string& str);
// The title of the window that wo was made with.
void wi_settitle(wi_obj* wo, const std::string& str);
// The title of the next window made for an object without parent.
void wi_set_window_name(const std::string& label);

void addchild(wi_obj* child, wi_obj* parent);
// The window in which children of `parent` make theirs.
port_win getparenthandle(const wi_obj* parent);

// --- State

// Shows wo and everything below it, also what an earlier wi_off hid: hide again what should stay hidden. A
// window comes to the front. A pop-up box pops up.
void wi_on(wi_obj* wo);
// Hides wo and everything below it. What is hidden keeps its place.
void wi_off(wi_obj* wo);
// True when wo, all it is in, and its window are on.
bool wi_isvisible(const wi_obj* wo);

// Size in units of a 1024 by 768 screen, scaled to the real screen and by a further 1.25. For objects that
// own a window.
void wi_size(wi_obj* wo, int x, int y);
// Upper left corner in the same units, without the 1.25.
void wi_position(wi_obj* wo, int x, int y);

// The application's own pointer.
void wi_store(wi_obj* wo, void* ptr);
void* wi_recall(const wi_obj* wo);

// Turns wo and everything below it grey, or back. An object is usable when it and all it is in are on, so a
// control turned off by itself stays off when its window comes back.
void wi_enable(wi_obj* wo, int on);
int wi_isenabled(const wi_obj* wo);
// Shown when the mouse rests on any part of wo.
void wi_set_tooltip(wi_obj* wo, const std::string& text);

// --- Generic access, passed to the object's own routine by type

void wi_set_message(wi_obj* wo, const std::string& str); // boxes
void wi_set_label(wi_obj* wo, const std::string& str);
void wi_set_split(wi_obj* wo, double split);
void wi_set_decimals(wi_obj* wo, int ndec);
void wi_set_inc(wi_obj* wo, double inc);
void wi_set_string(wi_obj* wo, const std::string& str);
void wi_set_value(wi_obj* wo, double value);
void wi_set_state(wi_obj* wo, int state);
void wi_set_dir(wi_obj* wo, const std::string& dir);
void wi_set_editable(wi_obj* wo, int flag);
std::string wi_get_string(const wi_obj* wo);
double wi_get_value(const wi_obj* wo);
int wi_get_state(const wi_obj* wo);
// wi_get_value cut to a whole number and held to the range of int, so that no typed number overflows.
int wi_get_int(const wi_obj* wo);

// --- Focus

void wi_activate_first(wi_obj* wo); // the first control in wo that takes keys
void wi_activate_next(wi_obj* wo);  // the one after wo, the first again after the last
void wi_activate_prev(wi_obj* wo);

// --- Help. Each control has a key, "help:" and the words of its window and of its label:
// "help:norva:first freq sample/start freq". F1 or the right button on a control looks it up.

// The words for a whole window, as "norva:user defaults". wo: any object of the window.
void wi_hlp_setprog(wi_obj* wo, const std::string& words);
// The words of one control, or the whole key when it starts with "help:". Set from the label at creation.
void wi_hlp_setstr(wi_obj* wo, const std::string& words);
std::string wi_hlp_getstr(const wi_obj* wo); // the whole key
void wi_hlp_srch(const std::string& key);

// --- Calls upward, filled by the application at start. The defaults do nothing; closing is agreed to.
struct wi_hooks_t {
    void (*help)(const std::string& key) = nullptr;
    // A key with Ctrl held in the window `top`: 'Z' ... True when it was taken.
    bool (*shortcut)(wi_obj* top, char key) = nullptr;
    bool (*crsh_safe)() = nullptr; // may a window without close callback go, and the program end?
    std::string home_dir;          // the installation's own folder, where "QELM" is not set
};
extern wi_hooks_t wi_hooks;

// Forgets all objects, tables and hooks. All handles become invalid.
void wi_reset_for_tests();

} // namespace norva
