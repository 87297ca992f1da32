// The recording port is the ground other tests stand on: what it reports must be what a user could do, and
// its pixels must behave as a screen's.
#include "port_record/port_record.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace norva;

namespace {

struct heard : port_events {
    std::vector<std::string> lines;
    bool allow_close = true;
    std::string refused_chars;
    void add(const std::string& what, int win, int a = 0, int b = 0) {
        lines.push_back(what + ' ' + std::to_string(win) + ' ' + std::to_string(a) + ' ' + std::to_string(b));
    }
    void on_size(port_win top, int w, int h) override { add("size", top, w, h); }
    void on_paint(port_win draw) override { add("paint", draw); }
    void on_mouse(port_win draw, port_mouse, int x, int y, int) override { add("mouse", draw, x, y); }
    void on_command(port_win control) override { add("command", control); }
    void on_command_part(port_win control, bool up) override { add("part", control, up); }
    void on_select(port_win combo, int index) override { add("select", combo, index); }
    bool on_char(port_win, char32_t ch) override {
        return ch > 127 || refused_chars.find(static_cast<char>(ch)) == std::string::npos;
    }
    void on_return(port_win field) override { add("return", field); }
    void on_tab(port_win control, bool back) override { add("tab", control, back); }
    void on_help(port_win control) override { add("help", control); }
    void on_menu(int id) override { add("menu", id); }
    bool on_close(port_win) override { return allow_close; }
    bool on_shortcut(port_win, char) override { return true; }
};

class port_record_test : public testing::Test {
protected:
    record_port rec;
    heard events;
    port_win top = 0;
    void SetUp() override {
        rec.set_events(&events);
        top = rec.create(port_kind::top, 0, 0, "");
    }
    port_win area(int w, int h) {
        rec.rasters = true;
        const port_win draw = rec.create(port_kind::draw, top, 0, "");
        rec.move(draw, {0, 0, w, h});
        rec.show(top, true);
        rec.run_pending();
        return draw;
    }
};

TEST_F(port_record_test, NothingHiddenGreyOrUnknownCanBeUsed) {
    const port_win ok = rec.create(port_kind::button, top, 0, "OK");
    EXPECT_FALSE(rec.click(ok)) << "window still hidden";
    rec.show(top, true);
    EXPECT_TRUE(rec.click("OK"));
    rec.enable(ok, false);
    EXPECT_FALSE(rec.click(ok));
    rec.enable(ok, true);
    rec.enable(top, false);
    EXPECT_FALSE(rec.click(ok));
    rec.enable(top, true);
    EXPECT_FALSE(rec.click(99));
    EXPECT_EQ(rec.create(port_kind::button, 99, 0, ""), 0);
    EXPECT_EQ(rec.get_text(99), "");
    rec.destroy(top);
    EXPECT_FALSE(rec.exists(ok));
    EXPECT_EQ(events.lines, (std::vector<std::string>{"command " + std::to_string(ok) + " 0 0"}));
}

TEST_F(port_record_test, TypingGoesThroughTheFilterCharacterByCharacter) {
    const port_win field = rec.create(port_kind::field, top, 0, "");
    rec.show(top, true);
    events.refused_chars = "x";
    EXPECT_FALSE(rec.type(field, "1x2\xC3\xA9\b3\r"));
    EXPECT_EQ(rec.get_text(field), "123");
    EXPECT_TRUE(rec.enter(field, "7"));
    EXPECT_EQ(rec.get_text(field), "7");
    rec.read_only(field, true);
    EXPECT_FALSE(rec.type(field, "8"));
    EXPECT_FALSE(rec.enter(field, "8"));
    EXPECT_EQ(rec.get_text(field), "7");
}

TEST_F(port_record_test, SizesAndPaintsAreHeldWhileBusy) {
    const port_win draw = area(20, 10);
    rec.fill(draw, {0, 0, 5, 5}, 0xFF);
    events.lines.clear();
    rec.busy(true);
    rec.move(top, {0, 0, 300, 200});
    rec.move(draw, {0, 0, 30, 10});
    rec.run_pending();
    EXPECT_TRUE(events.lines.empty());
    EXPECT_EQ(rec.client_rect(draw), (port_rect{0, 0, 20, 10}));
    rec.busy(false);
    rec.run_pending();
    EXPECT_EQ(events.lines.size(), 2u); // one size, one paint
    EXPECT_EQ(rec.client_rect(draw), (port_rect{0, 0, 30, 10}));
    EXPECT_EQ(rec.window(draw).pixels[0], 0xFFFFFFu) << "a new picture is white";
    rec.request_paint(draw);
    rec.request_paint(draw);
    rec.run_pending();
    EXPECT_EQ(events.lines.size(), 3u) << "two requests make one notice";
}

TEST_F(port_record_test, DrawingBeforeTheFirstPaintGoesNowhere) {
    const port_win draw = rec.create(port_kind::draw, top, 0, "");
    rec.move_to(draw, {1, 2});
    const port_point to[] = {{3, 4}, {5, 6}};
    rec.polyline_to(draw, to);
    const auto calls = rec.drawn(draw);
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_TRUE(calls[1].lost);
    EXPECT_EQ(calls[1].points, (std::vector<port_point>{{1, 2}, {3, 4}, {5, 6}}));
}

// Every slope, lines that leave the picture, and wide pens: twice by exclusive-or is as before.
TEST_F(port_record_test, ExclusiveOrTwiceRestoresEveryPixel) {
    const port_win draw = area(60, 40);
    rec.fill(draw, {10, 5, 30, 20}, 0x123456);
    const auto before = rec.window(draw).pixels;
    rec.rop(draw, port_rop::exclusive_or);
    for (const int width : {1, 3}) {
        rec.pen(draw, 0xFF7F01, 0, width);
        for (int a = 0; a < 360; a += 7) {
            const double c = std::cos(a * 0.0174533), s = std::sin(a * 0.0174533);
            const port_point to[] = {{30 + static_cast<int>(25 * c), 20 + static_cast<int>(25 * s)},
                                     {30 + static_cast<int>(1e9 * c), 20 + static_cast<int>(1e9 * s)}};
            for (int i = 0; i < 2; ++i) {
                rec.move_to(draw, {30, 20});
                rec.polyline_to(draw, to);
                ASSERT_EQ(rec.window(draw).pixels == before, i == 1) << a;
            }
        }
    }
}

TEST_F(port_record_test, ALineLeavesItsLastPixelOut) {
    const port_win draw = area(10, 10);
    rec.pen(draw, 0, 0, 1);
    rec.move_to(draw, {2, 3});
    const port_point to[] = {{5, 3}, {5, 6}};
    rec.polyline_to(draw, to);
    int black = 0;
    for (const auto p : rec.window(draw).pixels) black += p == 0;
    EXPECT_EQ(black, 6);
    EXPECT_EQ(rec.window(draw).pixels[3 * 10 + 2], 0u);
    EXPECT_EQ(rec.window(draw).pixels[6 * 10 + 5], 0xFFFFFFu);
}

TEST_F(port_record_test, AnImageIsScaledAndClipped) {
    const port_win draw = area(4, 4);
    const std::uint32_t two[] = {0x11, 0x22};
    rec.image(draw, {-2, 1, 4, 2}, two, 2, 1); // columns -2 -1 | 0 1
    const auto& p = rec.window(draw).pixels;
    EXPECT_EQ((std::vector<std::uint32_t>(p.begin() + 4, p.begin() + 8)),
              (std::vector<std::uint32_t>{0x22, 0x22, 0xFFFFFF, 0xFFFFFF}));
}

TEST_F(port_record_test, QuestionsWaitForTheirAnswer) {
    std::string got;
    rec.yes_no("Question:", "?", [&](bool yes) { got += yes ? 'y' : 'n'; });
    rec.message("Message:", "hm", [&] { got += 'm'; });
    rec.ask_file({}, [&](const std::string& name) { got += name; });
    rec.run_pending();
    EXPECT_EQ(got, "m");
    EXPECT_EQ(rec.open_dialogs(), 2);
    rec.file_answers = {"f"};
    rec.run_pending();
    EXPECT_TRUE(rec.answer_yes_no(false));
    EXPECT_FALSE(rec.answer_yes_no(true));
    EXPECT_EQ(got, "mfn");
    EXPECT_THROW(rec.fatal("Error message:", "PE 1"), record_fatal);
}

TEST_F(port_record_test, PagesFollowWhatWasOrdered) {
    rec.printer_cancelled = true;
    EXPECT_EQ(rec.page_begin({}), port_page_result::cancel);
    rec.fill(port_page, {0, 0, 1, 1}, 0);
    EXPECT_EQ(rec.page_end(), port_page_result::error);
    rec.printer_cancelled = false;
    rec.end_fails = true;
    EXPECT_EQ(rec.page_begin({.title = "t", .file = "f"}), port_page_result::ok);
    rec.fill(port_page, {0, 0, 1, 1}, 0);
    EXPECT_EQ(rec.page_end(), port_page_result::error);
    ASSERT_EQ(rec.pages.size(), 2u);
    EXPECT_TRUE(rec.pages[0].calls.empty());
    EXPECT_EQ(rec.pages[1].calls.size(), 1u);
}

} // namespace
