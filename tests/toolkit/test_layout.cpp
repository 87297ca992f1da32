// The layout arithmetic, on numbers worked out by hand. Character height 14, edges 2 by 2.
#include "fixture.h"

using namespace norva;
using namespace norva::test;

namespace {

using layout = toolkit_test;

TEST_F(layout, AnObjectWithoutParentGetsItsOwnWindow) {
    struct {
        const char* what;
        wi_obj* wo;
        int closes;
    } const made[] = {
        {"form", wi_mk_form(nullptr, 1, 1), 0},
        {"frame", wi_mk_frame(nullptr), 0},
        {"drect", wi_mk_drect(nullptr, 0, 0.5), 0},
        {"number", wi_mk_numfld(nullptr, "n", 0.5, 2), 1},
        {"list", wi_mk_listsel(nullptr, "l", 0, 0.5, {"a"}), 1},
        {"menu", wi_mk_menubar(nullptr), 1},
        {"file", wi_mk_filesel(nullptr, "f", "*.x", 0.3), 1},
    };
    for (const auto& m : made) {
        ASSERT_TRUE(m.wo->shell) << m.what;
        const port_win top = m.wo->shell->handle;
        EXPECT_EQ(rect(top).w, 750) << m.what; // 600 units on a screen 1024 wide
        EXPECT_EQ(rect(top).h, 750) << m.what;
        EXPECT_FALSE(rec.visible(top)) << m.what;
        const wi_zuvapp& z = std::get<wi_zuvapp>(m.wo->shell->obj);
        EXPECT_EQ(z.qenable, m.closes) << m.what;
        wi_on(m.wo);
        EXPECT_TRUE(rec.visible(top)) << m.what;
        EXPECT_EQ(m.wo->rect, (port_rect{0, 0, 750, 750})) << m.what;
    }
}

TEST_F(layout, UnitsFollowTheScreen) {
    rec.screen = {1920, 1080};
    wi_obj* fm = wi_mk_form(nullptr, 1, 1);
    wi_size(fm, 700, 550);
    wi_position(fm, 150, 33);
    // 700*1920*1.25/1024 = 1640.6, 550*1080*1.25/768 = 966.8; 150*1920/1024 = 281.25, 33*1080/768 = 46.4
    EXPECT_EQ(rect(fm->shell->handle), (port_rect{281, 46, 1640, 966}));
    wi_obj* inner = wi_mk_form(wi_form_parent(fm, 0, 0, 1, 1), 1, 1);
    EXPECT_EQ(fatal_text([&] { wi_size(inner, 1, 1); }), "Bad parameter to wi_size");
}

TEST_F(layout, PlacesCutTheFormByProportion) {
    wi_obj* fm = window(30, 7);
    wi_obj* a = wi_mk_label(wi_form_parent(fm, 0, 0, 30, 7), "", 0);
    wi_obj* b = wi_mk_label(wi_form_parent(fm, 10, 1, 20, 2), "", 0);
    wi_obj* c = wi_mk_label(wi_form_parent(fm, 20, 2, 10, 1), "", 0); // corners the other way round
    wi_on(fm);
    EXPECT_EQ(rect(a->wins[0]), (port_rect{0, 0, 600, 600}));
    // 600/7 = 85.7 -> 85; 600*2/7 = 171.4 -> 171
    EXPECT_EQ(rect(b->wins[0]), (port_rect{200, 85, 200, 86}));
    EXPECT_EQ(rect(c->wins[0]), rect(b->wins[0]));
    rec.resize(fm->shell->handle, 300, 70);
    EXPECT_EQ(rect(b->wins[0]), (port_rect{100, 10, 100, 10}));
}

TEST_F(layout, NestedFormsStartWhereTheirPlaceDoes) {
    wi_obj* fm = window();
    wi_obj* inner = wi_mk_form(wi_form_parent(fm, 10, 20, 40, 50), 3, 3);
    wi_obj* a = wi_mk_button(wi_form_parent(inner, 1, 1, 2, 3), "", 0, nullptr, 0);
    wi_on(fm);
    EXPECT_EQ(rect(a->wins[0]), (port_rect{200, 300, 100, 200}));
}

TEST_F(layout, DoubleRectangleSplits) {
    struct {
        int dir;
        double split;
        port_rect first, second;
    } const cases[] = {
        {1, 0.25, {0, 0, 150, 600}, {150, 0, 450, 600}},
        {0, 0.25, {0, 0, 600, 150}, {0, 150, 600, 450}},
        {1, 0.82, {0, 0, 492, 600}, {492, 0, 108, 600}},
    };
    for (const auto& c : cases) {
        wi_obj* fm = window();
        wi_obj* d = wi_mk_drect(wi_form_parent(fm, 0, 0, 60, 60), c.dir, c.split);
        wi_obj* a = wi_mk_label(d, "", 0);
        wi_on(fm);
        EXPECT_EQ(rect(a->wins[0]), c.first) << "alone";
        wi_obj* b = wi_mk_label(d, "", 0);
        wi_on(b);
        EXPECT_EQ(rect(a->wins[0]), c.first);
        EXPECT_EQ(rect(b->wins[0]), c.second);
        wi_drect_split(d, 0.5);
        EXPECT_EQ(rect(b->wins[0]).w + rect(b->wins[0]).h, 900);
    }
}

TEST_F(layout, CropCutsFractionsOff) {
    wi_obj* fm = window();
    wi_obj* c = wi_mk_crop(wi_form_parent(fm, 0, 0, 60, 60), 0.1, 0.2, 0.3, 0.4);
    wi_obj* a = wi_mk_label(c, "", 0);
    wi_on(fm);
    EXPECT_EQ(rect(a->wins[0]), (port_rect{180, 60, 180, 420}));
}

TEST_F(layout, FrameLeavesRoomForItsEdges) {
    wi_obj* fm = window();
    wi_obj* f = wi_mk_frame(wi_form_parent(fm, 10, 10, 30, 30));
    wi_obj* a = wi_mk_label(f, "", 0);
    wi_on(fm);
    EXPECT_EQ(rect(f->wins[0]), (port_rect{100, 96, 200, 204}));
    EXPECT_EQ(rect(a->wins[0]), (port_rect{102, 106, 196, 192}));
    EXPECT_EQ(rec.window(a->wins[0]).parent, fm->shell->handle)
        << "controls are never inside the border's window";
}

TEST_F(layout, RectangleArrayFillsRowByRow) {
    wi_obj* fm = window();
    wi_obj* r = wi_mk_rectary(wi_form_parent(fm, 0, 0, 60, 60), 7, 2, 0.1, 0);
    std::vector<wi_obj*> cells;
    for (int i = 0; i < 3; ++i) cells.push_back(wi_mk_label(r, "", 0));
    wi_on(fm);
    EXPECT_EQ(rect(cells[0]->wins[0]), (port_rect{30, 0, 240, 85})); // 600/7 = 85
    EXPECT_EQ(rect(cells[1]->wins[0]), (port_rect{330, 0, 240, 85}));
    EXPECT_EQ(rect(cells[2]->wins[0]), (port_rect{30, 85, 240, 85}));
    wi_obj* tight = wi_mk_rectary(nullptr, 1, 1, 0.9, 0.9); // the insets overlap
    wi_obj* none = wi_mk_label(tight, "", 0);
    wi_on(tight);
    EXPECT_EQ(rect(none->wins[0]).w, 0);
}

TEST_F(layout, FieldsAreOneAndAHalfLinesHigh) {
    wi_obj* fm = window();
    wi_obj* n = wi_mk_numfld(wi_form_parent(fm, 0, 0, 40, 10), "n", 0.25, 2);
    wi_obj* l = wi_mk_listsel(wi_form_parent(fm, 0, 10, 40, 20), "l", 1, 0.5, {});
    wi_obj* i = wi_mk_incdecfld(wi_form_parent(fm, 0, 20, 40, 30), "i", 0.5, 1);
    wi_obj* low = wi_mk_strfld(wi_form_parent(fm, 0, 30, 40, 31), "low", 0);
    wi_obj* open = wi_mk_filesel(wi_form_parent(fm, 0, 40, 40, 50), "f", "", 0.5);
    wi_on(fm);
    EXPECT_EQ(rect(n->wins[0]), (port_rect{0, 39, 100, 21})); // (100 - 21)/2 below the top of the cell
    EXPECT_EQ(rect(entry(n)), (port_rect{100, 39, 300, 21}));
    EXPECT_EQ(rect(entry(l)), (port_rect{200, 139, 200, 21}));
    const wi_incdecfld& f = std::get<wi_incdecfld>(i->obj);
    EXPECT_EQ(rect(entry(f.numfld)), (port_rect{164, 239, 164, 21})); // 400*0.82 = 328
    EXPECT_EQ(rect(f.updownbut->wins[0]), (port_rect{328, 239, 72, 21}));
    EXPECT_EQ(rect(entry(low)), (port_rect{0, 300, 400, 21})) << "a low cell keeps the height";
    const wi_filesel& s = std::get<wi_filesel>(open->obj);
    EXPECT_EQ(rect(s.button->wins[0]), (port_rect{340, 439, 60, 21}));
    wi_numfld_split(n, 0.75);
    EXPECT_EQ(rect(entry(n)), (port_rect{300, 39, 100, 21}));
}

TEST_F(layout, MenuButtonsShareTheWidth) {
    wi_obj* fm = window();
    wi_obj* m = wi_mk_menubar(wi_form_parent(fm, 0, 0, 60, 3));
    for (const char* label : {"a", "b", "c"}) wi_menubar_pulldown(m, label);
    wi_on(fm);
    EXPECT_EQ(rect(m->wins[0]), (port_rect{0, 0, 200, 30}));
    EXPECT_EQ(rect(m->wins[2]), (port_rect{400, 0, 200, 30}));
}

TEST_F(layout, WhatIsOffKeepsItsPlaceAndFollowsResizes) {
    wi_obj* fm = window();
    wi_obj* a = wi_mk_label(wi_form_parent(fm, 0, 0, 60, 30), "a", 0);
    wi_obj* b = wi_mk_label(wi_form_parent(fm, 0, 30, 60, 60), "b", 0);
    wi_on(fm);
    wi_off(a);
    rec.resize(fm->shell->handle, 100, 100);
    EXPECT_EQ(rect(b->wins[0]), (port_rect{0, 50, 100, 50}));
    EXPECT_FALSE(rec.visible(a->wins[0]));
    wi_on(a);
    EXPECT_TRUE(rec.visible(a->wins[0]));
    EXPECT_EQ(rect(a->wins[0]), (port_rect{0, 0, 100, 50}));
}

} // namespace
