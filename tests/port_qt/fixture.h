#pragma once
// A port with real widgets on the offscreen platform, a handler that keeps a log, and events sent to widgets
// as the window system would send them.

#include "port_qt/port_qt.h"
#include "port_qt/testing.h"

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPixmap>
#include <QWidget>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace norva::test {

// Each event is one line of the log; a test hooks in where a handler must do something.
class logging_events : public port_events {
public:
    std::vector<std::string> log;
    std::function<void(port_win)> paint, command;
    std::function<bool(char32_t)> keep = [](char32_t) { return true; };
    bool may_close = false, takes_shortcuts = false;

    void on_size(port_win top, int w, int h) override { put("size", {top, w, h}); }
    void on_paint(port_win draw) override {
        put("paint", {draw});
        if (paint) paint(draw);
    }
    void on_mouse(port_win draw, port_mouse kind, int x, int y, int button) override {
        static const char* const names[] = {"down", "up", "drag", "free"};
        put(names[static_cast<int>(kind)], {draw, x, y, button});
    }
    void on_command(port_win control) override {
        put("command", {control});
        if (command) command(control);
    }
    void on_command_part(port_win control, bool up) override { put(up ? "step up" : "step down", {control}); }
    void on_select(port_win combo, int index) override { put("select", {combo, index}); }
    bool on_char(port_win, char32_t ch) override { return keep(ch); }
    void on_return(port_win field) override { put("return", {field}); }
    void on_tab(port_win control, bool back) override { put(back ? "back tab" : "tab", {control}); }
    void on_help(port_win control) override { put("help", {control}); }
    void on_menu(int id) override { put("menu", {id}); }
    bool on_close(port_win top) override {
        put("close", {top});
        return may_close;
    }
    bool on_shortcut(port_win top, char key) override {
        put(std::string("ctrl ") + key, {top});
        return takes_shortcuts;
    }

    // The log since the last call.
    std::vector<std::string> take() { return std::exchange(log, {}); }

private:
    void put(std::string line, std::initializer_list<int> numbers) {
        for (int n : numbers) line += ' ' + std::to_string(n);
        log.push_back(line);
    }
};

using lines = std::vector<std::string>;

class port_test : public testing::Test {
protected:
    explicit port_test(bool unattended = false) {
        port_ = make_qt_port({.unattended = unattended});
        port_->set_events(&events);
        top = port_->create(port_kind::top, 0, 0, "test");
        port_->move(top, {10, 20, 400, 300});
    }

    port& p() { return *port_; }
    QWidget* widget(port_win win) { return port_qt_widget(*port_, win); }
    QImage shot(port_win win) { return widget(win)->grab().toImage().convertToFormat(QImage::Format_RGB32); }

    // Events of the loop, until there are no more.
    void spin() {
        for (int i = 0; i < 5; i++) QApplication::processEvents();
    }

    port_win make(port_kind kind, port_rect place, const std::string& text = {}) {
        const port_win win = p().create(kind, top, 0, text);
        p().move(win, place);
        return win;
    }

    // Shown, painted, and with an empty log.
    void show_all() {
        p().show(top, true);
        p().raise(top);
        spin();
        events.take();
    }

    void mouse(QWidget* w, QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, at, w->mapToGlobal(at), button, held, Qt::NoModifier);
        QApplication::sendEvent(w, &event);
    }
    void click(QWidget* w, QPoint at = {3, 3}, Qt::MouseButton button = Qt::LeftButton) {
        mouse(w, QEvent::MouseButtonPress, at, button, button);
        mouse(w, QEvent::MouseButtonRelease, at, button, Qt::NoButton);
    }
    void click(port_win win, QPoint at = {3, 3}, Qt::MouseButton button = Qt::LeftButton) {
        click(widget(win), at, button);
    }
    void key(port_win win, int code, Qt::KeyboardModifiers modifiers = {}, const QString& text = {}) {
        for (auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, code, modifiers, text);
            QApplication::sendEvent(widget(win), &event);
        }
    }
    void type(port_win win, const QString& text) {
        for (QChar ch : text) key(win, ch.toUpper().unicode(), {}, ch);
    }

    logging_events events;
    port_win top = 0;

private:
    std::unique_ptr<port> port_;
};

} // namespace norva::test
