#pragma once
// The platform, as the program sees it: one list of what is asked (class port) and one of what is told
// back (class port_events). Nothing above this header knows which window system is underneath.
//
// Two implementations exist: port_qt (Qt 6 Widgets, the product) and port_record (a log and a state to
// query, for tests). The port is used from the main thread only.
//
// All lengths and positions are device pixels, y downward. Colours are 24-bit words with red in the low
// byte: 0xBBGGRR. Texts are UTF-8, never rich text, and "&" means itself. Windows are named by small
// integers, never by pointers; 0 names no window. A call that names an unknown window does nothing and
// answers 0, an empty text or an empty rectangle.

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace norva {

using port_win = int; // 0: none

// The drawing target that is the page between page_begin and page_end.
constexpr port_win port_page = -1;

struct port_point {
    int x = 0, y = 0;
    bool operator==(const port_point&) const = default;
};

struct port_rect {
    int x = 0, y = 0, w = 0, h = 0; // right and bottom edge exclusive
    bool operator==(const port_rect&) const = default;
};

struct port_size {
    int w = 0, h = 0;
    bool operator==(const port_size&) const = default;
};

enum class port_kind {
    top,        // application window; parent 0; created hidden; its size is the size of its client area
    label,      // text, one or more lines; style: see label_left ...
    field,      // one line of editable text
    button,     // push button
    toggle,     // button that stays pressed; the program sets the state, a click only reports
    combo,      // list of choices, one shown
    combo_edit, // the same, and any text may be typed
    page,       // many lines of text in a fixed-pitch font, scrolling; read only until told otherwise
    frame,      // border line; takes no mouse
    draw,       // draw area
    swatch,     // small area that shows one colour or a picture, clickable
    up_down     // pair of small buttons; on_command_part tells which
};

constexpr int label_left = 0, label_centre = 1, label_right = 2;
constexpr int label_heading = 4; // added to one of the three: larger, bold

// A line of a popup menu.
struct port_menu_entry {
    int id = 0;       // told by on_menu; ignored for separators and submenus
    std::string text; // empty: a separator
    bool checked = false, checkable = false, enabled = true;
    std::vector<port_menu_entry> submenu{};
};

// A choice of the file dialog: "Text (*.a *.b)".
struct port_filter {
    std::string name;
    std::vector<std::string> patterns; // "*.pf*"
};

struct port_file_request {
    std::string title, dir; // dir: where to start, may be empty
    std::vector<port_filter> filters;
};

enum class port_page_result { ok, cancel, error };

struct port_page_job {
    std::string title;     // document name shown by the print queue
    std::string file;      // PDF to write when no printer is used; absolute or relative to the current folder
    bool landscape = true; // long side horizontal
    bool ask = true;       // show the print dialog when there is a printer and a user; otherwise write `file`
};

struct port_page_caps {
    port_size paper;           // whole sheet in device units
    double units_per_inch = 0; // device units in one inch of paper
    port_rect printable;       // part of the sheet that the device can mark
};

enum class port_rop { copy, exclusive_or };

enum class port_mouse { down, up, drag, free_move };

// What the platform tells the program. Events come from the loop only, never from inside a port call
// (sizes excepted: resizing a top window tells on_size at once). Handlers run to their end; the port never
// calls a second handler inside a first one.
class port_events {
public:
    virtual ~port_events() = default;
    virtual void on_size(port_win top, int w, int h) = 0; // client size of a top window changed
    // A draw area was shown for the first time, changed its size, or request_paint asked for it. Before the
    // first notice the area has no picture and drawing to it goes nowhere.
    virtual void on_paint(port_win draw) = 0;
    virtual void on_mouse(port_win draw, port_mouse kind, int x, int y,
                          int button) = 0;         // 0 left 1 middle 2 right
    virtual void on_command(port_win control) = 0; // button, toggle, swatch clicked
    virtual void on_command_part(port_win up_down, bool up) = 0;
    virtual void on_select(port_win combo, int index) = 0; // the user chose an entry
    virtual bool on_char(port_win field, char32_t ch) = 0; // false: the character is dropped
    virtual void on_return(port_win field) = 0;            // return key in a field or combo_edit
    virtual void on_tab(port_win control, bool back) = 0;
    virtual void on_help(port_win control) = 0; // F1, or the right button on a control
    virtual void on_menu(int id) = 0;
    virtual bool on_close(port_win top) = 0; // false: the window stays; true: it is destroyed
    // A key with Ctrl held, pressed in any control or draw area of a top window: 'Z', 'Y', ... True: taken.
    virtual bool on_shortcut(port_win top, char key) = 0;
};

class port {
public:
    virtual ~port() = default;

    // --- Loop
    virtual void set_events(port_events* events) = 0; // not owned; must be set before anything is created
    virtual int run() = 0;                            // returns the code given to quit
    virtual void quit(int code) = 0;
    // During a long computation: paints what is pending and nothing else. User input stays queued and is
    // delivered after the computation, in order.
    virtual void pump() = 0;
    // While busy, paint notices and sizes are held back and pictures keep their size, so that an overlay
    // drawn and removed inside a long computation matches. Calls nest.
    virtual void busy(bool on) = 0;
    // Runs `task` once from the loop, after the sizes and paint notices that are due by then. A port without
    // a loop runs it at once.
    virtual void later(std::function<void()> task) {
        if (task) task();
    }

    // --- Measures
    virtual port_size screen_size() = 0;
    virtual port_size edge_size() = 0; // thickness of a three-dimensional edge
    virtual int char_height() = 0;     // line height of the control font

    // --- Windows
    virtual port_win create(port_kind kind, port_win parent, int style, const std::string& text) = 0;
    virtual void destroy(port_win) = 0;
    virtual void move(port_win, port_rect to) = 0; // in the parent's client area; negative sizes count as 0
    virtual port_rect client_rect(port_win) = 0;   // x and y are 0; a draw area answers its picture's size
    virtual port_rect window_rect(port_win) = 0;   // as given to move
    virtual void show(port_win, bool on) = 0;
    virtual bool shown(port_win) = 0;
    virtual void raise(port_win) = 0; // top window to the front, and active
    // From its next showing on, a small top window (a message, a question) stays above the one that is active
    // then, so that it cannot get lost behind it.
    virtual void keep_above(port_win) {}
    virtual void focus(port_win) = 0;
    virtual void enable(port_win, bool on) = 0; // a control that is off is grey and takes no input
    virtual void read_only(port_win, bool on) = 0;
    virtual void set_text(port_win, const std::string&) = 0;
    virtual std::string get_text(port_win) = 0;
    virtual void set_check(port_win, bool on) = 0;
    virtual bool get_check(port_win) = 0;
    virtual void list_set(port_win, const std::vector<std::string>&) = 0; // selects the first entry
    virtual void list_select(port_win, int index) = 0;                    // -1: none
    virtual int list_index(port_win) = 0;
    virtual void swatch_colour(port_win, std::uint32_t rgb) = 0;
    virtual void mouse_free(port_win draw, bool on) = 0; // report moves with no button held
    virtual void tooltip(port_win, const std::string&) = 0;

    // --- Menus: opens below the control and returns at once; the choice comes as on_menu.
    virtual void menu_popup(port_win control, const std::vector<port_menu_entry>&) = 0;

    // --- Drawing, on a draw area or on port_page. The picture is kept; a repaint by the system shows it.
    virtual void pen(port_win dc, std::uint32_t rgb, int style, int width) = 0; // style 0 to 9: dash patterns
    virtual void rop(port_win dc, port_rop) = 0;                                // a page always copies
    virtual void move_to(port_win dc, port_point) = 0;                          // and restarts the dashes
    // Lines from the current point through all points; the dashes run on. The last pixel is left out.
    virtual void polyline_to(port_win dc, std::span<const port_point>) = 0;
    virtual void fill(port_win dc, port_rect, std::uint32_t rgb) = 0;
    virtual void erase(port_win dc, port_rect) = 0; // to the background of draw areas, which is white
    // One picture of w by h pixels, row after row from the top, scaled to the rectangle without smoothing. On
    // a swatch it fills the swatch, whatever the rectangle.
    virtual void image(port_win dc, port_rect, std::span<const std::uint32_t> rgb, int w, int h) = 0;
    virtual void request_paint(port_win draw) = 0; // on_paint will come from the loop

    // --- Dialogs return at once and answer through `done`, from the loop; `done` may be empty.
    virtual void message(const std::string& title, const std::string& text, std::function<void()> done) = 0;
    virtual void yes_no(const std::string& title, const std::string& text,
                        std::function<void(bool)> done) = 0;
    // `done` gets the chosen name, or an empty one.
    virtual void ask_file(const port_file_request&, std::function<void(const std::string&)> done) = 0;
    virtual void fatal(const std::string& title, const std::string& text) = 0; // returns after the answer

    // --- One printed page: printer or PDF file, as the job says.
    virtual port_page_result page_begin(const port_page_job&) = 0;
    virtual port_page_caps page_caps() = 0;
    virtual port_page_result page_end() = 0; // error when the page could not be written in full

    // --- Pictures: the whole top window as the user sees it, as a PNG file. False: not written.
    virtual bool picture(port_win top, const std::string& png_file) = 0;
};

// The port in use. set_port is called once at start (by every test for itself); the_port stops the program
// when none is set.
port& the_port();
void set_port(port*); // not owned

} // namespace norva
