// Start, close, paints, mouse, focus order, help.
#include "fixture.h"

using namespace norva;
using namespace norva::test;

namespace {

using events = toolkit_test;

TEST(command_line, WordsAreRunsOfOtherCharacters) {
    using words = std::vector<std::string>;
    const auto rest = [](std::string_view line) {
        words w = parsecommandline(line);
        w.erase(w.begin());
        return w;
    };
    EXPECT_EQ(rest(""), words{});
    EXPECT_EQ(rest("  a\tb\n \"c d\" "), (words{"a", "b", "\"c", "d\""}));
    EXPECT_EQ(rest(std::string_view("a\0\0b", 4)), (words{"a", "b"}));
    EXPECT_EQ(parsecommandline("x").size(), 2u);
}

TEST_F(events, HelpeditCountsInLastPlaceOnly) {
    char program[] = "p", help[] = "helpedit", other[] = "x";
    char* last[] = {program, other, help, nullptr};
    char* first[] = {program, help, other, nullptr};
    int argc = 3;
    wi_main_init(argc, first);
    EXPECT_EQ(argc, 3);
    EXPECT_FALSE(wi_help_edit());
    wi_main_init(argc, last);
    EXPECT_EQ(argc, 2);
    EXPECT_TRUE(wi_help_edit());
}

TEST_F(events, TheLoopStartsAfterTheApplicationsMain) {
    static int running_in_main, words;
    static std::string second;
    running_in_main = -1;
    char program[] = "/bin/n", a[] = "raw file.pfx";
    char* argv[] = {program, a, nullptr};
    const int code = WinMain(2, argv, [](int argc, char** arg) {
        running_in_main = isrunning;
        words = argc;
        second = arg[2];
        wi_on(wi_mk_drawarea(nullptr, note_cb, 0, note_cb, 1));
        wi_quit(3);
    });
    EXPECT_EQ(running_in_main, 0);
    EXPECT_EQ(isrunning, 1);
    EXPECT_EQ(words, 3);
    EXPECT_EQ(second, "file.pfx");
    EXPECT_EQ(code, 3);
    EXPECT_EQ(calls.size(), 1u) << "the first paint came from the loop";
}

TEST_F(events, ClosingFollowsTheWindowsRule) {
    static bool safe;
    wi_obj* fm = window();
    const port_win top = fm->shell->handle;
    wi_on(fm);
    EXPECT_FALSE(rec.close(top)) << "not enabled";
    EXPECT_TRUE(rec.visible(top));
    wi_zuvapp_quit(fm, 1, "QUIT", note_cb, 26);
    EXPECT_FALSE(rec.close(top)) << "the callback decides";
    EXPECT_EQ(calls, (std::vector<called>{{fm->shell, 26}}));
    EXPECT_TRUE(rec.visible(top));
    wi_zuvapp_quit(fm, 1, "QUIT", nullptr, 0);
    wi_hooks.crsh_safe = [] { return safe; };
    safe = false;
    EXPECT_FALSE(rec.close(top));
    EXPECT_FALSE(rec.has_quit);
    safe = true;
    EXPECT_TRUE(rec.close(top));
    EXPECT_TRUE(rec.has_quit);
    EXPECT_EQ(rec.quit_code, 0);
}

TEST_F(events, PaintsAreResizesOnceAndExposesAfter) {
    wi_obj* fm = window();
    wi_obj* a = wi_mk_drawarea(wi_form_parent(fm, 0, 0, 30, 60), note_cb, 0, note_cb, 1);
    wi_obj* b = wi_mk_drawarea(wi_form_parent(fm, 30, 0, 60, 60), note_cb, 10, nullptr, 11);
    const port_win win = wi_drawarea_getwidget(a);
    wi_on(fm);
    rec.run_pending();
    EXPECT_TRUE(calls.empty()) << "not running yet";
    isrunning = 1;
    rec.expose(win);
    rec.expose(win);
    rec.move(fm->shell->handle, {50, 60, 600, 600}); // moved, not resized
    rec.expose(win);
    rec.resize(fm->shell->handle, 500, 600);
    rec.run_pending();
    rec.expose(wi_drawarea_getwidget(b)); // areas do not disturb each other
    rec.expose(win);
    EXPECT_EQ(calls, (std::vector<called>{{a, 1}, {a, 0}, {a, 0}, {a, 1}, {b, 10}, {b, 10}, {a, 0}}));
    wi_drawarea_expose_cb(a, nullptr, 0);
    rec.expose(win);
    EXPECT_EQ(calls.size(), 7u);
}

TEST_F(events, TheMouseTellsItsButton) {
    static std::string said;
    said.clear();
    const wi_mouse_cb say = [](wi_obj*, int tag, int x, int y, int button) {
        said += std::to_string(tag) + ':' + std::to_string(x) + ',' + std::to_string(y) + ',' +
                std::to_string(button) + ' ';
    };
    wi_obj* a = wi_mk_drawarea(nullptr, nullptr, 0, nullptr, 0);
    const port_win win = wi_drawarea_getwidget(a);
    wi_on(a);
    EXPECT_FALSE(rec.free_move(win, 1, 1));
    for (int kind = 0; kind < 4; ++kind) wi_drawarea_mouse_cb(a, kind, say, kind);
    rec.press(win, 5, 6, 2);
    rec.drag(win, -7, 8, 2);
    rec.press(win, 1, 1, 0); // a second button: drags are its own until it goes up
    rec.drag(win, 2, 2, 0);
    rec.release(win, 3, 3, 0);
    rec.drag(win, 4, 4, 2);
    rec.release(win, 9, 9, 2);
    rec.free_move(win, 3, 4);
    EXPECT_EQ(said, "0:5,6,2 2:-7,8,2 0:1,1,0 2:2,2,0 1:3,3,0 2:4,4,2 1:9,9,2 3:3,4,0 ");
    wi_drawarea_mouse_cb(a, 3, nullptr, 0);
    EXPECT_FALSE(rec.free_move(win, 1, 1)) << "reporting is switched off with the callback";
    wi_drawarea_mouse_cb(a, 0, nullptr, 0);
    said.clear();
    rec.press(win, 1, 1);
    EXPECT_EQ(said, "");
}

TEST_F(events, TabFollowsTheTree) {
    wi_obj* fm = window();
    const auto place = [&](int row) { return wi_form_parent(fm, 0, row, 60, row + 1); };
    wi_mk_label(place(0), "title", 0);
    wi_obj* n = wi_mk_numfld(place(1), "n", 0.5, 0);
    wi_obj* locked = wi_mk_numfld(place(2), "locked", 0.5, 0);
    wi_obj* i = wi_mk_incdecfld(place(3), "i", 0.5, 1);
    wi_obj* d = wi_mk_drect(place(4), 1, 0.5);
    wi_obj* hidden = wi_mk_strfld(d, "hidden", 0.5);
    wi_obj* s = wi_mk_strfld(d, "s", 0.5);
    wi_obj* a = wi_mk_butary(place(5), 1, 3);
    wi_obj* b1 = wi_butary_button(a, "b1", 0, nullptr, 0);
    wi_butary_blank(a);
    wi_obj* b2 = wi_butary_button(a, "b2", 0, nullptr, 0);
    wi_obj* l = wi_mk_listsel(place(6), "l", 0, 0.5, {"x"});
    wi_mk_drawarea(place(7), nullptr, 0, nullptr, 0);
    wi_obj* grey = wi_mk_button(place(8), "grey", 0, nullptr, 0);
    wi_obj* f = wi_mk_filesel(place(9), "f", "", 0.5);
    wi_numfld_editable(locked, 0);
    wi_enable(grey, 0);
    wi_activate_first(fm);
    EXPECT_EQ(rec.focused(), entry(n)) << "before the window is up";
    wi_on(fm);
    wi_off(hidden);
    const wi_filesel& file = std::get<wi_filesel>(f->obj);
    const std::vector<port_win> order = {entry(n),           entry(std::get<wi_incdecfld>(i->obj).numfld),
                                         entry(s),           b1->wins[0],
                                         b2->wins[0],        l->wins[2],
                                         entry(file.strfld), file.button->wins[0]};
    for (std::size_t k = 0; k < order.size(); ++k) {
        const port_win next = order[(k + 1) % order.size()];
        rec.tab(order[k]);
        EXPECT_EQ(rec.focused(), next) << k;
        rec.tab(next, true);
        EXPECT_EQ(rec.focused(), order[k]) << k;
    }
    wi_activate_next(a); // from a composite: past all of it
    EXPECT_EQ(rec.focused(), l->wins[2]);
    wi_activate_prev(a);
    EXPECT_EQ(rec.focused(), entry(s));
    wi_activate_first(d);
    EXPECT_EQ(rec.focused(), entry(s));
    wi_activate_first(wi_mk_label(nullptr, "nothing to focus", 0));
    EXPECT_EQ(rec.focused(), entry(s));
}

TEST_F(events, HelpKeysComeFromTheWindowAndTheLabel) {
    static std::vector<std::string> keys;
    keys.clear();
    wi_hooks.help = [](const std::string& key) { keys.push_back(key); };
    wi_obj* fm = window();
    wi_obj* n = wi_mk_numfld(wi_form_parent(fm, 0, 0, 60, 10), "Start Time (sec):", 0.5, 2);
    wi_obj* i = wi_mk_incdecfld(wi_form_parent(fm, 0, 10, 60, 20), "Time:", 0.5, 1);
    wi_obj* b = wi_mk_button(wi_form_parent(fm, 0, 20, 60, 30), "QUIT", 0, nullptr, 0);
    wi_obj* e = wi_mk_editpage(wi_form_parent(fm, 0, 30, 60, 40));
    wi_on(fm);
    rec.help(b->wins[0]);
    wi_hlp_setprog(b, "norva");
    rec.help(b->wins[0]);
    rec.help(n->wins[0]);
    rec.help(e->wins[0]);
    rec.help(std::get<wi_incdecfld>(i->obj).updownbut->wins[0]);
    wi_hlp_setstr(i, "help:norva:decimation");
    rec.help(entry(std::get<wi_incdecfld>(i->obj).numfld));
    EXPECT_EQ(keys, (std::vector<std::string>{"help:quit", "help:norva:quit", "help:norva:start time (sec)",
                                              "help:norva", "help:norva:time", "help:norva:decimation"}));
    wi_hooks.help = nullptr;
    rec.help(b->wins[0]); // nobody listens
}

} // namespace
