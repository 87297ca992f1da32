#pragma once
// The recording port: no window system, a log of every call, a state that answers queries, and a way to send
// every event. Window code is tested on it without a display.
//
//   record_port rec;
//   set_port(&rec);
//   ... build windows ...
//   rec.run_pending();                          // first paints, queued answers
//   rec.click(rec.find(port_kind::button, "OK"));
//   EXPECT_EQ(rec.drawn(area).size(), 3u);

#include "port/port.h"

#include <deque>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace norva {

// Thrown by fatal, which in the product ends the program: what() is the text.
struct record_fatal : std::runtime_error {
    record_fatal(const std::string& t, const std::string& text) : std::runtime_error(text), title(t) {}
    std::string title;
};

// One call as it came in. Which fields count depends on the operation; the others keep their defaults.
struct record_call {
    std::string op; // name of the port's routine: "move", "polyline_to" ...
    port_win win = 0;
    std::string text;                  // text, title, file
    bool on = false;                   // show, enable, set_check ...
    int style = 0, width = 0;          // create, pen
    std::uint32_t rgb = 0;             // pen, fill, swatch_colour
    port_rop rop = port_rop::copy;     // rop, and the mode in force for polyline_to
    port_rect rect;                    // move, fill, erase, image
    std::vector<port_point> points;    // move_to: one; polyline_to: the current point, then those given
    std::vector<std::uint32_t> pixels; // image
    port_size pixel_size;              // image
    std::vector<std::string> texts;    // list_set
    bool lost = false;                 // drawn on an area that has no picture yet
};
// One line: the operation, its window and what matters of its arguments.
std::string to_text(const record_call& call);

struct record_window {
    port_kind kind = port_kind::top;
    port_win parent = 0;
    int style = 0;
    std::string text, tooltip;
    port_rect rect;
    bool shown = false, enabled = true, read_only = false, checked = false, mouse_free = false;
    std::vector<std::string> list;
    int index = -1;
    std::uint32_t colour = 0;

    // Draw areas
    bool has_picture = false;
    port_size picture;      // size of the picture; that of the window once the paint notice has come
    bool paint_due = false; // request_paint was called
    std::vector<std::uint32_t> pixels; // the picture, row after row, when rasters are on
};

// A message, question or file choice that was asked for.
struct record_dialog {
    enum class kind { message, yes_no, file } what = kind::message;
    std::string title, text;
    port_file_request request;
};

struct record_page {
    port_page_job job;
    port_page_result begin = port_page_result::ok, end = port_page_result::ok;
    bool ended = false;
    std::vector<record_call> calls; // what was drawn on it
};

class record_port : public port {
public:
    record_port();
    ~record_port() override;

    // --- What the test sets
    port_size screen{1024, 768};
    port_size edge{2, 2};
    int line_height = 14;
    bool rasters = false; // draw areas keep their pixels
    // A letter sheet at 600 dots per inch, all of it printable.
    port_page_caps caps{{6600, 5100}, 600, {0, 0, 6600, 5100}};
    bool printer_cancelled = false, begin_fails = false, end_fails = false;
    bool pictures_written = false; // what picture() answers; nothing is written
    // Answers for questions and file choices, used up in order by run_pending. A question with none left
    // stays open until answer_... is called. Messages are acknowledged by run_pending.
    std::deque<bool> yes_no_answers;
    std::deque<std::string> file_answers;

    // --- What it can be asked
    std::vector<record_call> log;
    std::vector<record_dialog> dialogs; // every dialog that was asked for, in order
    std::vector<record_page> pages;
    std::vector<port_menu_entry> menu; // the menu opened last
    port_win menu_control = 0;
    std::vector<std::string> picture_files;
    bool has_quit = false;
    int quit_code = 0;
    int pumps = 0, busy_depth = 0;

    bool exists(port_win win) const { return windows_.contains(win); }
    const record_window& window(port_win win) const; // throws std::out_of_range for an unknown one
    port_win focused() const { return focused_; }
    port_win raised() const { return raised_; } // the window brought to the front last
    bool visible(port_win win) const;           // shown, in a shown window
    bool usable(port_win win) const;            // visible and not grey, in a window that is not
    // The first window of this kind and text, in the order of making; 0 when there is none. With `top`, in
    // that window only.
    port_win find(port_kind kind, const std::string& text, port_win top = 0) const;
    std::vector<port_win> all(port_kind kind, port_win top = 0) const;
    std::vector<port_win> tops() const { return all(port_kind::top); }
    // The drawing calls on an area or on port_page, in order.
    std::vector<record_call> drawn(port_win dc) const;
    std::size_t count(const std::string& op, port_win win = 0) const;
    int open_dialogs() const { return static_cast<int>(waiting_.size()); }
    // One line each, for a comparison as a whole.
    std::string log_text() const;

