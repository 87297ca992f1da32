// Windows of the recording port: making, moving, showing, and what they hold.
#include "port_record/port_record.h"

#include <algorithm>

namespace norva {

record_port::record_port() = default;
record_port::~record_port() = default;

record_call& record_port::note(const char* op, port_win win) {
    record_call& call = log.emplace_back();
    call.op = op;
    call.win = win;
    return call;
}

record_window* record_port::get(port_win win) {
    const auto it = windows_.find(win);
    return it == windows_.end() ? nullptr : &it->second;
}

const record_window* record_port::get(port_win win) const {
    const auto it = windows_.find(win);
    return it == windows_.end() ? nullptr : &it->second;
}

port_win record_port::top_of(port_win win) const {
    const record_window* w = get(win);
    while (w && w->parent) {
        win = w->parent;
        w = get(win);
    }
    return w ? win : 0;
}

const record_window& record_port::window(port_win win) const {
    return windows_.at(win);
}

bool record_port::visible(port_win win) const {
    const record_window* w = get(win);
    if (!w) return false;
    return w->shown && (w->parent == 0 || visible(w->parent));
}

bool record_port::usable(port_win win) const {
    const record_window* w = get(win);
    if (!w || !visible(win)) return false;
    return w->enabled && (w->parent == 0 || usable(w->parent));
}

port_win record_port::find(port_kind kind, const std::string& text, port_win top) const {
    for (const port_win win : all(kind, top))
        if (windows_.at(win).text == text) return win;
    return 0;
}

std::vector<port_win> record_port::all(port_kind kind, port_win top) const {
    std::vector<port_win> found;
    for (const auto& [win, w] : windows_)
        if (w.kind == kind && (top == 0 || top_of(win) == top)) found.push_back(win);
    return found;
}

port_win record_port::create(port_kind kind, port_win parent, int style, const std::string& text) {
    if (kind != port_kind::top && !get(parent)) return 0;
    const port_win win = next_++;
    record_window& w = windows_[win];
    w.kind = kind;
    w.parent = kind == port_kind::top ? 0 : parent;
    w.style = style;
    w.text = text;
    w.shown = kind != port_kind::top; // seen once its window is
    w.read_only = kind == port_kind::page;
    record_call& call = note("create", win);
    call.style = style;
    call.text = text;
    return win;
}

void record_port::destroy(port_win win) {
    note("destroy", win);
    std::vector<port_win> gone;
    for (const auto& item : windows_)
        if (item.first == win || top_of(item.first) == win) gone.push_back(item.first);
    for (const port_win w : gone) windows_.erase(w);
    if (!get(focused_)) focused_ = 0;
}

void record_port::move(port_win win, port_rect to) {
    record_window* w = get(win);
    if (!w) return;
    to.w = std::max(to.w, 0);
    to.h = std::max(to.h, 0);
    note("move", win).rect = to;
    const bool resized = w->rect.w != to.w || w->rect.h != to.h;
    w->rect = to;
    if (w->kind == port_kind::top && resized) tell_size(win);
}

bool record_port::tell_size(port_win top) {
    if (busy_depth > 0) {
        held_sizes_.insert(top);
        return false;
    }
    const port_rect r = windows_.at(top).rect;
    if (events_) events_->on_size(top, r.w, r.h);
    return true;
}

port_rect record_port::client_rect(port_win win) {
    const record_window* w = get(win);
    if (!w) return {};
    if (w->has_picture) return {0, 0, w->picture.w, w->picture.h};
    return {0, 0, w->rect.w, w->rect.h};
}

port_rect record_port::window_rect(port_win win) {
    const record_window* w = get(win);
    return w ? w->rect : port_rect{};
}

void record_port::show(port_win win, bool on) {
    record_window* w = get(win);
    if (!w) return;
    note("show", win).on = on;
    w->shown = on;
}

bool record_port::shown(port_win win) {
    const record_window* w = get(win);
    return w && w->shown;
}

void record_port::raise(port_win win) {
    if (!get(win)) return;
    note("raise", win);
    raised_ = win;
}

void record_port::focus(port_win win) {
    if (!get(win)) return;
    note("focus", win);
    focused_ = win;
}

void record_port::enable(port_win win, bool on) {
    record_window* w = get(win);
    if (!w) return;
    note("enable", win).on = on;
    w->enabled = on;
}

void record_port::read_only(port_win win, bool on) {
    record_window* w = get(win);
    if (!w) return;
    note("read_only", win).on = on;
    w->read_only = on;
}

void record_port::set_text(port_win win, const std::string& text) {
    record_window* w = get(win);
    if (!w) return;
    note("set_text", win).text = text;
    if (w->kind == port_kind::combo) return; // shows its entries only
    w->text = text;
}

std::string record_port::get_text(port_win win) {
    const record_window* w = get(win);
    return w ? w->text : std::string{};
}

void record_port::set_check(port_win win, bool on) {
    record_window* w = get(win);
    if (!w) return;
    note("set_check", win).on = on;
    w->checked = on;
}

bool record_port::get_check(port_win win) {
    const record_window* w = get(win);
    return w && w->checked;
}

void record_port::list_set(port_win win, const std::vector<std::string>& list) {
    record_window* w = get(win);
    if (!w) return;
    note("list_set", win).texts = list;
    w->list = list;
    w->index = list.empty() ? -1 : 0;
    w->text = list.empty() ? "" : list.front();
}

void record_port::list_select(port_win win, int index) {
    record_window* w = get(win);
    if (!w) return;
    note("list_select", win).style = index;
    if (index >= static_cast<int>(w->list.size())) return;
    w->index = std::max(index, -1);
    w->text = index >= 0 ? w->list[static_cast<std::size_t>(index)] : "";
}

int record_port::list_index(port_win win) {
    const record_window* w = get(win);
    if (!w) return 0;
    if (w->kind != port_kind::combo_edit) return w->index;
    // A typed text counts as the entry that reads the same, or as none.
    const auto it = std::find(w->list.begin(), w->list.end(), w->text);
    return it == w->list.end() ? -1 : static_cast<int>(it - w->list.begin());
}

void record_port::swatch_colour(port_win win, std::uint32_t rgb) {
    record_window* w = get(win);
    if (!w) return;
    note("swatch_colour", win).rgb = rgb;
    w->colour = rgb;
}

void record_port::mouse_free(port_win win, bool on) {
    record_window* w = get(win);
    if (!w) return;
    note("mouse_free", win).on = on;
    w->mouse_free = on;
}

void record_port::tooltip(port_win win, const std::string& text) {
    record_window* w = get(win);
    if (!w) return;
    note("tooltip", win).text = text;
    w->tooltip = text;
}

void record_port::menu_popup(port_win control, const std::vector<port_menu_entry>& entries) {
    if (!get(control)) return;
    note("menu_popup", control);
    menu = entries;
    menu_control = control;
}

} // namespace norva
