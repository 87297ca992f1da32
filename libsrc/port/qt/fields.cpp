// Fields and text pages: creation, and the filter for every way in which characters can come in.
#include "qt_port.h"

#include "text.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace norva {

QWidget* qt_port::make_field(QWidget* parent) {
    auto* field = new QLineEdit(parent);
    field->setAcceptDrops(false);
    field->setContextMenuPolicy(Qt::NoContextMenu); // the right button asks for help
    field->setMaxLength(1 << 20);
    return field;
}

QWidget* qt_port::make_text_page(QWidget* parent) {
    auto* page = new QPlainTextEdit(parent);
    QFont font(QStringLiteral("DejaVu Sans Mono"), 9);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    page->setFont(font);
    page->setLineWrapMode(QPlainTextEdit::NoWrap);
    page->setContextMenuPolicy(Qt::NoContextMenu);
    page->setAcceptDrops(false);
    page->setReadOnly(true);
    return page;
}

// The line that holds the text of a field or an editable list.
QLineEdit* qt_port::line_of(const control& c) {
    switch (c.kind) {
    case port_kind::field: return static_cast<QLineEdit*>(c.widget);
    case port_kind::combo_edit: return static_cast<QComboBox*>(c.widget)->lineEdit();
    default: return nullptr;
    }
}

// A field that cannot be written to looks like the window behind it.
static void show_read_only(QWidget* w, bool on) {
    QPalette palette = w->palette();
    const QPalette usual = QApplication::palette();
    palette.setColor(QPalette::Active, QPalette::Base,
                     usual.color(QPalette::Active, on ? QPalette::Window : QPalette::Base));
    palette.setColor(QPalette::Inactive, QPalette::Base,
                     usual.color(QPalette::Inactive, on ? QPalette::Window : QPalette::Base));
    w->setPalette(palette);
}

void qt_port::read_only(port_win win, bool on) {
    control* c = find(win);
    if (!c) return;
    if (QLineEdit* line = line_of(*c)) {
        line->setReadOnly(on);
        show_read_only(line, on);
    } else if (c->kind == port_kind::page) {
        static_cast<QPlainTextEdit*>(c->widget)->setReadOnly(on);
    }
}

bool qt_port::takes_text(const control& c) const {
    const QLineEdit* line = line_of(c);
    return line && !line->isReadOnly() && line->isEnabled();
}

// The characters that the program lets into the field, one by one in their order.
QString qt_port::kept_characters(port_win win, const QString& typed) {
    QString kept;
    for (const char32_t ch : typed.toUcs4()) {
        if (ch < 0x20 || ch == 0x7f) continue;
        bool keep = false;
        tell([&](port_events& events) { keep = events.on_char(win, ch); });
        if (keep) kept += QString::fromUcs4(&ch, 1);
    }
    return kept;
}

void qt_port::paste(port_win win) {
    // One line, as the field has one; line ends and tabs inside count as blanks.
    const QString kept = kept_characters(win, QApplication::clipboard()->text().simplified());
    const control* c = find(win);
    if (c && !kept.isEmpty()) line_of(*c)->insert(kept);
}

} // namespace norva
