// Windows of every kind: create and destroy, place, show, enable, text.
#include "qt_port.h"

#include "draw_area.h"
#include "text.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QWindow>

namespace norva {

namespace {

class top_window final : public QWidget {
public:
    top_window(qt_port& port, port_win win) : port_(port), win_(win) {}

protected:
    void resizeEvent(QResizeEvent*) override { port_.top_resized(win_); }
    void closeEvent(QCloseEvent* event) override {
        event->ignore(); // the program decides; Qt closes nothing
        port_.top_closed(win_);
    }

private:
    qt_port& port_;
    port_win win_;
};

QLabel* make_label(QWidget* parent, int style) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    const Qt::Alignment across[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight, Qt::AlignLeft};
    label->setAlignment(across[style & 3] | Qt::AlignVCenter);
    label->setContentsMargins(1, 0, 6, 0); // labels stand right before fields
    if (style & label_heading) {
        QFont font = label->font();
        font.setPointSizeF(font.pointSizeF() * 1.25);
        font.setBold(true);
        label->setFont(font);
    }
    return label;
}

QFrame* make_frame(QWidget* parent) {
    auto* frame = new QFrame(parent);
    frame->setFrameStyle(QFrame::Box | QFrame::Sunken);
    frame->setAttribute(Qt::WA_TransparentForMouseEvents); // it may cover controls made before it
    return frame;
}

} // namespace

control* qt_port::find(port_win win) {
    const auto it = controls_.find(win);
    return it == controls_.end() ? nullptr : &it->second;
}

control* qt_port::find(port_win win, port_kind kind) {
    control* c = find(win);
    return c && c->kind == kind ? c : nullptr;
}

QWidget* qt_port::widget_of(port_win win) {
    const control* c = find(win);
    return c ? c->widget : nullptr;
}

// Device pixels per Qt length. 1 unless the user set a scale factor of his own.
double qt_port::ratio() const {
    return app_->devicePixelRatio();
}

port_win qt_port::create(port_kind kind, port_win parent, int style, const std::string& text) {
    QWidget* above = nullptr;
    control c;
    const port_win win = last_win_ + 1;
    if (kind == port_kind::top) {
        c.top = win;
    } else {
        const control* p = find(parent);
        if (!p) return 0;
        c.top = p->top; // controls are siblings below their window
        above = widget_of(c.top);
    }
    c.kind = kind;
    c.style = style;
    c.text = text;
    switch (kind) {
    case port_kind::top: c.widget = new top_window(*this, win); break;
    case port_kind::label: c.widget = make_label(above, style); break;
    case port_kind::field: c.widget = make_field(above); break;
    case port_kind::button:
    case port_kind::toggle:
    case port_kind::swatch:
    case port_kind::up_down: c.widget = make_button(above, kind, win); break;
    case port_kind::combo:
    case port_kind::combo_edit: c.widget = make_combo(above, kind, win); break;
    case port_kind::page: c.widget = make_text_page(above); break;
    case port_kind::frame: c.widget = make_frame(above); break;
    case port_kind::draw: c.widget = new draw_area(above, *this, win); break;
    }
    if (!c.widget) return 0;
    last_win_ = win;
    c.shown = kind != port_kind::top;
    control& stored = controls_.emplace(win, std::move(c)).first->second;
    by_widget_.emplace(stored.widget, win);
    if (kind == port_kind::top) {
        stored.widget->setWindowTitle(to_qt(text));
    } else {
        stored.widget->setGeometry(0, 0, 0, 0);
        if (!text.empty()) show_text(stored);
        stored.widget->show(); // of no effect before the window itself is shown
        if (kind == port_kind::frame) stored.widget->lower();
    }
    return win;
}

void qt_port::destroy(port_win win) {
    control* c = find(win);
    if (!c) return;
    std::vector<port_win> gone{win};
    if (c->kind == port_kind::top)
        for (const auto& [child, record] : controls_)
            if (record.top == win && child != win) gone.push_back(child);
    QWidget* widget = c->widget;
    for (port_win w : gone) {
        if (draw_area* area = area_of(w)) area->dc.end();
        by_widget_.erase(widget_of(w));
        controls_.erase(w);
    }
    widget->hide();
    widget->deleteLater();
}

static QSize to_lengths(port_rect r, double ratio) {
    return {std::max(0, scaled(r.w, 1 / ratio)), std::max(0, scaled(r.h, 1 / ratio))};
}

void qt_port::move(port_win win, port_rect to) {
    control* c = find(win);
    if (!c) return;
    to.w = std::clamp(to.w, 0, 1 << 15);
    to.h = std::clamp(to.h, 0, 1 << 15);
    to.x = std::clamp(to.x, -(1 << 15), 1 << 15);
    to.y = std::clamp(to.y, -(1 << 15), 1 << 15);
    const QSize size = to_lengths(to, ratio());
    const QPoint corner(scaled(to.x, 1 / ratio()), scaled(to.y, 1 / ratio()));
    if (c->kind != port_kind::top) {
        c->place = to;
        c->widget->setGeometry(QRect(corner, size));
        show_text(*c);
        return;
    }
    // The place that the window has already is left to the window manager.
    const port_rect now = window_rect(win);
    if (to.x != now.x || to.y != now.y) c->widget->move(corner);
    c->widget->setMinimumSize(size.boundedTo({200, 120})); // the user's own limit
    c->widget->resize(size);
    if (c->shown) fit_to_screen(win);
    tell_size(win);
}

