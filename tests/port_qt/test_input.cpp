// Mouse and keys: draw areas, fields, buttons, lists, menus.
#include "fixture.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QWheelEvent>

namespace norva::test {

class input : public port_test {};

// Counts what reaches a widget behind the port's own filter.
class mouse_counter : public QObject {
public:
    int count = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease;
        return false;
    }
};

TEST_F(input, mouse_on_a_draw_area) {
    const port_win area = make(port_kind::draw, {5, 7, 200, 150});
    show_all();
    QWidget* w = widget(area);
    const auto left = Qt::LeftButton, right = Qt::RightButton;
    mouse(w, QEvent::MouseMove, {1, 1}, Qt::NoButton, {});
    EXPECT_EQ(events.take(), lines{}); // free moves were not asked for
    p().mouse_free(area, true);
    mouse(w, QEvent::MouseMove, {1, 1}, Qt::NoButton, {});
    mouse(w, QEvent::MouseButtonPress, {10, 11}, left, left);
    mouse(w, QEvent::MouseMove, {-30, 900}, Qt::NoButton, left);
    mouse(w, QEvent::MouseButtonPress, {12, 13}, right, left | right);
    mouse(w, QEvent::MouseMove, {14, 15}, Qt::NoButton, left | right);
    mouse(w, QEvent::MouseButtonRelease, {16, 17}, right, left);
    mouse(w, QEvent::MouseMove, {18, 19}, Qt::NoButton, left);
    mouse(w, QEvent::MouseButtonRelease, {20, 21}, left, {});
    EXPECT_EQ(events.take(), (lines{"free 2 1 1 0", "down 2 10 11 0", "drag 2 -30 900 0", "down 2 12 13 2",
                                    "drag 2 14 15 2", "up 2 16 17 2", "drag 2 18 19 0", "up 2 20 21 0"}));
    // The second click of a double click is a press like any other.
    mouse(w, QEvent::MouseButtonDblClick, {5, 5}, Qt::MiddleButton, Qt::MiddleButton);
    mouse(w, QEvent::MouseButtonRelease, {5, 5}, Qt::MiddleButton, {});
    EXPECT_EQ(events.take(), (lines{"down 2 5 5 1", "up 2 5 5 1"}));
    // A release that went to a dialog is made up for.
    mouse(w, QEvent::MouseButtonPress, {1, 2}, left, left);
    mouse(w, QEvent::MouseMove, {3, 4}, Qt::NoButton, {});
    EXPECT_EQ(events.take(), (lines{"down 2 1 2 0", "up 2 3 4 0", "free 2 3 4 0"}));
}

TEST_F(input, every_way_into_a_field_is_filtered) {
    events.keep = [](char32_t ch) { return (ch >= '0' && ch <= '9') || ch == '.' || ch == 0xe9; };
    const port_win field = make(port_kind::field, {5, 5, 100, 21});
    const port_win list = make(port_kind::combo_edit, {5, 30, 100, 21});
    p().list_set(list, {"10", "20"});
    show_all();
    for (port_win win : {field, list}) {
        p().set_text(win, "");
        p().focus(win);
        QWidget* w = widget(win);
        auto* line = win == field ? qobject_cast<QLineEdit*>(w) : qobject_cast<QComboBox*>(w)->lineEdit();
        type(win, "1a2x.");
        EXPECT_EQ(p().get_text(win), "12.");
        key(win, Qt::Key_Backspace, {}, "\b");
        EXPECT_EQ(p().get_text(win), "12");
        key(win, Qt::Key_Home);
        key(win, Qt::Key_Delete, {}, "\x7f");
        EXPECT_EQ(p().get_text(win), "2");
        key(win, Qt::Key_End);
        QApplication::clipboard()->setText("3x4\ny5");
        key(win, Qt::Key_V, Qt::ControlModifier, "\x16");
        EXPECT_EQ(p().get_text(win), "2345");
        key(win, Qt::Key_Insert, Qt::ShiftModifier);
        EXPECT_EQ(p().get_text(win), "2345345");
        p().set_text(win, "7");
        mouse_counter reached;
        line->installEventFilter(&reached);
        click(line, {3, 3}, Qt::MiddleButton);
        EXPECT_EQ(reached.count, 0); // or it would paste the selection of another program
        key(win, Qt::Key_End);
        QInputMethodEvent composed;
        composed.setCommitString(QStringLiteral("8\u00e9z"));
        QApplication::sendEvent(w, &composed);
        EXPECT_EQ(p().get_text(win), "78\xc3\xa9");
        EXPECT_FALSE(line->acceptDrops());
        EXPECT_EQ(line->contextMenuPolicy(), Qt::NoContextMenu);
    }
    p().set_text(field, "5");
    p().read_only(field, true);
    type(field, "6");
    QApplication::clipboard()->setText("3");
    key(field, Qt::Key_V, Qt::ControlModifier, "\x16");
    EXPECT_EQ(p().get_text(field), "5");
}

