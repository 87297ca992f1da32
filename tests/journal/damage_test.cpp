// Damaged journals and crash files, and a program killed at the worst moment.
#include "journal_fixture.h"

#include "journal/crash_file.h"
#include "journal/listing.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace norva::test {

namespace {

// A correction of each kind.
mcfile two_corrections() {
    mcfile mc;
    mc.ptr = 1;
    mc.nrecs = 2;
    for (int i = 0; i < 2; i++) mc.nf0[i] = 1 + i, mc.nf[i] = 8, mc.nt0[i] = 3, mc.nt[i] = 4;
    mc.flag[1] = MC_DECIMATE;
    mc.t[0].assign(std::vector{0.5, -1e300, 3.0, 4.0, 5.25});
    mc.t[1].assign(std::vector{4.0, 2.0});
    return mc;
}

struct damage_test : journal_test {
    // What a loaded journal holds, through every door there is.
    static words contents() {
        words all = ask({96, 1000000});
        const int nc = all[0];
        list_journal(all);
        for (int i = 0; i <= nc; i++) {
            const words r = ask({91, i});
            journal_step step;
            mcfile mc;
            read_step(std::span(r).subspan(1), step);
            read_mc_record(std::span(r).subspan(1), mc);
            all.insert(all.end(), r.begin(), r.end());
        }
        return all;
    }
    // The bytes of a journal with the actions of an image and a correction record.
    static std::string saved() {
        begin("a.jou;1");
        ask(record(0, 4));
        ask({27, 2, 6, 1, 8, 1, 8, 101, 119});
        ask(record(47, 25));
        ask(build_mc_record(two_corrections(), 2));
        ask({93});
        return read_all("a.jou;1");
    }
    static bool loads(const std::string& name) { return load(name).size() > 51; }
};

} // namespace

TEST_F(damage_test, EveryTruncationIsRefusedAndChangesNothing) {
    const std::string whole = saved();

    begin("kept.jou;1");
    ask(record(0, 4));
    ask(record(3, 4));
    const words kept = contents();
    for (std::size_t n = 0; n < whole.size(); n++) {
        write_all("cut.jou", whole.substr(0, n));
        ASSERT_EQ(journal_text(load("cut.jou")), "***Error...Cannot read Journal File") << n;
    }
    EXPECT_EQ(journal_text(load("none.jou")), "***Error...Journal file does not exist");
    EXPECT_EQ(journal_text(load(".")), "***Error...Cannot read Journal File");
    write_all("ff.jou", std::string(whole).replace(4, 4, "\xff\xff\xff\xff"));
    EXPECT_EQ(journal_text(load("ff.jou")), "***Error...Cannot read Journal File")
        << "would look like an error";
    EXPECT_EQ(contents(), kept);
    EXPECT_EQ(ask(record(4, 4)), reply(2, record(4, 4))) << "and the journal under way goes on";

    write_all("cut.jou", whole + "more");
    EXPECT_TRUE(loads("cut.jou"));
    write_all("long.jou", std::string(whole).replace(4, 200, std::string(200, 'n')));
    EXPECT_EQ(journal_head_name(load("long.jou")), std::string(200, 'n')) << "a head without NUL";
}

TEST_F(damage_test, NoFlippedBitLeadsOutsideTheRecords) {
    const std::string whole = saved();
    int refused = 0;
    for (std::size_t byte = 0; byte < whole.size(); byte++) {
        if (byte == 8) byte = 200; // the rest of the raw file's name
        for (const int bit : {0, 3, 7}) {
            std::string flipped = whole;
            flipped[byte] = static_cast<char>(flipped[byte] ^ (1 << bit));
            write_all("flip.jou", flipped);
            const bool loaded = loads("flip.jou");
            if (loaded) contents(); // under the sanitizers, this is the test
            refused += !loaded;
            const bool framing = byte < 4 || (byte >= 204 && byte < 212) || (byte >= 216 && byte < 228);
            ASSERT_FALSE(framing && loaded) << byte << " " << bit;
        }
    }
    EXPECT_GT(refused, 3 * 40);
}

