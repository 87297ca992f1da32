// Whole analyses: each step journaled, positions gone to and come back from, saved, replayed in a new run,
// resumed after a kill. Truth: the same samples, bit for bit.
#include "workstation.h"

#include "app/gpf.h"
#include "journal/store.h"
#include "state/defaults.h"
#include "zuvsys/strprintf.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>

namespace norva {
namespace {

using test::gate_scene;
using test::write_gate;

struct position_state {
    std::vector<float> data, profiles;
    int nf0, nf, nt0, nt, mc_ptr;
    bool window;
    bool operator==(const position_state&) const = default;
};

class analysis : public test::workstation {
protected:
    // A scatterer 5 gates off that drifts by an eighth of a gate each record.
    void SetUp() override {
        gate_scene scene;
        scene.delay = [bw = scene.bw()](double t) { return (5 + 12.5 * t) / bw; };
        scene.plen = 0.004;
        write_gate("drift.pfx", scene);
        start();
    }

    // What the window that is up shows; a Doppler window shows nothing before it is initialised.
    static std::vector<float> shown() {
        dp_gate gate;
        if (rpwinon) return copy(user.rpdata);
        if (dpwinon && strongest_doppler_gate(gate)) return copy(user.dpdata);
        return {};
    }

    static position_state state() {
        return {samples(), shown(), user.nf0, user.nf, user.nt0, user.nt, user.mc.ptr, rpwinon || dpwinon};
    }

    // The step just made, remembered under its position.
    void remember() { seen_[user.count] = state(); }

    void narrow(int nf0, int nf, int nt0, int nt) {
        if (user.pstyle == 0) click("Input Parameter Style");
        const double values[4] = {double(nf0), double(nf), double(nt0), double(nt)};
        for (int i = 0; i < 4; i++) wi_numfld_putval(main_window().numfld[i], values[i]);
    }

    void decimate(int time, int frequency) {
        wi_set_value(main_window().decimation[0], time);
        wi_set_value(main_window().decimation[1], frequency);
        ASSERT_TRUE(click("Decimate"));
    }

    // Two visits of the range window with five corrections, the second with a narrower window.
    void analyse() {
        open("drift.pfx");
        narrow(1, 32, 2, 23);
        ASSERT_TRUE(click("Range Prof"));
        remember();
        ASSERT_TRUE(click("Rmv Drift"));
        remember();
        xrp_mocomp(0, 3.0);
        rec->run_pending();
        remember();
        ASSERT_TRUE(click("DISMISS"));
        remember();
        narrow(3, 25, 5, 15);
        ASSERT_TRUE(click("Range Prof"));
        remember();
        xrp_mocomp(2, 0.01);
        remember();
        ASSERT_TRUE(click("Rmv Ambs"));
        const port_win dialog = rec->find(port_kind::top, "Remove Doppler Ambs");
        ASSERT_TRUE(dialog);
        rec->enter(rec->all(port_kind::field, dialog).at(0), "2"); // the return key applies
        rec->run_pending();
        remember();
        ASSERT_TRUE(messages.empty()) << messages[0];
    }

    void expect_position(int position) {
        SCOPED_TRACE(testing::Message() << "position " << position);
        go_to(position);
        EXPECT_EQ(user.count, position);
        const position_state &now = state(), &then = seen_.at(position);
        EXPECT_EQ(now.nf0, then.nf0);
        EXPECT_EQ(now.nf, then.nf);
        EXPECT_EQ(now.nt0, then.nt0);
        EXPECT_EQ(now.nt, then.nt);
        EXPECT_EQ(now.mc_ptr, then.mc_ptr);
        EXPECT_EQ(now.window, then.window);
        EXPECT_TRUE(now.data == then.data);
        EXPECT_TRUE(now.profiles == then.profiles);
        EXPECT_EQ(managing, 0);
    }
    void expect_every_position() {
        for (int position = 1; position <= eoj; position++) expect_position(position);
        for (int position = eoj; position >= 1; position--) expect_position(position);
        for (int position : {1, eoj, 4, 0, 2, eoj})
            if (position == 0)
                go_to(0);
            else
                expect_position(position);
    }