TEST_F(input, keys_of_fields) {
    const port_win field = make(port_kind::field, {5, 5, 100, 21}),
                   next = make(port_kind::field, {5, 30, 100, 21});
    const port_win list = make(port_kind::combo_edit, {5, 60, 100, 21});
    p().set_text(next, "123");
    show_all();
    p().focus(field);
    key(field, Qt::Key_Return, {}, "\r");
    key(list, Qt::Key_Enter, Qt::KeypadModifier, "\r");
    key(field, Qt::Key_F1);
    key(field, Qt::Key_Tab, {}, "\t");
    key(field, Qt::Key_Backtab, Qt::ShiftModifier);
    click(field, {3, 3}, Qt::RightButton);
    EXPECT_EQ(events.take(), (lines{"return 2", "return 4", "help 2", "tab 2", "back tab 2", "help 2"}));
    EXPECT_EQ(QApplication::focusWidget(), widget(field)); // the order is the program's
}

// Fields select their text when the tab key brought the focus, so that typing replaces it.
TEST_F(input, tab_selects) {
    struct tabbing : logging_events {
        port* p = nullptr;
        port_win to = 0;
        void on_tab(port_win, bool) override { p->focus(to); }
    } handler;
    const port_win first = make(port_kind::field, {5, 5, 100, 21}),
                   second = make(port_kind::field, {5, 30, 100, 21});
    p().set_text(second, "123");
    handler.p = &p();
    handler.to = second;
    p().set_events(&handler);
    show_all();
    p().focus(first);
    key(first, Qt::Key_Tab, {}, "\t");
    type(second, "4");
    EXPECT_EQ(p().get_text(second), "4");
    p().set_events(&events);
}

