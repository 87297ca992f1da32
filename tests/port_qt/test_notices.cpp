// Which notices come, when, and what holds them back.
#include "fixture.h"

#include <QCloseEvent>
#include <QTimer>

namespace norva::test {

class notices : public port_test {
protected:
    notices() { area = make(port_kind::draw, {5, 7, 200, 150}); }
    std::string painted() const { return "paint " + std::to_string(area); }
    std::string closed() const { return "close " + std::to_string(top); }
    void close_request() {
        QCloseEvent event;
        QApplication::sendEvent(widget(top), &event);
    }
    port_win area = 0;
};

TEST_F(notices, sizes_of_a_window_are_told_at_once_and_once) {
    events.take();
    p().move(top, {10, 20, 320, 240});
    EXPECT_EQ(events.take(), lines{"size 1 320 240"});
    p().move(top, {50, 60, 320, 240});
    p().show(top, true);
    spin();
    EXPECT_EQ(events.take(), lines{painted()}); // no repeat of the size
    EXPECT_EQ(p().window_rect(top), (port_rect{50, 60, 320, 240}));
    widget(top)->resize(300, 200); // the user drags the border
    EXPECT_EQ(events.take(), lines{});
    spin();
    EXPECT_EQ(events.take(), lines{"size 1 300 200"});
}

TEST_F(notices, come_from_the_loop_and_only_when_something_changed) {
    p().pen(area, 0, 0, 1);
    p().fill(area, {0, 0, 10, 10}, 0); // no picture yet: goes nowhere
    p().request_paint(area);
    spin();
    EXPECT_EQ(events.take(), lines{"size 1 400 300"}); // hidden: nothing to paint
    p().show(top, true);
    for (int w = 100; w < 150; w++) p().move(area, {5, 7, w, 90});
    spin();
    EXPECT_EQ(events.take(), lines{painted()});
    EXPECT_EQ(p().client_rect(area), (port_rect{0, 0, 149, 90}));
    EXPECT_EQ(shot(area).pixel(2, 2), 0xffffffff);

    // Moving, hiding, showing again, changing the size there and back: the picture is whole.
    p().fill(area, {0, 0, 10, 10}, 0);
    p().move(area, {50, 70, 149, 90});
    p().show(area, false);
    spin();
    p().show(area, true);
    p().show(top, false);
    p().show(top, true);
    p().move(area, {50, 70, 20, 20});
    p().move(area, {50, 70, 149, 90});
    spin();
    EXPECT_EQ(events.take(), lines{});
    EXPECT_EQ(shot(area).pixel(2, 2), 0xff000000);

    p().request_paint(area);
    p().request_paint(area);
    EXPECT_EQ(events.take(), lines{});
    spin();
    EXPECT_EQ(events.take(), lines{painted()});
    EXPECT_EQ(shot(area).pixel(2, 2), 0xff000000); // asked for: the program erases if it wants to
    p().move(area, {50, 70, 60, 60});
    spin();
    EXPECT_EQ(events.take(), lines{painted()});
    EXPECT_EQ(shot(area).pixel(2, 2), 0xffffffff);
}

TEST_F(notices, painting_from_a_notice_comes_to_rest) {
    events.paint = [&](port_win win) { p().fill(win, {0, 0, 10, 10}, 0); };
    show_all();
    QApplication::processEvents();
    EXPECT_EQ(events.take(), lines{});
}

TEST_F(notices, busy_holds_them_and_keeps_the_picture) {
    show_all();
    p().fill(area, {0, 0, 200, 150}, 0x00ff00);
    p().busy(true);
    p().busy(true);
    p().move(area, {0, 0, 300, 250});
    p().request_paint(area);
    widget(top)->resize(350, 260);
    spin();
    p().pump();
    p().busy(false);
    spin();
    EXPECT_EQ(events.take(), lines{});
    EXPECT_EQ(p().client_rect(area), (port_rect{0, 0, 200, 150}));
    EXPECT_EQ(shot(area).pixel(199, 149), 0xff00ff00);
    p().busy(false);
    p().busy(false); // one too many
    EXPECT_EQ(events.take(), lines{});
    spin();
    EXPECT_EQ(events.take(), (lines{"size 1 350 260", painted()}));
    EXPECT_EQ(p().client_rect(area), (port_rect{0, 0, 300, 250}));
}

TEST_F(notices, nothing_is_told_inside_a_handler) {
    const port_win button = make(port_kind::button, {210, 5, 80, 30}, "Run");
    show_all();
    lines inside;
    events.command = [&](port_win) {
        p().request_paint(area);
        p().later([&] { events.log.push_back("later"); });
        close_request();
        widget(top)->resize(350, 260);
        click(button);
        p().pump();
        inside = events.take();
    };
    click(button);
    EXPECT_EQ(inside, lines{"command 3"}); // its own beginning
    spin();
    EXPECT_EQ(events.take(), (lines{"size 1 350 260", closed(), painted(), "later"}));
    EXPECT_TRUE(p().shown(top));
}

TEST_F(notices, closing_asks_first) {
    show_all();
    close_request();
    EXPECT_EQ(events.take(), lines{closed()});
    EXPECT_TRUE(widget(top)->isVisible());
    events.may_close = true;
    close_request();
    EXPECT_EQ(widget(top), nullptr);
    EXPECT_EQ(widget(area), nullptr);
    spin();
}

TEST_F(notices, windows_may_go_inside_their_own_events) {
    const port_win button = make(port_kind::button, {210, 5, 80, 30}, "Go");
    show_all();
    events.command = [&](port_win win) { p().destroy(win); };
    click(button);
    EXPECT_EQ(widget(button), nullptr);
    events.paint = [&](port_win) { p().destroy(top); };
    p().request_paint(area);
    spin();
    EXPECT_EQ(widget(area), nullptr);
    EXPECT_EQ(p().shown(top), false);

    top = p().create(port_kind::top, 0, 0, "next");
    const port_win quit = make(port_kind::button, {0, 0, 80, 30}, "Quit");
    events.command = [&](port_win) { p().quit(42); };
    p().show(top, true);
    QTimer::singleShot(0, widget(quit), [&] { click(quit); });
    EXPECT_EQ(p().run(), 42);
    p().quit(5); // before the loop starts
    EXPECT_EQ(p().run(), 5);
}

TEST_F(notices, a_shown_window_fits_the_screen) {
    const port_size screen = p().screen_size();
    p().move(top, {30, 30, 5000, 4000});
    EXPECT_EQ(p().client_rect(top).w, 5000);
    p().show(top, true);
    const port_rect r = p().window_rect(top);
    EXPECT_LE(r.w, screen.w);
    EXPECT_LE(r.h, screen.h);
    EXPECT_EQ(events.log.back(), "size 1 " + std::to_string(r.w) + " " + std::to_string(r.h));
}

} // namespace norva::test
