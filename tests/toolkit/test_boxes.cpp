// File select and the pop-up boxes.
#include "fixture.h"

#include "support/temp_dir.h"

#include <cstdlib>
#include <filesystem>

using namespace norva;
using namespace norva::test;

namespace {

class boxes : public toolkit_test {
protected:
    ~boxes() override { unsetenv("QELM"); }
};

TEST_F(boxes, NamesWithoutDirectoryGoToTheDataDirectory) {
    struct {
        const char *qelm, *home, *name, *out;
    } const cases[] = {
        {"/q", "", "a.pfx", "/q/data/a.pfx"},       {"/q/", "", "a.pfx", "/q/data/a.pfx"},
        {"d:\\q\\", "", "a", "d:\\q\\data/a"},      {"/q", "", "sub/a.pfx", "sub/a.pfx"},
        {"/q", "", "sub\\a.pfx", "sub\\a.pfx"},     {"", "/opt/n", "a.pfx", "/opt/n/data/a.pfx"},
        {"/q", "/opt/n", "a.pfx", "/q/data/a.pfx"}, {"", "", "a.pfx", "a.pfx"},
    };
    for (const auto& c : cases) {
        if (*c.qelm)
            setenv("QELM", c.qelm, 1);
        else
            unsetenv("QELM");
        wi_hooks.home_dir = c.home;
        std::string out;
        wi_filesel_checkdir(c.name, out);
        EXPECT_EQ(out, c.out) << c.name;
    }
}

TEST_F(boxes, AFileIsChosenOrTyped) {
    temp_dir dir;
    std::filesystem::create_directory(dir.path() / "data");
    setenv("QELM", dir.path().c_str(), 1);
    wi_obj* s = wi_mk_filesel(nullptr, "Raw Data File:", "*.pf*", 0.3);
    wi_filesel_chng_cb(s, note_cb, 1);
    wi_on(s);
    rec.click("Open");
    ASSERT_EQ(rec.dialogs.size(), 1u);
    const port_file_request asked = rec.dialogs[0].request;
    EXPECT_EQ(asked.dir, dir.file("data") + "/");
    ASSERT_EQ(asked.filters.size(), 3u);
    EXPECT_EQ(asked.filters[0].name, "PF Files");
    EXPECT_EQ(asked.filters[0].patterns, (std::vector<std::string>{"*.pf*"}));
    EXPECT_EQ(asked.filters[1].name, "ZUV Files");
    EXPECT_EQ(asked.filters[1].patterns.size(), 8u);
    EXPECT_EQ(wi_filesel_getstr(s), "");
    rec.answer_file("/d/one.pfx");
    EXPECT_EQ(wi_filesel_getstr(s), "/d/one.pfx");
    rec.click("Open");
    rec.answer_file(""); // cancelled
    EXPECT_EQ(wi_filesel_getstr(s), "/d/one.pfx");
    EXPECT_EQ(calls, (std::vector<called>{{s, 1}}));
    rec.enter(entry(std::get<wi_filesel>(s->obj).strfld), "two.pfx");
    EXPECT_EQ(wi_get_string(s), "two.pfx");
    EXPECT_EQ(calls.size(), 2u);
    wi_set_string(s, "three");
    EXPECT_EQ(calls.size(), 2u);
    wi_filesel_editable(s, 0);
    EXPECT_FALSE(rec.click("Open"));
}

TEST_F(boxes, WhereTheChoiceStarts) {
    temp_dir dir;
    std::filesystem::create_directory(dir.path() / "sub");
    const std::string sub = dir.file("sub");
    struct {
        std::string set, starts, filter;
    } const cases[] = {
        {sub + "/*.rea", sub + "/", "*.rea"},
        {sub + "/x.jou", sub + "/", "*.jou*"}, // a file: its directory, and the filter as before
        {sub, sub, "*.jou*"},
        {"x.jou", "", "*.jou*"}, // the current directory
        {sub + "/not/there/*.pf*", "", "*.pf*"},
    };
    for (const auto& c : cases) {
        wi_obj* box = wi_mk_filebox(nullptr, "t", "jou*", nullptr, 0);
        wi_set_dir(box, c.set);
        wi_on(box);
        const port_file_request& asked = rec.dialogs.back().request;
        EXPECT_EQ(asked.dir, c.starts) << c.set;
        EXPECT_EQ(asked.filters[0].patterns[0], c.filter) << c.set;
    }
}

TEST_F(boxes, MessagesAndQuestionsReturnAtOnce) {
    wi_obj* m = wi_mk_msgbox(nullptr, "careful");
    wi_obj* q = wi_mk_ynbox(nullptr, "sure?", note_cb, 1, note_cb, 2);
    wi_on(m);
    wi_set_message(m, "very");
    wi_msgbox_popup(m);
    rec.yes_no_answers = {true, false};
    wi_on(q);
    wi_ynbox_popup(q);
    EXPECT_TRUE(calls.empty());
    rec.run_pending();
    EXPECT_EQ(calls, (std::vector<called>{{q, 1}, {q, 2}}));
    ASSERT_EQ(rec.dialogs.size(), 4u);
    EXPECT_EQ(rec.dialogs[0].title, "Message:");
    EXPECT_EQ(rec.dialogs[1].text, "very");
    EXPECT_EQ(rec.dialogs[2].title, "Question:");
    EXPECT_TRUE(rec.tops().empty()) << "a box takes no window of the tree";
}

TEST_F(boxes, EditBoxAsksForALine) {
    wi_obj* e = wi_mk_editbox(nullptr, "Name?", note_cb, 3);
    wi_editbox_putstr(e, "old");
    wi_on(e);
    const port_win top = rec.tops().at(0);
    const port_win field = rec.all(port_kind::field).at(0);
    EXPECT_EQ(rec.focused(), field);
    EXPECT_EQ(rec.get_text(field), "old");
    rec.enter(field, "new");
    EXPECT_EQ(wi_editbox_getstr(e), "new");
    EXPECT_FALSE(rec.visible(top));
    wi_on(e);
    rec.type(field, "er");
    rec.click("Cancel");
    EXPECT_EQ(wi_editbox_getstr(e), "new");
    wi_on(e);
    EXPECT_EQ(rec.get_text(field), "new") << "what was cancelled is gone";
    EXPECT_FALSE(rec.close(top));
    EXPECT_FALSE(rec.visible(top)) << "closing hides it";
    wi_on(e);
    rec.click("OK");
    EXPECT_EQ(calls, (std::vector<called>{{e, 3}, {e, 3}}));
    EXPECT_EQ(rec.tops().size(), 1u);
}

} // namespace
