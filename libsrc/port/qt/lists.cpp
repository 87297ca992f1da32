// Lists of choices and popup menus.
#include "qt_port.h"

#include "text.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QScreen>

namespace norva {

QWidget* qt_port::make_combo(QWidget* parent, port_kind kind, port_win win) {
    auto* combo = new QComboBox(parent);
    combo->setMaxVisibleItems(20);
    if (kind == port_kind::combo_edit) {
        combo->setEditable(true);
        combo->setInsertPolicy(QComboBox::NoInsert);
        combo->setCompleter(nullptr); // would put in text that no one typed
        combo->lineEdit()->setAcceptDrops(false);
        combo->lineEdit()->setContextMenuPolicy(Qt::NoContextMenu);
        combo->lineEdit()->setMaxLength(1 << 20);
    }
    combo->setAcceptDrops(false);
    combo->setContextMenuPolicy(Qt::NoContextMenu);
    // activated comes for the user's choices only, not for the program's own changes.
    QObject::connect(combo, &QComboBox::activated, context_.get(), [this, win](int index) {
        tell([&](port_events& events) { events.on_select(win, index); });
    });
    return combo;
}

QComboBox* qt_port::combo_of(control* c) {
    const bool is = c && (c->kind == port_kind::combo || c->kind == port_kind::combo_edit);
    return is ? static_cast<QComboBox*>(c->widget) : nullptr;
}

void qt_port::list_set(port_win win, const std::vector<std::string>& entries) {
    QComboBox* combo = combo_of(find(win));
    if (!combo) return;
    combo->clear();
    int widest = 0;
    for (const std::string& entry : entries) {
        const QString text = to_qt(entry);
        combo->addItem(text);
        widest = std::max(widest, combo->fontMetrics().horizontalAdvance(text));
    }
    combo->setCurrentIndex(entries.empty() ? -1 : 0);
    if (combo->lineEdit()) combo->lineEdit()->setCursorPosition(0);
    // The open list may be wider than the control, so that long entries can be told apart.
    combo->view()->setMinimumWidth(std::min(widest + 40, combo->screen()->availableGeometry().width() / 2));
}

void qt_port::list_select(port_win win, int index) {
    QComboBox* combo = combo_of(find(win));
    if (!combo || index >= combo->count()) return;
    combo->setCurrentIndex(std::max(index, -1));
    if (combo->lineEdit()) combo->lineEdit()->setCursorPosition(0);
}

// A text typed into an editable list counts as the entry that reads the same, or as none.
int qt_port::list_index(port_win win) {
    QComboBox* combo = combo_of(find(win));
    if (!combo) return 0;
    const int index = combo->currentIndex();
    if (!combo->isEditable() || (index >= 0 && combo->itemText(index) == combo->currentText())) return index;
    return combo->findText(combo->currentText(), Qt::MatchExactly | Qt::MatchCaseSensitive);
}

static void fill_menu(QMenu* menu, const std::vector<port_menu_entry>& entries) {
    for (const port_menu_entry& entry : entries) {
        if (entry.text.empty()) {
            menu->addSeparator();
            continue;
        }
        const QString text = plain_mnemonics(entry.text);
        if (!entry.submenu.empty()) {
            QMenu* below = menu->addMenu(text);
            below->setEnabled(entry.enabled);
            fill_menu(below, entry.submenu);
            continue;
        }
        QAction* action = menu->addAction(text);
        action->setData(entry.id);
        action->setCheckable(entry.checkable || entry.checked);
        action->setChecked(entry.checked);
        action->setEnabled(entry.enabled);
    }
}

void qt_port::menu_popup(port_win win, const std::vector<port_menu_entry>& entries) {
    QWidget* control_widget = widget_of(win);
    if (!control_widget) return;
    auto* menu = new QMenu(control_widget);
    fill_menu(menu, entries);
    QObject::connect(menu, &QMenu::triggered, context_.get(), [this](QAction* action) {
        const int id = action->data().toInt();
        later([this, id] {
            if (events_) events_->on_menu(id);
        });
    });
    QObject::connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);
    menu->popup(control_widget->mapToGlobal(QPoint(0, control_widget->height())));
}

} // namespace norva