static bool offscreen() {
    return QGuiApplication::platformName() == QLatin1String("offscreen");
}

// A window larger than the screen would have parts that nobody can reach.
void qt_port::fit_to_screen(port_win win) {
    QWidget* w = widget_of(win);
    const QRect room = w->screen()->availableGeometry();
    QSize edges = w->frameGeometry().size() - w->size();
    // Before the window manager has put its frame around the window, leave room for a usual one.
    if (edges.isNull() && !offscreen()) edges = {8, 34};
    w->resize(w->size().boundedTo(room.size() - edges));
    if (!w->testAttribute(Qt::WA_Moved)) return;
    const QPoint last(room.right() + 1 - w->width() - edges.width(),
                      room.bottom() + 1 - w->height() - edges.height());
    const QPoint at(std::max(room.left(), std::min(w->x(), last.x())),
                    std::max(room.top(), std::min(w->y(), last.y())));
    if (at != w->pos()) w->move(at);
}

// Tells on_size unless the program knows the size. Called for the program's own move also inside a handler:
// its layout must stand when the call returns.
void qt_port::tell_size(port_win win) {
    const port_rect r = client_rect(win);
    control* c = find(win);
    if (!c || port_size{r.w, r.h} == c->told) return;
    c->told = {r.w, r.h};
    if (!events_) return;
    inside inner(*this);
    events_->on_size(win, r.w, r.h);
}

void qt_port::top_resized(port_win win) {
    const port_rect r = client_rect(win);
    control* c = find(win);
    if (!c || port_size{r.w, r.h} == c->told) return; // Qt's own, later word of a size told already
    c->size_due = true;
    notice();
}

void qt_port::top_closed(port_win win) {
    control* c = find(win);
    if (!c || !events_) return;
    if (inside_ > 0) {
        c->close_due = true;
        return;
    }
    tell([&](port_events& events) {
        if (events.on_close(win)) destroy(win);
    });
}

port_rect qt_port::client_rect(port_win win) {
    const control* c = find(win);
    if (!c) return {};
    if (draw_area* area = area_of(win)) {
        const port_size picture = area->picture_size();
        if (picture != port_size{}) return {0, 0, picture.w, picture.h};
    }
    return {0, 0, scaled(c->widget->width(), ratio()), scaled(c->widget->height(), ratio())};
}

port_rect qt_port::window_rect(port_win win) {
    const control* c = find(win);
    if (!c) return {};
    if (c->kind != port_kind::top) return c->place;
    const QPoint at = c->widget->pos();
    const port_rect size = client_rect(win);
    return {scaled(at.x(), ratio()), scaled(at.y(), ratio()), size.w, size.h};
}

// Tells the window manager that `small` belongs to the window the user is working in.
static void stay_above_active(QWidget* small) {
    QWidget* active = QApplication::activeWindow();
    if (!active || active == small) return;
    small->winId(); // makes the window handle
    active->winId();
    small->windowHandle()->setTransientParent(active->windowHandle());
}

void qt_port::show(port_win win, bool on) {
    control* c = find(win);
    if (!c) return;
    c->shown = on;
    if (on && c->kind == port_kind::top && !c->widget->isVisible()) {
        fit_to_screen(win);
        tell_size(win);
        c = find(win);
        if (!c) return;
    }
    if (on && c->above) stay_above_active(c->widget);
    c->widget->setVisible(on);
}

void qt_port::keep_above(port_win win) {
    control* c = find(win, port_kind::top);
    if (!c) return;
    c->above = true;
    c->widget->setWindowFlag(Qt::Dialog); // only dialogs are told to window managers as belonging to another
}

bool qt_port::shown(port_win win) {
    const control* c = find(win);
    return c && c->shown;
}

void qt_port::raise(port_win win) {
    const control* c = find(win, port_kind::top);
    if (!c) return;
    if (c->widget->isMinimized()) c->widget->setWindowState(c->widget->windowState() & ~Qt::WindowMinimized);
    if (!offscreen()) c->widget->raise(); // offscreen there is no order, and a complaint at each call
    c->widget->activateWindow();
}

void qt_port::focus(port_win win) {
    // By the tab key a field selects its text, so that typing replaces it.
    if (QWidget* w = widget_of(win)) w->setFocus(tabbing_ ? Qt::TabFocusReason : Qt::OtherFocusReason);
}

void qt_port::enable(port_win win, bool on) {
    if (QWidget* w = widget_of(win)) w->setEnabled(on);
}