TEST_F(damage_test, CrashFileIsReadWholeOrNotAtAll) {
    user.count = 7;
    user.mc = two_corrections();
    ASSERT_TRUE(rw_mc("w"));
    const std::string whole = read_all(CRASH_FILE);
    const std::string ints = le({7, 1, 2, 0, 1, 1, 2, 8, 8, 3, 3, 4, 4}); // flag, nf0, nf, nt0, nt
    ASSERT_EQ(whole.substr(0, ints.size()), ints);
    ASSERT_EQ(whole.size(), ints.size() + 8 * (5 + 2));
    EXPECT_EQ(whole.substr(ints.size() + 16, 8), std::string("\0\0\0\0\0\0\x08\x40", 8)) << "3.0";

    user.count = 0;
    user.mc = {};
    ASSERT_TRUE(rw_mc("r"));
    EXPECT_EQ(encode_crash_file(user.count, user.mc), whole);

    for (std::size_t n = 0; n < whole.size(); n++) {
        write_all(CRASH_FILE, whole.substr(0, n));
        ASSERT_FALSE(rw_mc("r")) << n;
    }
    for (std::size_t bit = 0; bit < 8 * ints.size(); bit++) {
        std::string flipped = whole;
        flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << bit % 8));
        int count = 7;
        mcfile mc = two_corrections();
        if (decode_crash_file(flipped, count, mc)) {
            EXPECT_TRUE(mc_is_sound(mc));
            EXPECT_LE(count, 200);
        } else {
            EXPECT_EQ(encode_crash_file(count, mc), whole) << "refused, yet changed";
        }
    }
    std::filesystem::remove(CRASH_FILE);
    messages.clear();
    EXPECT_FALSE(rw_mc("r"));
    EXPECT_EQ(messages, std::vector<std::string>{"ERROR(9) in rw_mc()/jrnl -- can't open file norva.mc.sav"});
    EXPECT_EQ(encode_crash_file(user.count, user.mc), whole);
}

// --- A killed program

namespace {

int calls_left; // until the process is killed in the middle of a call to the system

void maybe_die() {
    if (calls_left-- == 0) raise(SIGKILL);
}

ssize_t deadly_write(int fd, const void* bytes, std::size_t n) {
    if (calls_left-- == 0) {
        (void)!::write(fd, bytes, n / 2);
        raise(SIGKILL);
    }
    return ::write(fd, bytes, n);
}

int deadly_rename(const char* from, const char* to) {
    maybe_die();
    const int status = std::rename(from, to);
    maybe_die();
    return status;
}

// The analysis: every step makes a correction whose delays are the number that its record bears in nt0. After
// two of them it goes back to the first and takes another way. Tells the parent the position after each step.
void analyse(int pipe_out, int steps) {
    const auto at_position = [pipe_out](int position) {
        const char done = static_cast<char>(position);
        if (write(pipe_out, &done, 1) != 1) _exit(1);
    };
    jrnl(95);
    reset_run_state();
    user.rdfile = "raw.pfx";
    user.jfile = "a.jou;1";
    user.nf0 = 1;
    user.nf = user.nt = gp.nf = gp.nrec = 16;
    jrnl(90);
    jrnl(0);
    at_position(0);
    for (int i = 1; i <= steps; i++) {
        if (i == 3) {
            journal_words ignored;
            journal(words{91, 1}, ignored);
            user.count = user.mc.ptr = 1;
            at_position(1);
        }
        mcfile& mc = user.mc;
        user.nt0 = i;
        mc.nf0[mc.ptr] = mc.nt0[mc.ptr] = 1;
        mc.nf[mc.ptr] = mc.nt[mc.ptr] = 16;
        mc.t[mc.ptr].assign(std::vector<double>(17, i));
        mc.nrecs = ++mc.ptr;
        jrnl(5);
        at_position(user.count);
    }
}

struct kill_test : damage_test {
    bool finished = false; // the child came to its end

    // Runs the analysis in a child; returns the last position that it told, -1 for none.
    int position_before_death(int deadly_call) {
        for (const char* name : {"a.jou;1", CRASH_FILE}) std::filesystem::remove(name);
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        if (child == 0) {
            calls_left = deadly_call;
            safefile_system.write = deadly_write;
            safefile_system.rename = deadly_rename;
            safefile_system.fsync = [](int) { return maybe_die(), 0; };
            analyse(ends[1], 4);
            _exit(0);
        }
        close(ends[1]);
        int last = -1;
        char done;
        while (read(ends[0], &done, 1) == 1) last = done;
        close(ends[0]);
        int status = 0;
        waitpid(child, &status, 0);
        finished = WIFEXITED(status);
        return last;
    }

    // All steps that had returned are on the disk, each with its own correction.
    void expect_nothing_lost(int last) {
        if (last < 0 && !std::filesystem::exists("a.jou;1")) return;
        ASSERT_TRUE(loads("a.jou;1")) << "after step " << last;
        const int nc = ask({96, 1000000})[0];
        ASSERT_TRUE(rw_mc("r"));
        const int end = std::min(user.count, nc); // as a load takes it
        EXPECT_GE(end, last);
        for (int i = 1; i <= end; i++) {
            const words step = ask({91, i});
            ASSERT_EQ(step[2], i);
            ASSERT_LE(i, user.mc.nrecs);
            EXPECT_EQ(user.mc.t[i - 1][16], step[6]) << "step " << i << " of " << end;
        }
    }
};

} // namespace

TEST_F(kill_test, AtEachCallToTheSystem) {
    int kills = 0;
    for (; !finished && kills < 400; kills++) {
        expect_nothing_lost(position_before_death(kills));
        ASSERT_FALSE(HasFailure()) << "call " << kills;
    }
    EXPECT_GT(kills, 5 * 3 * 4) << "within and between the writes of both files, at every step";
    EXPECT_TRUE(finished);
}

} // namespace norva::test
