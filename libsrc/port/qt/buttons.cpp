// Push buttons, toggles, swatches and up-down buttons.
#include "buttons.h"

#include "qt_port.h"
#include "text.h"

#include <QApplication>
#include <QPainter>
#include <QToolButton>

namespace norva {

toggle_button::toggle_button(QWidget* parent) : QPushButton(parent) {
    setCheckable(true);
}

void toggle_button::set_pressed_in(bool on) {
    setChecked(on);
    QPalette palette = QApplication::palette();
    if (on) {
        for (auto group : {QPalette::Active, QPalette::Inactive}) {
            palette.setColor(group, QPalette::Button, QColor(48, 104, 176));
            palette.setColor(group, QPalette::ButtonText, Qt::white);
        }
        palette.setColor(QPalette::Disabled, QPalette::Button, QColor(178, 192, 210));
        palette.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(110, 118, 128));
    }
    setPalette(palette);
}

swatch_button::swatch_button(QWidget* parent) : QAbstractButton(parent), colour_(Qt::white) {
    setFocusPolicy(Qt::StrongFocus);
}

void swatch_button::set_colour(const QColor& colour) {
    colour_ = colour;
    picture_ = {};
    update();
}

void swatch_button::set_picture(const QImage& picture) {
    picture_ = picture;
    update();
}

void swatch_button::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect inner = rect().adjusted(1, 1, -1, -1);
    painter.fillRect(rect(), palette().color(hasFocus() ? QPalette::Highlight : QPalette::Dark));
    painter.fillRect(inner, palette().window());
    if (!isEnabled()) painter.setOpacity(0.35);
    if (picture_.isNull()) {
        painter.fillRect(inner.adjusted(1, 1, -1, -1), colour_);
    } else {
        painter.drawImage(inner.adjusted(1, 1, -1, -1), picture_);
    }
}

namespace {

// Side by side in a wide place, one above the other in a narrow one; up is right or above.
class up_down_pair final : public QWidget {
public:
    explicit up_down_pair(QWidget* parent) : QWidget(parent) {
        for (QToolButton* button : {&up, &down}) {
            button->setFocusPolicy(Qt::NoFocus);
            button->setAutoRepeat(true);
            button->setAutoRepeatDelay(400);
            button->setAutoRepeatInterval(80);
        }
        up.setArrowType(Qt::UpArrow);
        down.setArrowType(Qt::DownArrow);
    }
    QToolButton up{this}, down{this};

protected:
    void resizeEvent(QResizeEvent*) override {
        if (width() * 10 >= height() * 14) {
            down.setGeometry(0, 0, width() / 2, height());
            up.setGeometry(width() / 2, 0, width() - width() / 2, height());
        } else {
            up.setGeometry(0, 0, width(), height() / 2);
            down.setGeometry(0, height() / 2, width(), height() - height() / 2);
        }
    }
};

} // namespace

QWidget* qt_port::make_button(QWidget* parent, port_kind kind, port_win win) {
    if (kind == port_kind::up_down) {
        auto* pair = new up_down_pair(parent);
        for (const bool up : {true, false})
            QObject::connect(
                up ? &pair->up : &pair->down, &QAbstractButton::clicked, context_.get(),
                [this, win, up] { tell([&](port_events& events) { events.on_command_part(win, up); }); });
        return pair;
    }
    QAbstractButton* button = nullptr;
    if (kind == port_kind::toggle) {
        button = new toggle_button(parent);
    } else if (kind == port_kind::swatch) {
        button = new swatch_button(parent);
    } else {
        button = new QPushButton(parent);
    }
    QObject::connect(button, &QAbstractButton::clicked, context_.get(),
                     [this, win] { tell([&](port_events& events) { events.on_command(win); }); });
    return button;
}

void qt_port::set_check(port_win win, bool on) {
    if (control* c = find(win, port_kind::toggle)) static_cast<toggle_button*>(c->widget)->set_pressed_in(on);
}

bool qt_port::get_check(port_win win) {
    const control* c = find(win, port_kind::toggle);
    return c && static_cast<toggle_button*>(c->widget)->isChecked();
}

void qt_port::swatch_colour(port_win win, std::uint32_t rgb) {
    if (control* c = find(win, port_kind::swatch))
        static_cast<swatch_button*>(c->widget)->set_colour(to_colour(rgb));
}

} // namespace norva
