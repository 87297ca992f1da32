// The loop, the dialogs and the user of the recording port.
#include "port_record/port_record.h"

#include <algorithm>
#include <stdexcept>

namespace norva {

// --- Loop

int record_port::run() {
    note("run", 0);
    run_pending();
    return quit_code;
}

void record_port::quit(int code) {
    note("quit", 0).style = code;
    has_quit = true;
    quit_code = code;
}

void record_port::pump() {
    note("pump", 0);
    ++pumps;
}

void record_port::busy(bool on) {
    note("busy", 0).on = on;
    busy_depth = std::max(busy_depth + (on ? 1 : -1), 0);
}

void record_port::later(std::function<void()> task) {
    note("later", 0);
    tasks_.push_back(std::move(task));
}

void record_port::request_paint(port_win draw) {
    record_window* w = get(draw);
    if (!w) return;
    note("request_paint", draw);
    w->paint_due = true;
}

// Delivers one paint notice; false when none is due.
bool record_port::paint_one() {
    for (auto& [win, w] : windows_) {
        if (w.kind != port_kind::draw || !visible(win)) continue;
        const port_size size{w.rect.w, w.rect.h};
        const bool stale = !w.has_picture || w.picture != size;
        if (!stale && !w.paint_due) continue;
        w.paint_due = false;
        if (stale) {
            w.has_picture = true;
            w.picture = size;
            if (rasters)
                w.pixels.assign(static_cast<std::size_t>(size.w) * static_cast<std::size_t>(size.h),
                                0xFFFFFF);
        }
        if (events_) events_->on_paint(win);
        return true;
    }
    return false;
}

bool record_port::answer_one() {
    for (std::size_t i = 0; i < waiting_.size(); ++i) {
        const auto what = waiting_[i].dialog.what;
        if (what == record_dialog::kind::message) {
            const auto done = waiting_[i].message_done;
            waiting_.erase(waiting_.begin() + static_cast<std::ptrdiff_t>(i));
            if (done) done();
            return true;
        }
        if (what == record_dialog::kind::yes_no && !yes_no_answers.empty()) {
            const bool yes = yes_no_answers.front();
            yes_no_answers.pop_front();
            return answer_yes_no(yes);
        }
        if (what == record_dialog::kind::file && !file_answers.empty()) {
            const std::string name = file_answers.front();
            file_answers.pop_front();
            return answer_file(name);
        }
    }
    return false;
}

void record_port::run_pending() {
    for (int turns = 0; turns < 10000; ++turns) {
        if (busy_depth == 0 && !held_sizes_.empty()) {
            const port_win top = *held_sizes_.begin();
            held_sizes_.erase(held_sizes_.begin());
            if (get(top)) tell_size(top);
            continue;
        }
        if (busy_depth == 0 && paint_one()) continue;
        if (answer_one()) continue;
        if (!tasks_.empty()) {
            const auto task = std::move(tasks_.front());
            tasks_.pop_front();
            if (task) task();
            continue;
        }
        return;
    }
    throw std::logic_error("run_pending: an event handler keeps asking for the next event");
}

// --- Dialogs

void record_port::message(const std::string& title, const std::string& text, std::function<void()> done) {
    note("message", 0).text = text;
    record_dialog d{.what = record_dialog::kind::message, .title = title, .text = text, .request = {}};
    dialogs.push_back(d);
    waiting_.push_back({.dialog = d, .message_done = std::move(done), .yes_no_done = {}, .file_done = {}});
}

void record_port::yes_no(const std::string& title, const std::string& text, std::function<void(bool)> done) {
    note("yes_no", 0).text = text;
    record_dialog d{.what = record_dialog::kind::yes_no, .title = title, .text = text, .request = {}};
    dialogs.push_back(d);
    waiting_.push_back({.dialog = d, .message_done = {}, .yes_no_done = std::move(done), .file_done = {}});
}

void record_port::ask_file(const port_file_request& request, std::function<void(const std::string&)> done) {
    note("ask_file", 0).text = request.dir;
    record_dialog d{
        .what = record_dialog::kind::file, .title = request.title, .text = {}, .request = request};
    dialogs.push_back(d);
    waiting_.push_back({.dialog = d, .message_done = {}, .yes_no_done = {}, .file_done = std::move(done)});
}

void record_port::fatal(const std::string& title, const std::string& text) {
    note("fatal", 0).text = text;
    throw record_fatal(title, text);
}

bool record_port::answer_yes_no(bool yes) {
    const auto it = std::find_if(waiting_.begin(), waiting_.end(), [](const waiting& w) {
        return w.dialog.what == record_dialog::kind::yes_no;
    });
    if (it == waiting_.end()) return false;
    const auto done = it->yes_no_done;
    waiting_.erase(it);
    if (done) done(yes);
    return true;
}

bool record_port::answer_file(const std::string& name) {
    const auto it = std::find_if(waiting_.begin(), waiting_.end(),
                                 [](const waiting& w) { return w.dialog.what == record_dialog::kind::file; });
    if (it == waiting_.end()) return false;
    const auto done = it->file_done;
    waiting_.erase(it);
    if (done) done(name);
    return true;
}

// --- The user

static bool is_clickable(port_kind kind) {
    return kind == port_kind::button || kind == port_kind::toggle || kind == port_kind::swatch;
}

static bool takes_text(port_kind kind) {
    return kind == port_kind::field || kind == port_kind::combo_edit || kind == port_kind::page;
}

bool record_port::click(port_win control) {
    if (!events_ || !usable(control) || !is_clickable(windows_.at(control).kind)) return false;
    events_->on_command(control);
    return true;
}

bool record_port::click(const std::string& text) {
    for (const port_kind kind : {port_kind::button, port_kind::toggle})
        for (const port_win win : all(kind))
            if (windows_.at(win).text == text && usable(win)) return click(win);
    return false;
}

bool record_port::click_up_down(port_win control, bool up) {
    if (!events_ || !usable(control) || windows_.at(control).kind != port_kind::up_down) return false;
    events_->on_command_part(control, up);
    return true;
}

bool record_port::mouse(port_win draw, port_mouse kind, int x, int y, int button) {
    if (!events_ || !usable(draw) || windows_.at(draw).kind != port_kind::draw) return false;
    if (kind == port_mouse::free_move && !windows_.at(draw).mouse_free) return false;
    events_->on_mouse(draw, kind, x, y, button);
    return true;
}

bool record_port::press(port_win draw, int x, int y, int button) {
    return mouse(draw, port_mouse::down, x, y, button);
}
bool record_port::drag(port_win draw, int x, int y, int button) {
    return mouse(draw, port_mouse::drag, x, y, button);
}
bool record_port::release(port_win draw, int x, int y, int button) {
    return mouse(draw, port_mouse::up, x, y, button);
}
bool record_port::free_move(port_win draw, int x, int y) {
    return mouse(draw, port_mouse::free_move, x, y, 0);
}

// The next character of a UTF-8 text, with its bytes; `at` moves behind it.
static char32_t next_char(const std::string& text, std::size_t& at, std::string& bytes) {
    const unsigned char first = static_cast<unsigned char>(text[at]);
    const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    bytes = text.substr(at, length);
    at += length;
    char32_t ch = length == 1 ? first : first & (0x7Fu >> length);
    for (std::size_t i = 1; i < bytes.size(); ++i)
        ch = ch << 6 | (static_cast<unsigned char>(bytes[i]) & 0x3Fu);
    return ch;
}

static void take_last_char(std::string& text) {
    while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0) == 0x80) text.pop_back();
    if (!text.empty()) text.pop_back();
}

