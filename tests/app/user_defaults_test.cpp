// The defaults file and its window.
#include "app/user_defaults.h"
#include "workstation.h"

#include <cmath>
#include <cstdlib>

namespace norva {
namespace {

class user_defaults : public test::workstation {
protected:
    user_defaults() {
        std::filesystem::create_directory("home");
        setenv("HOME", dir.file("home").c_str(), 1);
    }
    static std::string file_with(int autoload, float nti) {
        defaults d;
        norva_init_defaults(d);
        d.mwi_nti = nti;
        d.fltr = "*.dat";
        return defaults_text(d, autoload);
    }
};

TEST_F(user_defaults, text_form) {
    defaults d;
    norva_init_defaults(d);
    const std::string text = defaults_text(d, 1);
    EXPECT_EQ(text.find("1.000000\n*.pf*\n0.900000\n0.300000\n0.050000\n100.000000\n"), 0u);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 40);
    d.fltr = "with blank";
    EXPECT_NE(defaults_text(d, 0).find("\nwith\n0.9"), std::string::npos);
    d.fltr = "";
    EXPECT_NE(defaults_text(d, 0).find("\n*.pf*\n0.9"), std::string::npos);
}

TEST_F(user_defaults, first_place_and_flag) {
    start(); // no file anywhere
    EXPECT_EQ(def.mwi_nti, 9);
    EXPECT_EQ(def.fname, "default.dflt");

    test::write_all("home/h.dflt", file_with(1, 21));
    start();
    EXPECT_EQ(def.mwi_nti, 21);
    EXPECT_EQ(def.fltr, "*.dat");
    EXPECT_EQ(dflt_autoload_flag, 1);
    EXPECT_EQ(def.fname, dir.file("home") + "/h.dflt");

    // One here hides it, even with its flag off; of two the first by name counts.
    test::write_all("b.dflt", file_with(1, 33));
    test::write_all("a.dflt", file_with(0, 44));
    start();
    EXPECT_EQ(def.mwi_nti, 9);
    EXPECT_EQ(def.fltr, "*.pf*");
    EXPECT_EQ(def.fname, "a.dflt");
    EXPECT_TRUE(messages.empty());
}

TEST_F(user_defaults, damaged_files_are_taken_whole_or_not_at_all) {
    start();
    const std::string good = file_with(1, 21);
    const std::size_t lines = 40;
    std::vector<std::string> bad = {"", "x", "1.0\n*.pf*\n", std::string(300, '\0'),
                                    good.substr(0, good.size() - 9)};
    for (std::size_t line = 2; line < lines; line += 5) { // one number at a time
        std::string text;
        std::size_t at = 0;
        for (std::size_t i = 0; i < lines; i++) {
            const std::size_t end = good.find('\n', at);
            text += (i == line ? "1.5x" : good.substr(at, end - at)) + "\n";
            at = end + 1;
        }
        bad.push_back(text);
    }
    bad.push_back(file_with(1, NAN));
    bad.push_back(file_with(1, INFINITY));
    for (const std::string& text : bad) {
        test::write_all("bad.dflt", text);
        messages.clear();
        def.mwi_nti = 5;
        EXPECT_EQ(rw_dflt_file("bad.dflt", "r"), 0);
        EXPECT_EQ(messages, std::vector<std::string>{"Unable to open file!"});
        EXPECT_EQ(def.mwi_nti, 5);
        EXPECT_EQ(def.fltr, "*.pf*");
        EXPECT_EQ(def.cbox_xsz, 0.9f);
    }
    EXPECT_EQ(rw_dflt_file(".", "r"), 0);
    EXPECT_EQ(rw_dflt_file("missing.dflt", "r"), 0);
    EXPECT_EQ(rw_dflt_file("no/such/folder.dflt", "w"), 0);
    start(); // the damaged file at start: told once there is a window
    EXPECT_EQ(def.mwi_nti, 9);
    EXPECT_TRUE(rec->find(port_kind::label, "Unable to open file!"));
}

TEST_F(user_defaults, window) {
    start();
    ASSERT_TRUE(click("User Defaults"));
    const port_win top = rec->find(port_kind::top, "NORVA: defaults");
    const std::vector<port_win> fields = rec->all(port_kind::field, top);
    const auto visible = [&] {
        return std::count_if(fields.begin(), fields.end(), [&](port_win f) { return rec->visible(f); });
    };
    EXPECT_EQ(visible(), 18 + 2);
    EXPECT_EQ(rec->window(fields[1]).text, "100.0000");
    rec->enter(fields[1], "50");
    rec->enter(fields[2], "1e999"); // nothing that could be read back
    ASSERT_TRUE(click("NEXT"));
    EXPECT_EQ(visible(), 18 + 2);
    EXPECT_FALSE(rec->visible(fields[0]));
    EXPECT_TRUE(rec->visible(fields[35]));
    ASSERT_TRUE(click("PREV"));
    ASSERT_TRUE(click("Do not load default file upon program start"));
    ASSERT_TRUE(rec->click(rec->find(port_kind::button, "WRITE", top)));
    EXPECT_EQ(def.pi_npmx, 50);
    EXPECT_TRUE(messages.empty());
    start();
    EXPECT_EQ(def.pi_npmx, 50);
    EXPECT_EQ(def.pi_npmx_max, 200);
    EXPECT_EQ(dflt_autoload_flag, 1);
    ASSERT_TRUE(click("User Defaults"));
    EXPECT_TRUE(rec->find(port_kind::toggle, "Load default file upon program start"));
    ASSERT_TRUE(click("DISMISS"));
    EXPECT_FALSE(rec->visible(top));
}

} // namespace
} // namespace norva