    std::map<int, position_state> seen_;
};

// Range, Doppler and decimation steps mixed, in narrowing windows.
TEST_F(analysis, mixed_steps_of_every_kind) {
    open("drift.pfx");
    narrow(1, 30, 1, 24);
    const auto step = [&](const char* text) {
        ASSERT_TRUE(click(text)) << text << " at " << user.count;
        remember();
    };
    step("Range Prof");
    xrp_mocomp(2, 0.12);
    remember();
    step("Rmv Drift");
    step("DISMISS");
    step("Doppler Prof");
    step("INITIALIZE");
    xdp_set_position(1.25);
    xdp_mocomp(0);
    remember();
    step("Rmv Drift");
    step("DISMISS");
    decimate(1, 2);
    remember();
    narrow(2, 12, 1, 24);
    step("Range Prof");
    ASSERT_TRUE(click("Rmv Ambs"));
    rec->enter(rec->all(port_kind::field, rec->find(port_kind::top, "Remove Doppler Ambs")).at(0), "-3");
    rec->run_pending();
    remember();
    step("DISMISS");
    step("Doppler Prof");
    step("INITIALIZE");
    step("DISMISS");
    ASSERT_TRUE(messages.empty()) << messages[0];
    ASSERT_EQ(eoj, 16);
    expect_every_position();
    ASSERT_TRUE(click("SAVE"));
    start();
    open_journal("drift.jou;1");
    ASSERT_TRUE(messages.empty()) << messages[0];
    expect_every_position();
}

TEST_F(analysis, decimation_refused_or_without_effect) {
    open("drift.pfx");
    decimate(1, 1);
    EXPECT_EQ(messages, (std::vector<std::string>{"Warning: data should be motion compensated first!",
                                                  "No decimation done!"}));
    EXPECT_EQ(user.pstyle, 0); // as it was
    EXPECT_EQ(user.mc.ptr, 0);

    // 23 records are no good length: the last is cut off, which alone is no decimation.
    narrow(1, 32, 1, 23);
    decimate(1, 1);
    EXPECT_EQ(user.nt, 23);
    const float f0 = user.f0, bw = user.bw;
    decimate(1, 2);
    EXPECT_EQ(user.nf, 16);
    EXPECT_EQ(user.nt, 20);
    EXPECT_EQ(user.mc.nt[0], 20);
    // The span stands; the steps have grown, and a later window counts in them.
    EXPECT_EQ(user.f0, f0);
    EXPECT_EQ(user.bw, bw);
    EXPECT_FLOAT_EQ(user.df, 8);
    narrow(2, 15, 3, 18);
    ASSERT_TRUE(click("Range Prof"));
    EXPECT_FLOAT_EQ(user.f0, f0 + 8);
    EXPECT_FLOAT_EQ(user.t0, 2 * user.dt);
}

TEST_F(analysis, decimated_to_the_smallest_size) {
    open("drift.pfx");
    const float bw = 32 * 4.0f, dwell = 24 * 0.01f;
    decimate(1'000'000, 1'000'000);
    EXPECT_EQ(user.nf, 2);
    EXPECT_EQ(user.nt, 2);
    EXPECT_FLOAT_EQ(user.bw, bw);
    EXPECT_FLOAT_EQ(user.dwell, dwell);
    remember();
    messages.clear();
    decimate(3, 7);
    click("Range Prof");
    click("Doppler Prof");
    EXPECT_EQ(messages,
              (std::vector<std::string>{"No decimation done!", "The number of time pulses must be >= 3",
                                        "The number of time pulses must be >= 3"}));
    EXPECT_EQ(eoj, 1);
    go_to(0);
    expect_position(1);
    click("SAVE");
    start();
    open_journal("drift.jou;1");
    expect_position(1);
}

// Whatever is typed, wherever, and whatever is pressed then: the window of data stays inside the file.
TEST_F(analysis, absurd_values_in_every_field) {
    open("drift.pfx");
    const char* const windows[] = {"NORVA: main",     "NORVA: range profile",    "NORVA: Doppler profile",
                                   "NORVA: defaults", "NORVA: profile plotting", "Remove Doppler Ambs"};
    const char* const buttons[] = {
        "Range Prof", "Plot",      "Rmv Ambs", "Apply",        "Rmv Drift",
        "Zoom",       "Downsize",  "DISMISS",  "Doppler Prof", "INITIALIZE",
        "Center",     "Rmv Drift", "Plot",     "Zoom",         "Unzoom",
        "Downsize",   "DISMISS",   "DISMISS",  "Decimate",     "User Defaults",
        "WRITE",      "NEXT",      "DISMISS",  "SAVE",         "Input Parameter Style"};
    for (const char* text : {"1e30", "-1e30", "1e999", "-7", "0", "", "1e-30", "2.7", "9999999999", "."})
        for (const char* button : buttons) {
            for (const char* window : windows)
                if (const port_win top = rec->find(port_kind::top, window))
                    for (port_win field : rec->all(port_kind::field, top))
                        if (rec->visible(field) && rec->window(field).text.find("drift") == std::string::npos)
                            rec->enter(field, text);
            rec->run_pending();
            if (msgwinon) click("ACKNOWLEDGE");
            click(button);
            ASSERT_GE(user.nf, 1) << text << " then " << button;
            ASSERT_GE(user.nt, 1);
            ASSERT_LE(user.nf0 + user.nf - 1, 32);
            ASSERT_LE(user.nt0 + user.nt - 1, 24);
            for (const default_row& row : default_rows()) ASSERT_TRUE(std::isfinite(def.*row.field));
        }
    while ((rpwinon || dpwinon) && click("DISMISS")) {
    }
    EXPECT_EQ(rpwinon + dpwinon, 0);
}

TEST_F(analysis, saved_and_replayed_in_a_new_run) {
    analyse();
    const int last = eoj;
    ASSERT_TRUE(click("DISMISS"));
    remember();
    ASSERT_TRUE(click("SAVE"));
    EXPECT_EQ(eoj, 0);
    EXPECT_TRUE(std::filesystem::exists("drift.jou;1"));
    EXPECT_TRUE(std::filesystem::exists("drift.mc;1"));
    EXPECT_FALSE(std::filesystem::exists("norva.mc.sav"));
    const std::string saved = test::read_all("drift.jou;1");

    start();
    open_journal("drift.jou;1");
    ASSERT_TRUE(messages.empty()) << messages[0];
    EXPECT_EQ(eoj, last + 1);
    EXPECT_EQ(user.count, eoj);
    EXPECT_EQ(user.jfile, "drift.jou;2");
    expect_every_position();

    // A step goes to the new version; the opened journal stays as it was.
    expect_position(3);
    xrp_mocomp(0, -1);
    EXPECT_EQ(eoj, 4);
    EXPECT_EQ(test::read_all("drift.jou;1"), saved);
    EXPECT_TRUE(std::filesystem::exists("drift.jou;2"));
}

TEST_F(analysis, replayed_from_another_folder) {
    analyse();
    click("DISMISS");
    click("SAVE");
    std::filesystem::create_directory("moved");
    std::filesystem::rename("drift.pfx", "moved/drift.pfx");
    std::filesystem::rename("drift.jou;1", "moved/drift.jou;1");
    start();
    open_journal("moved/drift.jou;1");
    ASSERT_TRUE(messages.empty()) << messages[0];
    EXPECT_EQ(user.rdfile, "moved/drift.pfx");
    expect_position(6);

    start();
    std::filesystem::remove("moved/drift.pfx");
    open_journal("moved/drift.jou;1");
    ASSERT_FALSE(messages.empty());
    EXPECT_NE(messages[0].find("Unable to open file drift.pfx for reading!"), std::string::npos);
    EXPECT_EQ(eoj, 0);
    EXPECT_TRUE(user.rdfile.empty());
    EXPECT_TRUE(std::filesystem::exists("moved/drift.jou;1"));
}

TEST_F(analysis, resumed_after_a_kill) {
    analyse();
    const int last = eoj;
    const std::string name = user.jfile;
    killed();
    EXPECT_EQ(eoj, 0);
    open_journal(name);
    ASSERT_TRUE(messages.empty()) << messages[0];
    EXPECT_EQ(eoj, last);
    expect_every_position();

    // Looked at and left without saving: it can be opened again, whatever becomes of the crash file.
    click("DISMISS");
    click("QUIT");
    click("No");
    std::filesystem::remove("norva.mc.sav");
    start();
    open_journal("drift.jou;2");
    ASSERT_TRUE(messages.empty()) << messages[0];
    EXPECT_EQ(eoj, last);
    expect_position(last);
}

// The data follow the window also when a narrower one was typed, looked at in the other style, or refused.
TEST_F(analysis, windows_typed_and_not_used) {
    open("drift.pfx");
    narrow(1, 32, 1, 24);
    ASSERT_TRUE(click("Range Prof"));
    ASSERT_TRUE(click("DISMISS"));
    narrow(4, 20, 3, 18);
    ASSERT_TRUE(click("Input Parameter Style"));
    ASSERT_TRUE(click("Input Parameter Style"));
    narrow(1, 40, 1, 24); // the file's whole width, and more
    ASSERT_TRUE(click("Range Prof"));
    EXPECT_EQ(messages.size(), 1u); // refused: wider than the one in force
    messages.clear();
    narrow(5, 20, 3, 18);
    ASSERT_TRUE(click("Range Prof"));
    EXPECT_TRUE(messages.empty());
    const std::vector<float> live = samples();
    ASSERT_EQ(live.size(), 2u * 20 * 18);
    go_to(user.count);
    EXPECT_TRUE(samples() == live);

    // Position 0 is free again.
    go_to(0);
    click("Input Parameter Style");
    narrow(1, 32, 1, 24);
    ASSERT_TRUE(click("Range Prof"));
    EXPECT_TRUE(messages.empty());
    EXPECT_EQ(user.nt, 24);
}

// A journal that was opened belongs to the user, whatever happens to it here.
TEST_F(analysis, opened_journals_are_never_deleted) {
    analyse();
    click("DISMISS");
    click("SAVE");
    std::filesystem::rename("drift.jou;1", "a;b.jou;1");
    std::string broken = test::read_all("a;b.jou;1");
    for (std::size_t i = broken.size() - 600; i < broken.size(); i++) broken[i] = '\x7f';
    test::write_all("broken.jou", broken);
    for (const char* name : {"a;b.jou;1", "broken.jou"}) {
        const std::string bytes = test::read_all(name);
        start();
        open_journal(name);
        if (rpwinon) click("DISMISS");
        click("QUIT");
        click("No");
        EXPECT_TRUE(rec->has_quit);
        EXPECT_TRUE(test::read_all(name) == bytes) << name;
    }
}

TEST_F(analysis, raw_file_gone_while_a_window_is_up) {
    analyse();
    std::filesystem::rename("drift.pfx", "away.pfx");
    mng_jrnl(nullptr, 2);
    EXPECT_FALSE(messages.empty());
    EXPECT_FALSE(rpwinon);
    EXPECT_FALSE(user.pfdata);
    // Nothing is computed on data that lack the corrections; the journal brings all back.
    click("Range Prof");
    EXPECT_FALSE(rpwinon);
    std::filesystem::rename("away.pfx", "drift.pfx");
    expect_every_position();

    // Also when the next thing is an analysis, not a jump: its steps count.
    for (int position : {4, 0}) {
        go_to(eoj);
        std::filesystem::rename("drift.pfx", "away.pfx");
        go_to(position);
        std::filesystem::rename("away.pfx", "drift.pfx");
        ASSERT_TRUE(click("Range Prof"));
        EXPECT_EQ(rpwinon, 1);
        EXPECT_EQ(user.count, position + 1);
        EXPECT_EQ(eoj, position + 1);
        xrp_mocomp(0, 1);
        EXPECT_EQ(eoj, position + 2);
        EXPECT_EQ(user.mc.ptr, position == 4 ? 3 : 1);
        if (position == 4) {
            EXPECT_EQ(user.nt, 23);
        }
    }
}

// A position that could not be reached mutes the journal; what it holds is saved all the same.
TEST_F(analysis, saved_after_a_replay_that_failed) {
    for (const char* way_out : {"SAVE", "QUIT"}) {
        start();
        analyse();
        const int last = eoj;
        const std::string name = user.jfile;
        std::filesystem::rename("drift.pfx", "away.pfx");
        mng_jrnl(nullptr, 2);
        EXPECT_FALSE(rpwinon);
        click(way_out);
        if (way_out == std::string("QUIT")) click("Yes");
        std::filesystem::rename("away.pfx", "drift.pfx");
        start();
        open_journal(name);
        ASSERT_TRUE(messages.empty()) << messages[0];
        EXPECT_EQ(eoj, last);
        expect_every_position();
        open("drift.pfx");
        seen_.clear();
    }
}

TEST_F(analysis, a_new_step_drops_the_steps_ahead) {
    analyse();
    expect_position(2);
    xrp_mocomp(0, 1);
    EXPECT_EQ(eoj, 3);
    EXPECT_EQ(user.mc.ptr, 2);
    EXPECT_EQ(user.mc.nrecs, 2);
    mng_jrnl(nullptr, 1);
    EXPECT_EQ(messages, std::vector<std::string>{"End of journal!"});
}

TEST_F(analysis, position_field_and_keys) {
    analyse();
    EXPECT_FALSE(rec->enter(rec->all(port_kind::field, rec->find(port_kind::top, "NORVA: main")).at(2), "1"));
    EXPECT_TRUE(rec->shortcut(getparenthandle(xrp_window()), 'Z'));
    EXPECT_EQ(user.count, 6);
    EXPECT_TRUE(rec->shortcut(getparenthandle(xrp_window()), 'Y'));
    EXPECT_EQ(user.count, 7);
    go_to(0);
    // Position 0 is the whole file, but the records chosen stay chosen.
    EXPECT_EQ(wi_numfld_getval(main_window().numfld[2]), 1);
    EXPECT_EQ(wi_numfld_getval(main_window().numfld[1]), 32);
    EXPECT_EQ(wi_get_int(main_window().jfld), 0);
    EXPECT_FALSE(rpwinon);
}

TEST_F(analysis, listing) {
    analyse();
    click("DISMISS");
    ASSERT_TRUE(click("See Journal Info"));
    const std::string page = wi_editpage_getstr(main_window().epg);
    EXPECT_EQ(page.find("Journal File Operations\n\n"), 0u);
    for (const char* text : {"Initialization", "Range Profile (window)", "Remove Linear Drift (Mocomp)",
                             "Center Profiles (Mocomp)", "Dismiss (to main window)", "Remove Line (Mocomp)",
                             "Remove Doppler Ambiguities (Mocomp)"})
        EXPECT_NE(page.find(text), std::string::npos) << text;
    ASSERT_TRUE(click("See Raw Data File Info"));
    EXPECT_EQ(wi_editpage_getstr(main_window().epg).find("File Parameters for drift.pfx"), 0u);
}

TEST_F(analysis, quitting) {
    analyse();
    click("QUIT");
    click("Cancel");
    EXPECT_FALSE(rec->has_quit);
    click("QUIT");
    click("Yes");
    EXPECT_EQ(messages, std::vector<std::string>{"You must close all windows before quitting!"});
    EXPECT_FALSE(rec->has_quit);
    click("DISMISS");
    click("QUIT");
    click("Yes");
    EXPECT_TRUE(rec->has_quit);

    // The text file: frame (time, width, centre frequency, pulse, interval; kind, corrections, delays of the
    // first), then every correction with its delays. Centre: 9008 + 0.5 (32 - 1) 4.
    const std::string text = test::read_all("drift.mc;1");
    const std::string frame =
        "Output Motion Compensation File from NORVA\nData file: drift.pfx\nJournal file: drift.jou;1\n****\n"
        "0.040000\n100.000000\n9070.000000\n0.004000\n0.010000\n0\n4\n24\n24\n";
    EXPECT_EQ(text.substr(0, frame.size()), frame);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 12 + 2 * (1 + 24) + 2 * (1 + 16));
    // The second correction moves range by 3 gates of the 128 MHz there were: the same delay for all records.
    const std::string constant = strprintf("24\n%4.10f\n%4.10f\n", 3.0 / 128, 3.0 / 128);
    EXPECT_NE(text.find(constant), std::string::npos);
}

TEST_F(analysis, quitting_without_saving) {
    analyse();
    click("DISMISS");
    click("SAVE");
    click("Range Prof"); // a second journal, not wanted
    EXPECT_TRUE(std::filesystem::exists("drift.jou;2"));
    click("DISMISS");
    click("QUIT");
    click("No");
    EXPECT_TRUE(rec->has_quit);
    EXPECT_FALSE(std::filesystem::exists("drift.jou;2"));
    EXPECT_TRUE(std::filesystem::exists("drift.jou;1"));
}

TEST_F(analysis, journals_that_are_none) {
    analyse();
    click("DISMISS");
    click("SAVE");
    const std::string bytes = test::read_all("drift.jou;1");
    test::write_all("empty.jou", "");
    test::write_all("half.jou", bytes.substr(0, bytes.size() / 2));
    test::write_all("other.jou", test::read_all("drift.pfx"));
    for (const char* name : {"missing.jou", "empty.jou", "half.jou", "other.jou"}) {
        messages.clear();
        open_journal(name);
        EXPECT_EQ(messages.size(), 1u) << name;
        EXPECT_EQ(eoj, 0);
        EXPECT_TRUE(user.rdfile.empty());
    }
    // Damaged numbers inside: a message or a replay of what still holds together, never a crash.
    for (std::size_t i = 200; i < bytes.size(); i += 7) {
        std::string damaged = bytes;
        damaged[i] = static_cast<char>(damaged[i] ^ 0x24);
        test::write_all("damaged.jou", damaged);
        start();
        open_journal("damaged.jou");
        for (int position = 0; position <= std::min(eoj, 8); position++) go_to(position);
        jrnl(95);
    }
}

// Steps whose record does not hold together: the program stays where it is, or stands without data, and goes
// on.
TEST_F(analysis, steps_that_cannot_be_gone_to) {
    analyse();
    click("DISMISS");
    click("SAVE");
    const std::string sound = test::read_all("drift.jou;1");
    const auto word = [&](std::size_t byte) {
        std::int32_t value = 0;
        for (int b = 3; b >= 0; b--) value = value << 8 | static_cast<unsigned char>(sound[byte + b]);
        return value;
    };
    // Behind the head and the two counts, each with its length on both sides: the places, then the words.
    const std::size_t places = 208 + 16 + 4, words = places + 4 * (word(208 + 4) + 1) + 8;
    const auto with = [&](int step, int item, char value) {
        std::string bytes = sound;
        bytes[words + 4 * (word(places + 4 * step) + item)] = value;
        test::write_all("poor.jou", bytes);
        start();
        open_journal("poor.jou");
        go_to(4);
        ASSERT_TRUE(messages.empty());
        rec->shortcut(getparenthandle(main_window().top), 'Z');
    };
    with(3, 4, 0); // no frequencies
    EXPECT_EQ(messages, std::vector<std::string>{"ERROR(6) in mng_jrnl()/jrnl -- corrupted memory!"});
    EXPECT_EQ(user.count, 4);
    click("Range Prof"); // takes the place behind the position that stands
    EXPECT_EQ(user.count, 5);

    with(3, 1, 60); // more corrections than there are
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].find("Bad mocomp pointer in mng_jrnl()!"), 0u);
    click("Range Prof"); // not on the data of another position
    EXPECT_EQ(rpwinon, 0);
    go_to(2);
    EXPECT_EQ(rpwinon, 1);
    EXPECT_TRUE(samples() == seen_.at(2).data);
}

TEST_F(analysis, a_folder_that_cannot_be_written) {
    using std::filesystem::perms;
    std::filesystem::permissions("drift.pfx", perms::all);
    std::filesystem::permissions(".", perms::all &
                                          ~(perms::owner_write | perms::group_write | perms::others_write));
    auto user_of_the_machine = std::make_unique<test::unprivileged>();
    open("drift.pfx");
    click("Range Prof");
    EXPECT_FALSE(messages.empty());
    EXPECT_EQ(rpwinon, 1);
    click("DISMISS");
    click("QUIT");
    click("Yes");
    EXPECT_FALSE(rec->has_quit);
    user_of_the_machine.reset();
    std::filesystem::permissions(".", perms::all);
    user_of_the_machine = std::make_unique<test::unprivileged>();
    click("QUIT");
    click("Yes");
    EXPECT_TRUE(rec->has_quit);
    EXPECT_TRUE(std::filesystem::exists("drift.jou;1"));
}

} // namespace
} // namespace norva
