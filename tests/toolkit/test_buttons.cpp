// Buttons, arrays, toggles, colour buttons and menus.
#include "fixture.h"

using namespace norva;
using namespace norva::test;

namespace {

using buttons = toolkit_test;

TEST_F(buttons, ATogglesStateChangesBeforeItsCallback) {
    wi_obj* t = wi_mk_button(
        nullptr, "t", 1,
        [](wi_obj* wo, int tag) {
            calls.push_back({wo, tag + wi_button_getstate(wo)});
        },
        10);
    wi_obj* p = wi_mk_button(nullptr, "p", 0, note_cb, 5);
    wi_on(t);
    wi_on(p);
    rec.click("t");
    EXPECT_TRUE(rec.window(t->wins[0]).checked);
    rec.click("t");
    EXPECT_FALSE(rec.window(t->wins[0]).checked);
    rec.click("p");
    EXPECT_EQ(calls, (std::vector<called>{{t, 11}, {t, 10}, {p, 5}}));
    wi_set_state(p, 1);
    EXPECT_EQ(wi_get_state(p), 0) << "a push button has no state";
    wi_button_label(t, "u");
    EXPECT_TRUE(rec.click("u"));
}

TEST_F(buttons, AnArrayReportsWithItself) {
    wi_obj* a = wi_mk_butary(nullptr, 2, 2);
    wi_butary_button(a, "one", 0, note_cb, 1);
    wi_butary_blank(a);
    wi_obj* three = wi_butary_button(a, "three", 1, note_cb, 3);
    wi_butary_button(a, "three", 1, note_cb, 4); // the first of equal names counts
    wi_on(a);
    rec.click("one");
    rec.click(three->wins[0]);
    EXPECT_EQ(calls, (std::vector<called>{{a, 1}, {a, 3}}));
    EXPECT_EQ(wi_butary_getstate(a, "three"), 1);
    wi_butary_setstate(a, "three", 0);
    EXPECT_EQ(wi_button_getstate(three), 0);
    EXPECT_EQ(rect(three->wins[0]), (port_rect{0, 375, 375, 375})) << "second row, first column";
}

// Each case starts from `before`, set by the array; then one is set, or pressed by the user.
TEST_F(buttons, ToggleModes) {
    using states = std::vector<int>;
    struct {
        int mode;
        states before, after_array; // what is asked for, and what the mode makes of it
        int index, state;
        states after;
    } const cases[] = {
        {0, {0, 0, 0}, {1, 0, 0}, 2, 1, {0, 0, 1}},
        {0, {0, 1, 1}, {0, 1, 0}, 1, 0, {1, 0, 0}}, // off: button 0 takes over
        {0, {1, 0, 0}, {1, 0, 0}, 0, 0, {1, 0, 0}}, // never all off
        {0, {0, 1, 0}, {0, 1, 0}, 2, 0, {0, 1, 0}}, // off already
        {1, {0, 1, 1}, {0, 1, 0}, 1, 0, {0, 0, 0}},
        {1, {0, 0, 0}, {0, 0, 0}, 2, 1, {0, 0, 1}},
        {2, {0, 0, 0}, {1, 0, 0}, 1, 1, {1, 1, 0}},
        {2, {0, 1, 0}, {0, 1, 0}, 1, 0, {1, 0, 0}},
        {2, {0, 1, 1}, {0, 1, 1}, 1, 0, {0, 0, 1}},
        {3, {1, 0, 1}, {1, 0, 1}, 0, 0, {0, 0, 1}},
        {3, {1}, {1, 0, 0}, 0, 0, {0, 0, 0}},
    };
    for (const auto& c : cases) {
        wi_obj* t = wi_mk_togary(nullptr, {"x", "y", "z"});
        EXPECT_EQ(wi_togary_getindex(t), 0) << "mode 0 at first";
        wi_togary_chng_cb(t, note_cb, 6);
        wi_togary_setmode(t, c.mode);
        wi_togary_setary(t, c.before);
        EXPECT_EQ(wi_togary_getary(t), c.after_array) << "mode " << c.mode;
        wi_togary_setstate(t, c.index, c.state);
        EXPECT_EQ(wi_togary_getary(t), c.after) << "mode " << c.mode;
        EXPECT_TRUE(calls.empty());
        // The same by a click, which turns the state round.
        wi_togary_setary(t, c.after_array);
        const auto index = static_cast<std::size_t>(c.index);
        if (c.after_array[index] == c.state) continue;
        wi_on(t);
        const wi_togary& rec_t = std::get<wi_togary>(t->obj);
        EXPECT_TRUE(rec.click(rec_t.ary[index].button->wins[0]));
        EXPECT_EQ(wi_togary_getary(t), c.after) << "clicked, mode " << c.mode;
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_EQ(rec.window(rec_t.ary[i].button->wins[0]).checked, c.after[i] != 0);
        EXPECT_EQ(calls, (std::vector<called>{{t, 6}}));
        calls.clear();
        wi_togary_editable(t, 0);
        rec.click(rec_t.ary[index].button->wins[0]);
        EXPECT_EQ(wi_togary_getary(t), c.after);
    }
}

TEST_F(buttons, ChangingTheModeAppliesItsRule) {
    wi_obj* t = wi_mk_togary(nullptr, {"x", "y"});
    wi_togary_setmode(t, 1);
    wi_togary_setstate(t, 0, 0);
    EXPECT_EQ(wi_togary_getindex(t), -1);
    wi_togary_setmode(t, 2);
    EXPECT_EQ(wi_togary_getindex(t), 0);
}

TEST_F(buttons, ColoursCycleThroughTheEnabledOnes) {
    wi_obj* c = wi_mk_colorbut(nullptr, note_cb, 40);
    wi_on(c);
    const int some[] = {0, 0, 1, 0, 1}; // red and green
    wi_colorbut_setary(c, some);
    std::vector<int> seen;
    for (int i = 0; i < 3; ++i) {
        rec.click(c->wins[0]);
        seen.push_back(wi_colorbut_getcolor(c));
    }
    EXPECT_EQ(seen, (std::vector<int>{2, 4, 2}));
    EXPECT_EQ(rec.window(c->wins[0]).colour, 0x0000FFu) << "red is the low byte";
    EXPECT_EQ(calls.size(), 3u);
    wi_colorbut_colorstate(c, 2, 0);
    wi_colorbut_colorstate(c, 4, 0);
    rec.click(c->wins[0]); // nothing left to go to
    wi_colorbut_colorstate(c, 14, 1);
    wi_colorbut_editable(c, 0);
    rec.click(c->wins[0]);
    EXPECT_EQ(wi_colorbut_getcolor(c), 2);
    EXPECT_EQ(calls.size(), 3u);
    wi_colorbut_editable(c, 1);
    rec.click(c->wins[0]);
    EXPECT_EQ(wi_colorbut_getcolor(c), 14);
    EXPECT_NE(fatal_text([&] { wi_colorbut_setcolor(c, 15); }), "");
}

TEST_F(buttons, MenusOpenAndDispatch) {
    wi_obj* m = wi_mk_menubar(nullptr, 2);
    wi_menubar_pulldown(m, "Image type");
    const int peaks = wi_menubar_button(m, "Peaks", 1, note_cb, 0);
    wi_menubar_submenu(m, "More");
    wi_menubar_button(m, "Contours", 0, note_cb, 1);
    wi_menubar_submenu(m, "Deeper");
    wi_menubar_button(m, "Shades", 0, note_cb, 2);
    wi_menubar_submenu_done(m);
    wi_menubar_submenu_done(m);
    wi_menubar_button(m, "", 0, nullptr, 0);
    const int last = wi_menubar_button(m, "Last", 0, note_cb, 3);
    wi_menubar_pulldown(m, "Second");
    wi_menubar_button(m, "Other", 0, note_cb, 4);
    wi_on(m);

    EXPECT_TRUE(rec.click("Image type"));
    ASSERT_EQ(rec.menu.size(), 4u);
    ASSERT_EQ(rec.menu[1].submenu.size(), 2u);
    EXPECT_EQ(rec.menu[1].submenu[1].submenu.at(0).text, "Shades");
    EXPECT_TRUE(rec.menu[2].text.empty());
    EXPECT_TRUE(rec.choose_menu("Shades"));
    rec.click("Second");
    EXPECT_TRUE(rec.choose_menu("Other"));
    rec.click("Image type");
    rec.choose_menu("Peaks");
    EXPECT_EQ(wi_menubar_getstate(m, peaks), 1);
    EXPECT_EQ(calls, (std::vector<called>{{m, 2}, {m, 4}, {m, 0}}));

    wi_menubar_eset(m, last, 0);
    wi_menubar_b_label(m, peaks, "Points");
    wi_menubar_pd_label(m, 0, "Kind");
    rec.click("Kind");
    EXPECT_TRUE(rec.menu[0].checked);
    EXPECT_EQ(rec.menu[0].text, "Points");
    EXPECT_FALSE(rec.choose_menu("Last"));
    wi_menubar_setstate(m, peaks, 0);
    EXPECT_EQ(wi_menubar_getstate(m, peaks), 0);
    EXPECT_NE(fatal_text([&] { wi_menubar_setstate(wi_mk_menubar(nullptr), peaks, 0); }), "")
        << "a command of another bar";
    EXPECT_NE(fatal_text([&] { wi_menubar_submenu_done(m); }), "");
}

} // namespace