    // --- What the user does. Each is refused (false) where the real port would not report it: unknown,
    // hidden or grey windows, a read-only field.
    bool click(port_win control);
    bool click(const std::string& text); // the first usable button or toggle of this text
    bool click_up_down(port_win control, bool up);
    bool press(port_win draw, int x, int y, int button = 0);
    bool drag(port_win draw, int x, int y, int button = 0);
    bool release(port_win draw, int x, int y, int button = 0);
    bool free_move(port_win draw, int x, int y);
    // Types into a field, combo_edit or page: each character that on_char keeps is put at the end (a page
    // keeps all), "\b" takes the last one off, "\r" is the return key and "\t" the tab key. False when any
    // character was refused.
    bool type(port_win field, const std::string& text);
    // Replaces the text, as by select all and typing, then return.
    bool enter(port_win field, const std::string& text);
    bool press_return(port_win field);
    bool tab(port_win control, bool back = false);
    bool select(port_win combo, int index);
    bool select(port_win combo, const std::string& text);
    bool help(port_win control);
    bool choose_menu(const std::string& text); // in the menu opened last, submenus too; not a grey entry
    bool close(port_win top);                  // true: the window went
    bool resize(port_win top, int w, int h);   // by its border
    bool shortcut(port_win top, char key);
    void expose(port_win draw); // a paint without a change of size, at once

    // --- The loop: delivers held sizes, paint notices, queued answers and tasks until nothing is left.
    void run_pending();
    bool answer_yes_no(bool yes); // the oldest open question
    bool answer_file(const std::string& name);

    // --- port
    void set_events(port_events* events) override { events_ = events; }
    int run() override;
    void quit(int code) override;
    void pump() override;
    void busy(bool on) override;
    void later(std::function<void()> task) override;
    port_size screen_size() override { return screen; }
    port_size edge_size() override { return edge; }
    int char_height() override { return line_height; }
    port_win create(port_kind kind, port_win parent, int style, const std::string& text) override;
    void destroy(port_win) override;
    void move(port_win, port_rect to) override;
    port_rect client_rect(port_win) override;
    port_rect window_rect(port_win) override;
    void show(port_win, bool on) override;
    bool shown(port_win) override;
    void raise(port_win) override;
    void focus(port_win) override;
    void enable(port_win, bool on) override;
    void read_only(port_win, bool on) override;
    void set_text(port_win, const std::string&) override;
    std::string get_text(port_win) override;
    void set_check(port_win, bool on) override;
    bool get_check(port_win) override;
    void list_set(port_win, const std::vector<std::string>&) override;
    void list_select(port_win, int index) override;
    int list_index(port_win) override;
    void swatch_colour(port_win, std::uint32_t rgb) override;
    void mouse_free(port_win draw, bool on) override;
    void tooltip(port_win, const std::string&) override;
    void menu_popup(port_win control, const std::vector<port_menu_entry>&) override;
    void pen(port_win dc, std::uint32_t rgb, int style, int width) override;
    void rop(port_win dc, port_rop) override;
    void move_to(port_win dc, port_point) override;
    void polyline_to(port_win dc, std::span<const port_point>) override;
    void fill(port_win dc, port_rect, std::uint32_t rgb) override;
    void erase(port_win dc, port_rect) override;
    void image(port_win dc, port_rect, std::span<const std::uint32_t> rgb, int w, int h) override;
    void request_paint(port_win draw) override;
    void message(const std::string& title, const std::string& text, std::function<void()> done) override;
    void yes_no(const std::string& title, const std::string& text, std::function<void(bool)> done) override;
    void ask_file(const port_file_request&, std::function<void(const std::string&)> done) override;
    void fatal(const std::string& title, const std::string& text) override;
    port_page_result page_begin(const port_page_job&) override;
    port_page_caps page_caps() override;
    port_page_result page_end() override;
    bool picture(port_win top, const std::string& png_file) override;

private:
    // Pen, mode and current point of a draw area or of the page.
    struct pen_state {
        std::uint32_t rgb = 0;
        int width = 1;
        port_rop rop = port_rop::copy;
        port_point at;
    };
    struct waiting {
        record_dialog dialog;
        std::function<void()> message_done;
        std::function<void(bool)> yes_no_done;
        std::function<void(const std::string&)> file_done;
    };

    record_call& note(const char* op, port_win win);
    record_call& draw_note(const char* op, port_win dc);
    record_window* get(port_win win);
    const record_window* get(port_win win) const;
    port_win top_of(port_win win) const;
    bool tell_size(port_win top);
    bool paint_one();
    bool answer_one();
    bool mouse(port_win draw, port_mouse kind, int x, int y, int button);
    bool has_page() const {
        return !pages.empty() && pages.back().begin == port_page_result::ok && !pages.back().ended;
    }
    void put_in_page(const record_call& call);
    void raster_line(record_window& w, const pen_state& pen, port_point from, port_point to);

    port_events* events_ = nullptr;
    std::map<port_win, record_window> windows_;
    std::map<port_win, pen_state> pens_;
    std::set<port_win> held_sizes_; // tops whose size changed while busy
    std::deque<waiting> waiting_;
    std::deque<std::function<void()>> tasks_;
    port_win next_ = 1, focused_ = 0, raised_ = 0;
};

} // namespace norva
