// The tree's rules and the texts with which misuse ends the program; on, off and grey.
#include "fixture.h"

using namespace norva;
using namespace norva::test;

namespace {

using tree = toolkit_test;

TEST_F(tree, MisuseEndsWithItsText) {
    wi_obj* fm = window(10, 10);
    const auto place = [&] { return wi_form_parent(fm, 0, 0, 10, 10); };
    const std::string one_child =
        "You attempted to add a child to an object, but it already has a child.  The "
        "object only supports one child.";
    struct {
        std::function<void()> misuse;
        std::string text;
    } const cases[] = {
        {[] { wi_mk_form(nullptr, 0, 5); }, "PE 1, wiform.c: Bad arg."},
        {[] { wi_mk_form(nullptr, 5, -1); }, "PE 1, wiform.c: Bad arg."},
        {[] { wi_form_parent(nullptr, 0, 0, 1, 1); }, "Bad parameter to wi_form_parent."},
        {[&] { wi_form_parent(wi_mk_frame(place()), 0, 0, 1, 1); },
         "Bad parameter to wi_form_parent. The object parameter must be a form object ."},
        {[&] { wi_form_parent(fm, 0, 1, 10.5, 2); },
         "Bad coordinates in wi_form_parent: 0.000000 1.000000 10.500000 2.000000 10.000000 10.000000"},
        {[&] { wi_form_parent(fm, 0, -0.25, 1, 2); },
         "Bad coordinates in wi_form_parent: 0.000000 -0.250000 1.000000 2.000000 10.000000 10.000000"},
        {[] { wi_mk_drect(nullptr, 0, 0); }, "PE 1, widrect.c: bad arg."},
        {[] { wi_mk_drect(nullptr, 0, 1); }, "PE 1, widrect.c: bad arg."},
        {[] { wi_mk_drect(nullptr, 2, 0.5); }, "PE 2, widrect.c bad arg."},
        {[] { wi_mk_rectary(nullptr, 1, 1, 1.0, 0); },
         "Bad argument to wi_mk_rectary.  Crop value is invalid."},
        {[] { addchild(wi_mk_label(nullptr, "", 0), nullptr); }, "Bad parameter to addchild"},
        {[&] {
             wi_obj* f = wi_mk_frame(place());
             wi_mk_label(f, "", 0);
             wi_mk_label(f, "", 0);
         },
         one_child},
        {[&] {
             wi_obj* p = place();
             wi_mk_label(p, "", 0);
             wi_mk_label(p, "", 0);
         },
         one_child},
        {[&] {
             wi_obj* d = wi_mk_drect(place(), 0, 0.5);
             for (int i = 0; i < 3; ++i) wi_mk_label(d, "", 0);
         },
         "You attempted to add a child to a double rectangle, but it already has 2 children.  The object "
         "only support "
         "2 children."},
        {[&] {
             wi_obj* r = wi_mk_rectary(place(), 1, 2, 0, 0);
             for (int i = 0; i < 3; ++i) wi_mk_label(r, "", 0);
         },
         "You attempted to add a child to a rectangle array, but it already is filled."},
        {[&] { wi_mk_label(wi_mk_label(place(), "", 0), "", 0); },
         "Error: cannot add a child to that object."},
        {[&] { wi_mk_label(wi_mk_incdecfld(place(), "", 0.5, 1), "", 0); },
         "Error: cannot add a child to that object."},
        {[] { wi_set_label(nullptr, ""); }, "PE 10, wi.c: bad arg."},
        {[&] { wi_set_value(fm, 1); }, "PE 21, wi.c: bad object type."},
        {[] { wi_get_state(nullptr); }, "PE 32, wi.c: bad arg."},
        {[&] { wi_numfld_getstr(fm); }, "PE 5, winumfld.c: bad arg."},
        {[] { wi_on(nullptr); }, "You cannot turn on that object with wi_on"},
        {[] { wi_off(nullptr); }, "You cannot turn off that object with wi_off"},
        {[] { wi_activate_first(nullptr); }, "Bad parameter to wi_activate_first: bad window type "},
        {[] { wi_activate_next(wi_mk_msgbox(nullptr, "")); },
         "Could not activate this window type in wi_activate_findnext"},
        {[&] { wi_drawarea_mouse_cb(wi_mk_drawarea(place(), nullptr, 0, nullptr, 0), 4, nullptr, 0); },
         "Bad parameter passed to wi_drawarea_mouse_cb"},
        {[&] { wi_togary_setstate(wi_mk_togary(place(), {"a"}), 1, 1); },
         "Bad index passed to wi_togary_setstate."},
        {[&] {
             wi_obj* a = wi_mk_butary(place(), 1, 2);
             wi_butary_blank(a);
             wi_butary_button(a, "x", 0, nullptr, 0);
             wi_butary_button(a, "y", 0, nullptr, 0);
         },
         "PE 7, wibutary.c: button array full."},
        {[&] { wi_butary_setstate(wi_mk_butary(place(), 1, 2), "x", 1); },
         "Invalid parameter to wi_butary_setstate: Bad button name."},
        {[&] { wi_butary_getstate(wi_mk_butary(place(), 1, 2), "x"); },
         "PE 14, wibutary.c: Unknown button name."},
        {[&] {
             wi_obj* m = wi_mk_menubar(place(), 1);
             wi_menubar_pulldown(m, "a");
             wi_menubar_pulldown(m, "b");
         },
         "PE 7, wimenubar.c: menubar full."},
        {[&] {
             wi_obj* m = wi_mk_menubar(place(), 1);
             wi_menubar_pulldown(m, "a");
             for (int i = 0; i < 21; ++i) wi_menubar_button(m, "b", 0, nullptr, 0);
         },
         "PE 12, wimenubar.c: pulldown full."},
    };
    for (const auto& c : cases) EXPECT_EQ(fatal_text(c.misuse), c.text);
    EXPECT_EQ(rec.log.back().op, "fatal");
}

TEST_F(tree, TablesDropWhatIsTooMuch) {
    wi_obj* wo = window();
    for (int i = 0; i < 20100; ++i) setwiobject(100000 + i, wo);
    EXPECT_EQ(getwiobject(100000), wo);
    EXPECT_EQ(getwiobject(100000 + 20099), nullptr);
    int last = 0;
    for (int i = 0; i < 401; ++i) last = setmenuinfo({.menubar = wo, .pulldown = i, .button = 0});
    EXPECT_EQ(last, -1);
    EXPECT_EQ(getmenuid({.menubar = wo, .pulldown = 399, .button = 0}), 399);
    ASSERT_TRUE(getmenuinfo(399));
    EXPECT_EQ(getmenuinfo(400), nullptr);
    EXPECT_EQ(getmenuinfo(-1), nullptr);
}

TEST_F(tree, OnShowsAllAndOffHidesABranchOrAWindow) {
    wi_obj* fm = window();
    wi_obj* box = wi_mk_frame(wi_form_parent(fm, 0, 0, 60, 30));
    wi_obj* n = wi_mk_incdecfld(box, "n", 0.5, 1);
    const port_win field = entry(std::get<wi_incdecfld>(n->obj).numfld);
    wi_obj* l = wi_mk_listsel(wi_form_parent(fm, 0, 30, 60, 60), "l", 0, 0.5, {"a"});
    wi_on(fm);
    EXPECT_EQ(rec.raised(), fm->shell->handle);
    EXPECT_TRUE(wi_isvisible(n));
    EXPECT_TRUE(rec.visible(field));
    EXPECT_FALSE(rec.visible(l->wins[1])) << "the list in use alone is seen";
    EXPECT_TRUE(rec.visible(l->wins[2]));
    wi_off(box);
    EXPECT_FALSE(wi_isvisible(n));
    EXPECT_FALSE(rec.visible(field));
    EXPECT_FALSE(rec.visible(box->wins[0]));
    EXPECT_TRUE(rec.visible(l->wins[2]));
    wi_off(fm);
    EXPECT_FALSE(rec.visible(fm->shell->handle));
    EXPECT_FALSE(wi_isvisible(l));
    wi_on(fm);
    EXPECT_TRUE(rec.visible(field)) << "on shows everything below";
    wi_off(l);
    EXPECT_FALSE(rec.visible(l->wins[2]));
    wi_on(l);
    EXPECT_TRUE(rec.visible(l->wins[2]));
    EXPECT_FALSE(rec.visible(l->wins[1]));
}

TEST_F(tree, WhatIsAddedToAHiddenBranchComesUpWithIt) {
    wi_obj* fm = window();
    wi_obj* d = wi_mk_drect(wi_form_parent(fm, 0, 0, 60, 60), 1, 0.5);
    wi_mk_label(d, "a", 0);
    wi_on(fm);
    wi_off(d);
    wi_obj* late = wi_mk_button(d, "late", 0, nullptr, 0);
    EXPECT_FALSE(rec.visible(late->wins[0]));
    wi_on(d);
    EXPECT_TRUE(rec.visible(late->wins[0]));
    EXPECT_EQ(rect(late->wins[0]), (port_rect{300, 0, 300, 600}));
}

TEST_F(tree, GreyIsInheritedAndOwnGreyStays) {
    wi_obj* fm = window();
    wi_obj* a = wi_mk_button(wi_form_parent(fm, 0, 0, 30, 30), "a", 0, note_cb, 1);
    wi_obj* b = wi_mk_button(wi_form_parent(fm, 30, 0, 60, 30), "b", 0, note_cb, 2);
    wi_on(fm);
    wi_enable(a, 0);
    wi_enable(fm, 0);
    EXPECT_FALSE(rec.click("b"));
    EXPECT_FALSE(wi_isenabled(b));
    wi_obj* late = wi_mk_button(wi_form_parent(fm, 0, 30, 30, 60), "late", 0, note_cb, 3);
    EXPECT_FALSE(rec.click("late"));
    wi_enable(fm, 1);
    EXPECT_TRUE(rec.click("b"));
    EXPECT_TRUE(rec.click("late"));
    EXPECT_FALSE(rec.click("a"));
    wi_enable(a, 1);
    EXPECT_TRUE(rec.click("a"));
    EXPECT_EQ(calls, (std::vector<called>{{b, 2}, {late, 3}, {a, 1}}));
}

TEST_F(tree, TooltipsReachEveryPartOfAControl) {
    wi_obj* i = wi_mk_incdecfld(nullptr, "n", 0.5, 1);
    wi_set_tooltip(i, "how many");
    const wi_incdecfld& f = std::get<wi_incdecfld>(i->obj);
    for (const port_win win : {f.numfld->wins[0], f.numfld->wins[1], f.updownbut->wins[0]})
        EXPECT_EQ(rec.window(win).tooltip, "how many");
}

TEST_F(tree, AForeignTypeHoldsOneInnerObject) {
    auto record = std::make_shared<int>(7);
    wi_obj* fm = window();
    wi_obj* plot = wi_mk_holder(wi_form_parent(fm, 0, 0, 60, 60), wi_type::stdplt, record);
    wi_obj* inner = wi_mk_form(plot, 10, 10);
    wi_obj* a = wi_mk_button(wi_form_parent(inner, 0, 0, 5, 5), "a", 0, nullptr, 0);
    wi_on(fm);
    EXPECT_EQ(rect(a->wins[0]), (port_rect{0, 0, 300, 300}));
    EXPECT_EQ(wi_holder_record(plot, wi_type::stdplt), record.get());
    EXPECT_EQ(wi_holder_record(fm, wi_type::stdplt), nullptr);
    EXPECT_EQ(fatal_text([&] { wi_mk_label(plot, "", 0); }), "Error: cannot add a child to that object.");
    wi_off(plot);
    EXPECT_FALSE(rec.visible(a->wins[0]));
}

} // namespace
