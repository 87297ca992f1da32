#include "journal_fixture.h"

#include "journal/crash_file.h"

#include <algorithm>
#include <bit>

namespace norva::test {

namespace {

std::vector<std::string> shown; // what the main window was told, in order
std::string track_name;
std::vector<double> work;
int fitted;

struct jrnl_test : journal_test {
    jrnl_test() {
        shown.clear();
        track_name.clear();
        work.clear();
        fitted = 0;
        user.rdfile = "raw.pfx";
        gp.nf = 64;
        gp.nrec = 100;
        user.nf0 = 2, user.nf = 32, user.nt0 = 5, user.nt = 50;
        user.dp_ni = 16, user.dp_ip = 4, user.dp_lag = 2;
        user.mwi_nti = 9, user.mwi_lag = 6, user.mwi_npk = 1, user.mwi_ncoe = 3;
        user.mwi_rh = 0.5f;
        journal_hooks.show_count = [] { shown.push_back("count " + std::to_string(user.count)); };
        journal_hooks.enable_fields = [](int on) { shown.push_back("fields " + std::to_string(on)); };
        journal_hooks.show_track_button = [](bool on) { shown.push_back(on ? "track" : "no track"); };
        journal_hooks.show_listing = [](const std::string& text) { shown.push_back(text.substr(0, 12)); };
        journal_hooks.show_journal_name = [] { shown.push_back(user.jfile); };
        journal_hooks.track_file = [] { return track_name; };
        journal_hooks.spline = [] { return journal_spline{fitted, work}; };
        start("a.jou;1");
        shown.clear();
    }
    // Words of the record that jrnl(tag) has written; empty when it wrote none.
    static words written(int tag) {
        const int before = journal_next_index();
        jrnl(tag);
        if (journal_next_index() == before) return {};
        words r = ask({91, before});
        return {r.begin() + 1, r.end()};
    }
    static void start(const std::string& journal_name) {
        user.jfile = journal_name;
        jrnl(90);
        jrnl(0);
    }
    static journal_step read(const words& r) {
        journal_step step;
        EXPECT_TRUE(read_step(r, step));
        return step;
    }
    static void add_correction(int nt, double value) {
        mcfile& mc = user.mc;
        mc.nf0[mc.ptr] = mc.nt0[mc.ptr] = 1;
        mc.nf[mc.ptr] = 64, mc.nt[mc.ptr] = nt;
        mc.t[mc.ptr].assign(std::vector<double>(static_cast<std::size_t>(nt) + 1, value));
        mc.nrecs = ++mc.ptr;
    }
    // A work array with the counts 1 and 2: nine doubles.
    static std::vector<double> nine_doubles() {
        std::vector<double> w = {0, 1.5, -2, 3, 4, 5, 6, 7, 8};
        w[0] = std::bit_cast<double>(std::int64_t{2} << 32 | 1);
        return w;
    }
};

} // namespace

TEST_F(jrnl_test, EachTagHasItsLayout) {
    EXPECT_EQ(words(ask({91, 0})), (words{0, 0, 0, 4, 1, 64, 1, 100})) << "the whole file";
    rpwinon = 1;
    dpwinon = 3;
    const words base, range = {1, 0, 0, 0, 0}, doppler = {16, 4, 2}, doppler_peaks = {3, 16, 4, 2, 0};
    const words mwi = {9, 6, 1, 3, 0x3f000000}, no_spline = {0, 0};
    const auto both = [](words a, const words& b) { return a.insert(a.end(), b.begin(), b.end()), a; };
    const struct {
        int first, last;
        words rest;
    } rows[] = {{1, 9, base},
                {10, 12, range},
                {13, 13, both(range, no_spline)},
                {14, 17, range},
                {18, 18, base},
                {19, 23, mwi},
                {24, 24, both(mwi, no_spline)},
                {25, 26, mwi},
                {29, 29, base},
                {30, 36, doppler},
                {37, 39, doppler_peaks},
                {40, 40, both(doppler_peaks, no_spline)},
                {41, 44, doppler_peaks},
                {45, 45, base},
                {48, 49, base},
                {88, 88, base}};
    for (const auto& row : rows)
        for (int tag = row.first; tag <= row.last; tag++) {
            const int na = 4 + static_cast<int>(row.rest.size());
            const words r = written(tag);
            ASSERT_EQ(r, both({tag, 0, na, 2, 32, 5, 50}, row.rest)) << tag;
            const journal_step step = read(r);
            EXPECT_EQ(step.window_on, row.rest.size() < 5 || tag < 10 ? 0
                                      : tag <= 17                     ? 1
                                      : tag >= 37                     ? 3
                                                                      : 0);
            EXPECT_EQ(step.dp_lag, tag >= 30 && tag <= 44 ? 2 : 0);
            EXPECT_EQ(step.mwi_rh, tag >= 19 && tag <= 26 ? 0.5f : 0);
            for (int n = 0; n < na; n++) { // of a damaged journal
                words shorter(r.begin(), r.begin() + 3 + n);
                shorter[2] = n;
                journal_step ignored;
                EXPECT_FALSE(read_step(shorter, ignored)) << tag;
                EXPECT_FALSE(read_step(words(r.begin(), r.begin() + 3 + n), ignored)) << tag;
            }
        }
    EXPECT_TRUE(messages.empty());
}

TEST_F(jrnl_test, SplineAndTrackFileTravelWithTheStep) {
    work = nine_doubles();
    work.push_back(99); // beyond its own length
    fitted = 51;
    track_name = std::string(79, 't') + "x";
    for (const auto& [tag, at] : {std::pair{13, 12}, {24, 12}, {40, 12}, {47, 28}}) {
        const words r = written(tag);
        ASSERT_EQ(r.size(), at + 2u + 18) << tag;
        EXPECT_EQ(words(r.begin() + at, r.begin() + at + 6), (words{51, 9, 1, 2, 0, 0x3ff80000})) << tag;
        const journal_step step = read(r);
        EXPECT_EQ(step.uspl_n, 51);
        EXPECT_TRUE(
            std::equal(step.uspl_wk.begin() + 1, step.uspl_wk.end(), work.begin() + 1, work.end() - 1));
        for (const int bad : {-1, 1000001}) {
            words damaged = r;
            damaged[at] = bad;
            journal_step ignored;
            EXPECT_FALSE(read_step(damaged, ignored));
            for (const int word : {at + 1, at + 2, at + 3}) {
                damaged = r;
                damaged[word] += bad;
                EXPECT_FALSE(read_step(damaged, ignored)) << word;
            }
        }
        EXPECT_EQ(step.track_file, tag == 47 ? track_name : "");
    }
    const words r = written(46);
    EXPECT_EQ(r.size(), 28u);
    EXPECT_EQ(r[7], 80);
    EXPECT_EQ(read(r).track_file, track_name);

    track_name += "y";
    EXPECT_TRUE(written(46).empty());
    EXPECT_EQ(messages, std::vector<std::string>{"Trk file name is too long!"});
    work[0] = std::bit_cast<double>(std::int64_t{3} << 32 | 1); // 12 doubles, but there are 10
    EXPECT_TRUE(written(13).empty());
    EXPECT_EQ(messages.back(), "ERROR(4) in jrnl()/jrnl -- not enough memory!");
}

TEST_F(jrnl_test, ImageActionsGoToTheJournalAndComeBack) {
    user.mc.ptr = user.mc.nrecs = 0;
    const words actions = {8, 2, 1, 3, 19, 2}; // k is 6 in truth: flop, dismiss; opened at pointer 2
    jary.assign(actions);
    jrnl(28);
    EXPECT_EQ(messages.back(), "ERROR(3) in jrnl()/jrnl -- bad memory request!") << "longer than its block";
    jary[0] = 6;
    words r = written(28);
    EXPECT_EQ(r, (words{28, 2, 8, 2, 32, 5, 50, 2, 1, 3, 19}));
    const journal_step step = read(r);
    EXPECT_EQ(words(step.jary.begin(), step.jary.begin() + 6), (words{6, 2, 1, 3, 19, 2}));
    EXPECT_GE(step.jary.size(), 6u + 1000);

    EXPECT_EQ(written(27), (words{27, 0, 6, 2, 32, 5, 50, 101, 119}));
    EXPECT_FALSE(jary);
    messages.clear();
    jrnl(27);
    jrnl(28);
    jary.assign(words{-1, 0, 0});
    jrnl(27);
    jary.assign(words{640390, 0, 0});
    jrnl(28);
    EXPECT_EQ(messages, (std::vector<std::string>{"ERROR(2) in jrnl()/jrnl -- bad proimag_() exit!",
                                                  "ERROR(2) in jrnl()/jrnl -- bad proimag_() exit!",
                                                  "ERROR(3) in jrnl()/jrnl -- bad memory request!",
                                                  "ERROR(3) in jrnl()/jrnl -- bad memory request!"}));
    EXPECT_EQ(user.count, 2);
    jary.assign(words{2, 0});
    r = written(28);
    EXPECT_EQ(r[2], 4);
    EXPECT_FALSE(read(r).jary) << "no actions, nothing to restore";
}

TEST_F(jrnl_test, TheWindowHearsOfEachStep) {
    const struct {
        int tag;
        std::vector<std::string> told;
    } rows[] = {{1, {"count 1", "fields 1"}},
                {3, {"count 2"}},
                {5, {"count 3", "no track"}},
                {23, {"count 4", "fields 1", "no track"}},
                {41, {"count 5", "fields 1", "no track"}},
                {7, {"count 6"}},
                {89, {}}};
    for (const auto& row : rows) {
        shown.clear();
        jrnl(row.tag);
        EXPECT_EQ(shown, row.told) << row.tag;
    }
    user.estyle = 1;
    dpwinon = 1;
    shown.clear();
    jrnl(41); // the Doppler window stays open over it
    EXPECT_EQ(shown, (std::vector<std::string>{"Journal File", "no track"}));
    jary.assign(words{4, 1, 19, 0});
    shown.clear();
    jrnl(28);
    EXPECT_TRUE(shown.empty()) << "the listing waits for the image's closing";
    jrnl(27);
    EXPECT_EQ(shown, (std::vector<std::string>{"Journal File", "fields 1"}));

    managing = 1;
    shown.clear();
    jrnl(3);
    managing = 0;
    for (const int tag : {-1, 91, 92, 94, 97}) jrnl(tag);
    EXPECT_EQ(messages, std::vector<std::string>(5, "ERROR(1) in jrnl()/jrnl -- bad jrnl tag!"));
    EXPECT_TRUE(shown.empty());
    EXPECT_EQ(user.count, 9);
    EXPECT_EQ(eoj, 9);
}

TEST_F(jrnl_test, ClosingAtAnEarlierPositionLosesNoStep) {
    add_correction(3, 0.25);
    jrnl(5);
    add_correction(2, 0.5);
    user.mc.flag[1] = MC_DECIMATE;
    user.mc.t[1].assign(std::vector{32.0, 2.0});
    jrnl(2);
    const std::string truth = encode_crash_file(0, user.mc);
    ask({91, 1}); // as going back does
    user.count = user.mc.ptr = 1;
    jrnl(89);
    jrnl(93);
    EXPECT_EQ(text({91, 0}), "***Error...This processing step is not defined");

    load("a.jou;1");
    EXPECT_EQ(ask({96, 100}), (words{3, 0, 0, 5, 1, 2, 2, 89, 1}));
    words r = ask({91, 3});
    r.erase(r.begin());
    ASSERT_EQ(r.size(), 4 + 10 + 12 + 4u);
    EXPECT_EQ(words(r.begin() + 3, r.begin() + 14),
              (words{2, 0, 1, 64, 64, 3, 2, 1, 1, 1, 1})); // nf, nt, nf0, nt0
    mcfile mc;
    EXPECT_EQ(read_mc_record(r, mc), "");
    EXPECT_EQ(mc.ptr, 1);
    mc.ptr = 2;
    EXPECT_EQ(encode_crash_file(0, mc), truth);

    const std::string fault = "ERROR(5) in mng_jrnl()/jrnl -- Unable to load mocomp file!";
    words bad = r;
    bad[3] = 65;
    EXPECT_EQ(read_mc_record(bad, mc), fault + "  (nrec > MC_MAX_REC)");
    for (const auto& [word, value] :
         {std::pair{3, 64}, {3, -1}, {1, 3}, {1, -1}, {4, 3}, {8, 0x7fffffff}, {8, 9}, {6, 0}, {10, 0}}) {
        bad = r;
        bad[word] = value;
        EXPECT_EQ(read_mc_record(bad, mc), fault) << word << ": " << value;
    }
    EXPECT_EQ(encode_crash_file(0, mc), truth);
}

TEST_F(jrnl_test, RoomForTheCorrectionsIsKept) {
    for (int i = 1; i < 199; i++) jrnl(1);
    add_correction(10, 1);
    jrnl(5);
    EXPECT_EQ(user.count, 199);
    add_correction(10, 2);
    jrnl(5);
    EXPECT_EQ(messages, std::vector<std::string>{"***Error in JOURNAL...INDX dimension exceeded"});
    EXPECT_EQ(user.count, 199);
    EXPECT_EQ(shown.back(), "no track") << "the correction itself is done";
    jrnl(89);
    EXPECT_EQ(ask({91, 200})[1], 89);

    // Too long for one record: told at the step; what the last good step needs is kept.
    eoj = 1;
    ask({91, 1});
    messages.clear();
    add_correction(400000, 3);
    jrnl(5);
    jrnl(89);
    EXPECT_EQ(messages, std::vector<std::string>(2, "ERROR(4) in jrnl()/jrnl -- not enough memory!"));
    EXPECT_EQ(ask({91, 2})[4], 2) << "corrections in the record";
}

TEST_F(jrnl_test, AFaultOfTheDiskIsToldOnceAndCostsNothing) {
    jrnl(93);
    std::filesystem::remove(CRASH_FILE);
    std::filesystem::create_directory(CRASH_FILE); // cannot be written now
    user.jfile = "later/b.jou;1";
    messages.clear();
    jrnl(90);
    for (int i = 0; i < 3; i++) jrnl(i);
    EXPECT_EQ(messages, (std::vector<std::string>{"ERROR(9) in rw_mc()/jrnl -- can't open file norva.mc.sav",
                                                  "XVEN: NEEDS WRITE PRIVILEDGE IN LOCAL DIRECTORY"}));
    EXPECT_EQ(user.count, 2) << "the analysis goes on";
    jrnl(93);
    EXPECT_EQ(messages.size(), 3u) << "at the end it is told again";
    EXPECT_TRUE(journal_unsaved());

    std::filesystem::create_directory("later");
    std::filesystem::remove(CRASH_FILE);
    jrnl(3);
    EXPECT_FALSE(journal_unsaved());
    EXPECT_EQ(messages.size(), 3u);
    load("later/b.jou;1");
    EXPECT_EQ(ask({96, 100})[0], 3);
    user.count = 0;
    EXPECT_TRUE(rw_mc("r"));
    EXPECT_EQ(user.count, 3);
}

TEST_F(jrnl_test, NamesThatAreTakenOrTooLong) {
    jrnl(93);
    write_all("b.jou;1", "of another program");
    start("b.jou;1"); // was free when it was chosen
    EXPECT_EQ(user.jfile, "b.jou;2");
    EXPECT_EQ(shown.back(), "fields 1");
    EXPECT_TRUE(std::ranges::count(shown, "b.jou;2"));
    EXPECT_EQ(read_all("b.jou;1"), "of another program");

    // A long path into the current folder is no long name.
    const std::string deep = std::string(40, 'd') + "/" + std::string(20, 'e');
    std::filesystem::create_directories(deep);
    start((dir.path() / deep / "c.jou;1").string());
    EXPECT_NE(read_all(user.jfile), "");
    EXPECT_TRUE(messages.empty());

    user.rdfile = std::string(199, 'r');
    start("d.jou;1");
    EXPECT_TRUE(messages.empty());
    EXPECT_EQ(journal_head_name(load("d.jou;1")), user.rdfile);

    start("e.jou;1");
    user.rdfile += "r";
    start("f.jou;1");
    EXPECT_EQ(messages, (std::vector<std::string>{"The raw data file's name is too long for a journal!",
                                                  "***Error in JOURNAL...No output file name"}))
        << "no step of one raw file goes into the journal of another";
    user.rdfile = "raw.pfx";
    user.jfile = std::string(72, 'j');
    jrnl(90);
    EXPECT_EQ(messages.back(), "***Error...No file name supplied for Journal");
}

} // namespace norva::test