void qt_port::tooltip(port_win win, const std::string& text) {
    QWidget* w = widget_of(win);
    if (!w) return;
    if (text.empty()) {
        w->setToolTip({});
        return;
    }
    // Marked as rich text, or Qt would guess; lines are broken only where they get too long to read.
    const QString plain = to_qt(text);
    bool wide = false;
    for (const QString& line : plain.split(QLatin1Char('\n'))) wide = wide || line.size() > 80;
    w->setToolTip(QStringLiteral("<div style='white-space:%1'>%2</div>")
                      .arg(wide ? QStringLiteral("pre-wrap") : QStringLiteral("pre"), plain.toHtmlEscaped()));
}

void qt_port::set_text(port_win win, const std::string& text) {
    control* c = find(win);
    if (!c) return;
    switch (c->kind) {
    case port_kind::top: c->widget->setWindowTitle(to_qt(text)); break;
    case port_kind::field:
    case port_kind::combo_edit: {
        QLineEdit* line = line_of(*c);
        const QString wanted = to_qt(text);
        if (line->text() == wanted) return; // keeps the cursor and the selection
        line->setText(wanted);
        if (!line->hasFocus()) line->setCursorPosition(0);
        return;
    }
    case port_kind::combo: {
        const int index = combo_of(c)->findText(to_qt(text), Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (index >= 0) combo_of(c)->setCurrentIndex(index);
        return;
    }
    case port_kind::page: {
        auto* page = static_cast<QPlainTextEdit*>(c->widget);
        if (page->toPlainText() != to_qt(text)) page->setPlainText(to_qt(text));
        return;
    }
    default: break;
    }
    c->text = text;
    show_text(*c);
}

std::string qt_port::get_text(port_win win) {
    control* c = find(win);
    if (!c) return {};
    switch (c->kind) {
    case port_kind::field:
    case port_kind::combo_edit: return from_qt(line_of(*c)->text());
    case port_kind::combo: return from_qt(combo_of(c)->currentText());
    case port_kind::page: return from_qt(static_cast<QPlainTextEdit*>(c->widget)->toPlainText());
    default: return c->text;
    }
}

// Breaks a text between words into lines no wider than `width`; empty when it takes more than `rows` lines.
static QStringList wrapped(const QString& text, const QFontMetrics& metrics, int width, int rows) {
    QStringList lines;
    for (const QString& given : text.split(QLatin1Char('\n'))) {
        lines << QString();
        for (const QString& word : given.split(QLatin1Char(' '))) {
            QString& line = lines.back();
            const QString longer = line.isEmpty() ? word : line + QLatin1Char(' ') + word;
            if (metrics.horizontalAdvance(longer) <= width) {
                line = longer;
            } else if (line.isEmpty() || metrics.horizontalAdvance(word) > width) {
                return {};
            } else {
                lines << word;
            }
        }
        if (lines.size() > rows) return {};
    }
    return lines;
}

// Makes a text fit its place: the plain font when it does; else in more lines where the place is high enough,
// or in narrower letters down to a readable limit; else cut, with dots.
static QString fitted(QFont& font, const QString& text, QSize place) {
    font.setStretch(QFont::Unstretched);
    const QSize needed = QFontMetrics(font).size(0, text);
    if (needed.width() <= place.width() || place.width() <= 0) return text;
    const int rows = std::max(1, place.height() / QFontMetrics(font).lineSpacing());
    for (int stretch = 100; stretch >= 65; stretch -= 5) {
        font.setStretch(stretch);
        const QStringList lines = wrapped(text, QFontMetrics(font), place.width(), rows);
        if (!lines.isEmpty()) return lines.join(QLatin1Char('\n'));
    }
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines) line = QFontMetrics(font).elidedText(line, Qt::ElideRight, place.width());
    return lines.join(QLatin1Char('\n'));
}

void qt_port::show_text(control& c) {
    const QString text = to_qt(c.text);
    switch (c.kind) {
    case port_kind::label: {
        auto* label = static_cast<QLabel*>(c.widget);
        QFont font = label->font();
        const QString shown = fitted(font, text, label->contentsRect().size());
        label->setFont(font);
        label->setText(shown);
        break;
    }
    case port_kind::button:
    case port_kind::toggle: {
        auto* button = static_cast<QPushButton*>(c.widget);
        QFont font = button->font();
        const QString shown = fitted(font, text, button->size() - QSize(8, 6));
        button->setFont(font);
        button->setText(plain_mnemonics(from_qt(shown)));
        break;
    }
    case port_kind::field: {
        auto* line = static_cast<QLineEdit*>(c.widget);
        if (!c.text.empty() && line->text().isEmpty()) line->setText(text);
        c.text.clear();
        break;
    }
    case port_kind::combo_edit:
        if (!c.text.empty()) combo_of(&c)->setEditText(text);
        c.text.clear();
        break;
    case port_kind::page:
        if (!c.text.empty()) static_cast<QPlainTextEdit*>(c.widget)->setPlainText(text);
        c.text.clear();
        break;
    default: break;
    }
}

} // namespace norva