TEST_F(input, control_keys_go_to_the_program_first) {
    const port_win field = make(port_kind::field, {5, 5, 100, 21}),
                   button = make(port_kind::button, {5, 40, 80, 25});
    const port_win area = make(port_kind::draw, {5, 80, 80, 80});
    show_all();
    p().focus(field);
    type(field, "ab");
    events.takes_shortcuts = true;
    key(field, Qt::Key_Z, Qt::ControlModifier, "\x1a");
    EXPECT_EQ(p().get_text(field), "ab");
    events.takes_shortcuts = false;
    key(field, Qt::Key_Z, Qt::ControlModifier, "\x1a"); // the field undoes its own typing
    EXPECT_EQ(p().get_text(field), "");
    EXPECT_EQ(events.take(), (lines{"ctrl Z 1", "ctrl Z 1"})); // told once each
    for (port_win win : {button, area}) {
        p().focus(win);
        key(win, Qt::Key_Y, Qt::ControlModifier, "\x19");
        key(win, Qt::Key_C, Qt::ControlModifier, "\x03");
        EXPECT_EQ(events.take(), (lines{"ctrl Y 1", "ctrl C 1"}));
    }
    p().focus(field);
    for (int code : {Qt::Key_A, Qt::Key_C, Qt::Key_X, Qt::Key_V}) key(field, code, Qt::ControlModifier);
    key(field, Qt::Key_Z, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(events.take(), lines{});
}

TEST_F(input, buttons) {
    const port_win push = make(port_kind::button, {5, 5, 80, 25}, "A & B");
    const port_win toggle = make(port_kind::toggle, {5, 35, 80, 25}, "T");
    const port_win swatch = make(port_kind::swatch, {5, 65, 80, 25});
    const port_win steps = make(port_kind::up_down, {100, 5, 60, 21});
    show_all();
    p().swatch_colour(swatch, 0x0000ff);
    EXPECT_EQ(shot(swatch).pixel(40, 12), 0xffff0000);
    for (port_win win : {push, toggle, swatch}) {
        click(win);
        p().focus(win);
        key(win, Qt::Key_Space, {}, " ");
        key(win, Qt::Key_Return, {}, "\r");
        key(win, Qt::Key_Right);
        EXPECT_EQ(events.take(), lines(3, "command " + std::to_string(win)));
        p().enable(win, false);
        click(win);
        key(win, Qt::Key_Return, {}, "\r");
        EXPECT_EQ(events.take(), lines{});
        p().enable(win, true);
    }
    EXPECT_FALSE(p().get_check(toggle)); // clicks report, the program decides
    p().set_check(toggle, true);
    click(toggle);
    EXPECT_TRUE(p().get_check(toggle));
    EXPECT_EQ(p().get_text(push), "A & B");
    EXPECT_EQ(events.take(), lines{"command " + std::to_string(toggle)});

    for (int x : {45, 15}) { // up is the right one
        QWidget* half = widget(steps)->childAt(x, 10);
        ASSERT_NE(half, nullptr);
        click(half);
    }
    EXPECT_EQ(events.take(), (lines{"step up 5", "step down 5"}));
}

TEST_F(input, lists) {
    const port_win list = make(port_kind::combo, {5, 5, 80, 25}),
                   open = make(port_kind::combo_edit, {5, 35, 80, 25});
    show_all();
    for (port_win win : {list, open}) {
        p().list_set(win, {"a", "b", "c"});
        EXPECT_EQ(p().list_index(win), 0);
        p().list_select(win, 2);
        p().list_select(win, 3); // not there
        EXPECT_EQ(p().list_index(win), 2);
        EXPECT_EQ(p().get_text(win), "c");
        QWheelEvent wheel({5, 5}, widget(win)->mapToGlobal(QPointF(5, 5)), {}, {0, 120}, {}, {}, {}, false);
        QApplication::sendEvent(widget(win), &wheel);
        EXPECT_EQ(p().list_index(win), 2);
        EXPECT_EQ(events.take(), lines{}); // the program's own changes are not told
        key(win, Qt::Key_Up);
        EXPECT_EQ(events.take(), lines{"select " + std::to_string(win) + " 1"});
        p().list_select(win, -1);
        EXPECT_EQ(p().list_index(win), -1);
    }
    p().set_text(open, "zz");
    EXPECT_EQ(p().list_index(open), -1);
    p().set_text(open, "c");
    EXPECT_EQ(p().list_index(open), 2);
}

TEST_F(input, menus) {
    const port_win button = make(port_kind::button, {5, 5, 80, 25}, "File");
    show_all();
    const auto choose = [&](const QString& text) {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* action : menu->findChildren<QAction*>())
            if (action->text() == text) {
                action->trigger();
                menu->close();
            }
        EXPECT_EQ(events.take(), lines{}); // from the loop
        spin();
    };
    const std::vector<port_menu_entry> entries = {
        {.id = 7, .text = "Open & close"},
        {},
        {.id = 8, .text = "Mark", .checked = true, .checkable = true},
        {.id = 9, .text = "Off", .enabled = false},
        {.text = "More", .submenu = {{.id = 10, .text = "Deep"}}}};
    p().menu_popup(button, entries);
    choose("Open && close");
    EXPECT_EQ(events.take(), lines{"menu 7"});
    p().menu_popup(button, entries);
    choose("Deep");
    EXPECT_EQ(events.take(), lines{"menu 10"});
    p().menu_popup(button, entries);
    choose("Off");
    EXPECT_EQ(events.take(), lines{});
}

} // namespace norva::test
