// Keys and mouse of the controls. One filter on the application sees every event before its widget does, and
// climbs from the widget to the control that it belongs to: the inner parts of lists and pages get events
// of their own.
#include "qt_port.h"

#include <QAbstractButton>
#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>

namespace norva {

class event_filter final : public QObject {
public:
    explicit event_filter(qt_port& port) : port_(port) {}

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override {
        switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonRelease:
        case QEvent::Wheel:
        case QEvent::InputMethod: break;
        default: return false;
        }
        return receiver->isWidgetType() && port_.filter(static_cast<QWidget&>(*receiver), *event);
    }

private:
    qt_port& port_;
};

std::unique_ptr<QObject> make_event_filter(qt_port& port) {
    return std::make_unique<event_filter>(port);
}

// 0 for dialogs, and for the open lists and menus of controls: those have windows of their own.
port_win qt_port::owner_of(const QWidget& receiver) const {
    for (const QWidget* w = &receiver; w; w = w->parentWidget()) {
        const auto it = by_widget_.find(w);
        if (it != by_widget_.end()) return it->second;
        if (w->isWindow()) return 0;
    }
    return 0;
}

bool qt_port::filter(QWidget& receiver, QEvent& event) {
    const port_win win = owner_of(receiver);
    const control* c = find(win);
    if (!c) return false;
    switch (event.type()) {
    case QEvent::KeyPress: return key_press(win, receiver, static_cast<QKeyEvent&>(event));
    case QEvent::Wheel: return combo_of(find(win)) != nullptr; // would change the choice without a click
    case QEvent::InputMethod: {
        auto& input = static_cast<QInputMethodEvent&>(event);
        if (!input.commitString().isEmpty() && takes_text(*c))
            input.setCommitString(kept_characters(win, input.commitString()), input.replacementStart(),
                                  input.replacementLength());
        return false;
    }
    default: return mouse_event(win, static_cast<QMouseEvent&>(event));
    }
}

// On controls the right button asks for help, and the middle button must not paste past the filter.
bool qt_port::mouse_event(port_win win, QMouseEvent& mouse) {
    const port_kind kind = find(win)->kind;
    if (kind == port_kind::draw || kind == port_kind::top) return false;
    if (mouse.button() == Qt::MiddleButton) return true;
    if (mouse.button() != Qt::RightButton) return false;
    if (mouse.type() == QEvent::MouseButtonRelease) tell([&](port_events& events) { events.on_help(win); });
    return true;
}

static bool is_button(port_kind kind) {
    return kind == port_kind::button || kind == port_kind::toggle || kind == port_kind::swatch;
}

bool qt_port::key_press(port_win win, QWidget& receiver, QKeyEvent& key) {
    const control c = *find(win);
    // A key that a control left over is sent on to its window: it was told already.
    const QWidget* focused = QApplication::focusWidget();
    if (c.kind == port_kind::top && focused && focused != c.widget && focused->window() == c.widget)
        return false;
    const auto modifiers = key.modifiers() & ~Qt::KeypadModifier;
    const bool plain = modifiers == Qt::NoModifier;

    if (key.key() == Qt::Key_F1) {
        tell([&](port_events& events) { events.on_help(win); });
        return true;
    }
    if (c.kind != port_kind::top && (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab)) {
        tabbing_ = true;
        const bool back = key.key() == Qt::Key_Backtab || (modifiers & Qt::ShiftModifier);
        tell([&](port_events& events) { events.on_tab(win, back); });
        tabbing_ = false;
        return true;
    }
    const bool texty = line_of(c) || c.kind == port_kind::page;
    if (modifiers == Qt::ControlModifier && key.key() >= Qt::Key_A && key.key() <= Qt::Key_Z) {
        const char letter = static_cast<char>('A' + (key.key() - Qt::Key_A));
        const bool editing = texty && (letter == 'A' || letter == 'C' || letter == 'V' || letter == 'X');
        bool taken = false;
        if (!editing) tell([&](port_events& events) { taken = events.on_shortcut(c.top, letter); });
        if (taken || !find(win)) return true;
    }
    if (line_of(c)) return field_key(win, key);
    if (is_button(c.kind)) {
        switch (key.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (plain && receiver.isEnabled() && !key.isAutoRepeat())
                static_cast<QAbstractButton*>(c.widget)->click();
            return true;
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down: return true; // Qt would move the focus in an order of its own
        default: break;
        }
    }
    return false;
}

bool qt_port::field_key(port_win win, QKeyEvent& key) {
    const control& c = *find(win);
    if (!c.widget->isEnabled()) return false;
    if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
        tell([&](port_events& events) { events.on_return(win); });
        return true;
    }
    if (!takes_text(c)) return false;
    if (key.matches(QKeySequence::Paste)) {
        paste(win);
        return true;
    }
    const QString typed = key.text();
    // Backspace, Delete and the editing commands carry control characters or none, and pass.
    if (typed.isEmpty() || !typed.at(0).isPrint()) return false;
    const QString kept = kept_characters(win, typed);
    if (kept == typed) return false;
    const control* still = find(win);
    if (still && !kept.isEmpty()) line_of(*still)->insert(kept);
    return true;
}

} // namespace norva
