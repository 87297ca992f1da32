// The loop: run and quit, painting during long computations, and the telling of what became due.
#include "qt_port.h"

#include "draw_area.h"

#include <QApplication>
#include <QEventLoop>

namespace norva {

int qt_port::run() {
    if (!quit_asked_) {
        notice_if_due();
        QApplication::exec();
    }
    quit_asked_ = false;
    return quit_code_;
}

void qt_port::quit(int code) {
    quit_asked_ = true;
    quit_code_ = code;
    QApplication::exit(code);
}

// Painting, sizes and queued calls run in here, user input does not. What they make due waits for the end.
void qt_port::pump() {
    inside inner(*this);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void qt_port::busy(bool on) {
    if (on) {
        busy_++;
    } else if (busy_ > 0 && --busy_ == 0) {
        notice_if_due();
    }
}

void qt_port::later(std::function<void()> task) {
    if (!task) return;
    tasks_.push_back(std::move(task));
    notice();
}

void qt_port::notice() {
    if (posted_ || inside_ > 0) return; // the end of what runs now looks again
    posted_ = true;
    QMetaObject::invokeMethod(
        context_.get(), [this] { deliver(); }, Qt::QueuedConnection);
}

void qt_port::notice_if_due() {
    bool due = !tasks_.empty();
    for (const auto& [win, c] : controls_) {
        if (due) break;
        due = c.size_due || c.close_due ||
              (c.kind == port_kind::draw && static_cast<draw_area*>(c.widget)->notice_due());
    }
    if (due) notice();
}

void qt_port::deliver() {
    posted_ = false;
    if (inside_ > 0) return;
    // A handler may create and destroy windows: walk a copy of the numbers.
    std::vector<port_win> wins;
    for (const auto& [win, c] : controls_) wins.push_back(win);
    for (port_win win : wins) deliver_window(win);
    for (std::size_t n = tasks_.size(); n > 0 && !tasks_.empty(); n--) {
        const std::function<void()> task = std::move(tasks_.front());
        tasks_.pop_front();
        inside inner(*this);
        task();
    }
}

void qt_port::deliver_window(port_win win) {
    if (control* c = find(win); c && c->size_due && busy_ == 0) {
        c->size_due = false;
        tell([&](port_events&) { tell_size(win); });
    }
    if (control* c = find(win); c && c->close_due) {
        c->close_due = false;
        top_closed(win);
    }
    if (draw_area* area = area_of(win); area && busy_ == 0 && area->notice_due() && area->take_notice())
        tell([&](port_events& events) { events.on_paint(win); });
}

} // namespace norva