bool record_port::type(port_win field, const std::string& text) {
    if (!events_ || !usable(field) || !takes_text(windows_.at(field).kind)) return false;
    focused_ = field;
    bool all_kept = true;
    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t ch = next_char(text, at, bytes);
        if (!get(field)) return false; // a handler removed it
        if (ch == U'\t') {
            events_->on_tab(field, false);
        } else if (ch == U'\r' && windows_.at(field).kind != port_kind::page) {
            events_->on_return(field);
        } else if (windows_.at(field).read_only) {
            all_kept = false;
        } else if (ch == U'\b') {
            take_last_char(windows_.at(field).text);
        } else if (const bool page = windows_.at(field).kind == port_kind::page;
                   page || events_->on_char(field, ch)) {
            if (record_window* w = get(field)) w->text += ch == U'\r' ? "\n" : bytes;
        } else {
            all_kept = false;
        }
    }
    return all_kept;
}

bool record_port::enter(port_win field, const std::string& text) {
    if (!usable(field) || !takes_text(windows_.at(field).kind) || windows_.at(field).read_only) return false;
    windows_.at(field).text.clear();
    return type(field, text + '\r');
}

bool record_port::press_return(port_win field) {
    return type(field, "\r");
}

bool record_port::tab(port_win control, bool back) {
    if (!events_ || !usable(control)) return false;
    focused_ = control;
    events_->on_tab(control, back);
    return true;
}

bool record_port::select(port_win combo, int index) {
    if (!events_ || !usable(combo)) return false;
    record_window& w = windows_.at(combo);
    if ((w.kind != port_kind::combo && w.kind != port_kind::combo_edit) || index < 0 ||
        index >= static_cast<int>(w.list.size()))
        return false;
    w.index = index;
    w.text = w.list[static_cast<std::size_t>(index)];
    events_->on_select(combo, index);
    return true;
}

bool record_port::select(port_win combo, const std::string& text) {
    const record_window* w = get(combo);
    if (!w) return false;
    const auto it = std::find(w->list.begin(), w->list.end(), text);
    return it != w->list.end() && select(combo, static_cast<int>(it - w->list.begin()));
}

bool record_port::help(port_win control) {
    if (!events_ || !visible(control)) return false;
    events_->on_help(control);
    return true;
}

static const port_menu_entry* find_entry(const std::vector<port_menu_entry>& entries,
                                         const std::string& text) {
    for (const port_menu_entry& e : entries) {
        if (!e.enabled) continue;
        if (const port_menu_entry* inner = find_entry(e.submenu, text)) return inner;
        if (e.submenu.empty() && e.text == text) return &e;
    }
    return nullptr;
}

bool record_port::choose_menu(const std::string& text) {
    const port_menu_entry* e = text.empty() ? nullptr : find_entry(menu, text);
    if (!events_ || !e) return false;
    const int id = e->id;
    menu.clear(); // it closes before the answer comes
    events_->on_menu(id);
    return true;
}

bool record_port::close(port_win top) {
    if (!events_ || !visible(top) || !events_->on_close(top)) return false;
    destroy(top);
    return true;
}

bool record_port::resize(port_win top, int w, int h) {
    if (!visible(top) || windows_.at(top).kind != port_kind::top) return false;
    port_rect& r = windows_.at(top).rect;
    if (r.w == w && r.h == h) return true;
    r.w = w;
    r.h = h;
    tell_size(top);
    return true;
}

bool record_port::shortcut(port_win top, char key) {
    return events_ && visible(top) && events_->on_shortcut(top, key);
}

void record_port::expose(port_win draw) {
    record_window* w = get(draw);
    if (!w || !events_) return;
    w->paint_due = true;
    while (w && w->paint_due && paint_one()) w = get(draw);
}

} // namespace norva
