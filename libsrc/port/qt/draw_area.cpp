// Draw areas: notices, mouse, and the drawing calls on areas and pages.
#include "draw_area.h"

#include "buttons.h"
#include "qt_port.h"
#include "text.h"

#include <QMouseEvent>
#include <QPainter>

#include <array>

namespace norva {

draw_area::draw_area(QWidget* parent, qt_port& port, port_win win) : QWidget(parent), port_(port), win_(win) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::ClickFocus);
}

port_size draw_area::widget_size() const {
    return {scaled(width(), devicePixelRatioF()), scaled(height(), devicePixelRatioF())};
}

bool draw_area::take_notice() {
    const port_size size = widget_size();
    if (!isVisible() || size.w <= 0 || size.h <= 0) return false; // stays due
    const bool renew = size != picture_size();
    const bool told = asked || renew;
    asked = resized = false;
    if (renew) {
        dc.end();
        image_ = QImage(size.w, size.h, QImage::Format_RGB32);
        if (image_.isNull()) return false;
        image_.fill(Qt::white);
        dc.begin(&image_, false, 1);
        touch();
    }
    return told;
}

void draw_area::touch() {
    if (dirty_) return;
    dirty_ = true;
    update();
}

// Copies and nothing else: drawing from here, or asking the program to draw, would never come to rest.
void draw_area::paintEvent(QPaintEvent*) {
    dirty_ = false;
    QPainter painter(this);
    if (picture_size() != widget_size()) painter.fillRect(rect(), Qt::white);
    if (image_.isNull()) return;
    // A view with the pixel ratio set; on the image itself the ratio would scale the drawing.
    QImage view(image_.constBits(), image_.width(), image_.height(), image_.bytesPerLine(), image_.format());
    view.setDevicePixelRatio(devicePixelRatioF());
    painter.drawImage(QPoint(0, 0), view);
}

void draw_area::resizeEvent(QResizeEvent*) {
    resized = true;
    port_.notice();
}

void draw_area::showEvent(QShowEvent*) {
    if (notice_due()) port_.notice();
}

static constexpr std::array<Qt::MouseButton, 3> buttons = {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton};

static int button_number(Qt::MouseButton button) {
    for (int i = 0; i < 3; i++)
        if (buttons[static_cast<std::size_t>(i)] == button) return i;
    return -1;
}

void draw_area::tell_mouse(port_mouse kind, QMouseEvent* event, int button) {
    const double ratio = devicePixelRatioF();
    const int x = static_cast<int>(std::floor(event->position().x() * ratio));
    const int y = static_cast<int>(std::floor(event->position().y() * ratio));
    port_.tell([&](port_events& events) { events.on_mouse(win_, kind, x, y, button); });
}

// A release can go to a dialog that opened while the button was held. The program must not wait for it.
void draw_area::release_stale(QMouseEvent* event) {
    for (int i = 0; i < 3; i++) {
        const Qt::MouseButton button = buttons[static_cast<std::size_t>(i)];
        if (!(held_ & (1u << i)) || (event->buttons() & button) || event->button() == button) continue;
        held_ &= ~(1u << i);
        tell_mouse(port_mouse::up, event, i);
    }
}

void draw_area::press(QMouseEvent* event) {
    release_stale(event);
    const int button = button_number(event->button());
    if (button < 0) return;
    if (held_ & (1u << button)) tell_mouse(port_mouse::up, event, button);
    held_ |= 1u << button;
    current_ = button;
    tell_mouse(port_mouse::down, event, button);
}

void draw_area::mousePressEvent(QMouseEvent* event) {
    press(event);
}

void draw_area::mouseDoubleClickEvent(QMouseEvent* event) {
    press(event);
}

void draw_area::mouseReleaseEvent(QMouseEvent* event) {
    release_stale(event);
    const int button = button_number(event->button());
    if (button < 0 || !(held_ & (1u << button))) return;
    held_ &= ~(1u << button);
    tell_mouse(port_mouse::up, event, button);
}

void draw_area::mouseMoveEvent(QMouseEvent* event) {
    release_stale(event);
    if (held_ == 0) {
        if (hasMouseTracking()) tell_mouse(port_mouse::free_move, event, 0);
        return;
    }
    if (!(held_ & (1u << current_)))
        for (int i = 0; i < 3; i++)
            if (held_ & (1u << i)) current_ = i;
    tell_mouse(port_mouse::drag, event, current_);
}

// --- The port's drawing calls

draw_area* qt_port::area_of(port_win win) {
    control* c = find(win, port_kind::draw);
    return c ? static_cast<draw_area*>(c->widget) : nullptr;
}

void qt_port::mouse_free(port_win win, bool on) {
    if (draw_area* area = area_of(win)) area->setMouseTracking(on);
}

void qt_port::request_paint(port_win win) {
    if (draw_area* area = area_of(win)) {
        area->asked = true;
        notice();
    }
}

void qt_port::pen(port_win dc, std::uint32_t rgb, int style, int width) {
    if (canvas* c = target(dc)) c->pen(rgb, style, width);
}

void qt_port::rop(port_win dc, port_rop mode) {
    if (canvas* c = target(dc)) c->rop(mode);
}

void qt_port::move_to(port_win dc, port_point to) {
    if (canvas* c = target(dc)) c->move_to(to);
}

// Marks the area as changed when marks are made on it.
static canvas* touched(canvas* c, draw_area* area) {
    if (c && c->active() && area) area->touch();
    return c;
}

void qt_port::polyline_to(port_win dc, std::span<const port_point> points) {
    if (canvas* c = touched(target(dc), area_of(dc))) c->polyline_to(points);
}

void qt_port::fill(port_win dc, port_rect area, std::uint32_t rgb) {
    if (canvas* c = touched(target(dc), area_of(dc))) c->fill(area, rgb);
}

void qt_port::erase(port_win dc, port_rect area) {
    fill(dc, area, 0xffffff);
}

void qt_port::image(port_win dc, port_rect area, std::span<const std::uint32_t> rgb, int w, int h) {
    if (control* c = find(dc, port_kind::swatch)) {
        static_cast<swatch_button*>(c->widget)->set_picture(to_qimage(rgb, w, h));
    } else if (canvas* on = touched(target(dc), area_of(dc))) {
        on->image(area, to_qimage(rgb, w, h));
    }
}

} // namespace norva
