// Dispatch of the cut processor's actions, and its stored actions. The signal as it is shown is in
// procut_show.cpp, the actions themselves in the other files of this name.
#include "cut/procut.h"

#include "procut_int.h"
#include "state/image_cut.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace norva {

namespace {

struct action_row {
    int number;
    const char* name;
    cut_handler handler;
};

constexpr std::array<action_row, 31> rows{{
    {0, "Initialization", act_init},
    {1, "change weight", act_weight},
    {2, "data edit", act_edit},
    {3, "subtract phase slope", act_sub_slope},
    {4, "subtract phase spline", act_sub_spline},
    {5, "remove phase jump", act_phase_jump},
    {6, "set phase to zero", act_zero_phase},
    {7, "set amplitude to unity", act_unit_amplitude},
    {8, "differentiate", act_differentiate},
    {9, "restore differentiate", act_restore},
    {10, "deweight for display", act_deweight},
    {11, "show previous state", act_previous},
    {12, "", nullptr},
    {13, "", nullptr},
    {14, "pk params/n xhrs", act_peaks},
    {15, "pk params/xhr pair", act_peak_pair},
    {16, "measure phase slope", act_slope},
    {17, "measure phase spline", act_spline},
    {18, "two scatterer algorithm", act_tsa},
    {19, "parallel cut", act_parallel},
    {20, "perpendicular cut", act_perpendicular},
    {21, "shft pt to orig in img", act_shift},
    {22, "motion compensate", act_mocomp},
    {23, "restart", nullptr}, // these five are below
    {24, "backup", nullptr},
    {25, "forward", nullptr},
    {26, "exit", nullptr},
    {27, "reentry", nullptr},
    {28, "abort", nullptr}, // known to the window side alone
    {29, "", nullptr},
    {30, "1-D initialization", act_init_1d},
}};
constexpr bool rows_in_order() {
    for (std::size_t k = 0; k < rows.size(); k++) {
        if (rows[k].number != static_cast<int>(k)) return false;
    }
    return true;
}
static_assert(rows_in_order());

constexpr const char* no_room = "***Error 99...not enough memory for procut journal";
constexpr const char* no_signal = "***Error 195...Signal identically zero, backup to restore";
constexpr int LAST_MODE = 31;
// One word is kept for the exit; the image keeps ns and np with the stored words.
constexpr int STORED_WORDS = CUT_JOURNAL_WORDS - 3;

int put_failure(std::span<std::int32_t> out, std::string_view message) {
    std::array<char, PC_MESSAGE_CHARACTERS> text;
    text.fill(' ');
    const std::size_t n = std::min(message.size(), text.size());
    std::copy_n(message.begin(), n, text.begin());
    out[0] = -1;
    out[1] = static_cast<std::int32_t>(n);
    std::memcpy(&out[2], text.data(), text.size());
    return 2 + PC_MESSAGE_CHARACTERS / 4;
}

bool is_initial(int action) {
    return action == PC_INIT || action == PC_INIT_1D;
}

// Takes the record that has just run into the stored actions; whatever was ahead is dropped.
void store(const cut_action& run, int action) {
    cut_state& s = cut();
    const int at = is_initial(action) ? 0 : s.np;
    // The padded length of 1-D data leaves a gap behind their record.
    const int next = is_initial(action) ? PC_DATA_WORD + 2 * s.nc : at + run.length;
    const auto given = std::min<std::size_t>(run.words.size(), run.length);
    cutj.ir.resize(at);
    cutj.ir.insert(cutj.ir.end(), run.words.begin(), run.words.begin() + static_cast<std::ptrdiff_t>(given));
    cutj.ir.resize(static_cast<std::size_t>(next) + 1); // zeros
    cutj.np = s.np = s.end = next;
    cutj.ns = s.is;
    s.given = false;
    if (!is_initial(action)) cutj.jf = 1;
}

// Runs one action and, when nothing of its own was written, shows the signal. False leaves everything as it
// was, except after a fresh action that left no signal.
bool run_one(cut_action& run, bool last) {
    cut_state& s = cut();
    const int action = run.integer(0);
    if (action < 0 || action > LAST_MODE) return run.fail("***Error 99...Invalid mode");
    const cut_handler handler = action < std::ssize(rows) ? rows[action].handler : nullptr;
    if (!handler) return run.fail("***Action not activated");
    if (run.fresh && s.void_step && !is_initial(action)) return run.fail(no_signal);
    run.quiet = !last;
    if (!handler(run)) return false;

    const bool initial = is_initial(action);
    s.is = initial ? 0 : s.is + 1;
    if (initial) s.void_step = false;
    const bool good = !last || run.own > 0 || put_common(run);
    if (run.fresh) {
        if (good || initial)
            store(run, action);
        else
            s.void_step = true;
    } else {
        cutj.np = s.np = initial ? PC_DATA_WORD + 2 * s.nc : s.np + run.length;
    }
    if (last && good) run.out[0] = cutj.isi + s.is;
    return good;
}

// The stored record that begins at word `at`.
std::span<const std::int32_t> stored_from(int at) {
    const int end = std::min<int>(cut().end, static_cast<int>(cutj.ir.size()));
    return at < end ? std::span<const std::int32_t>(cutj.ir).subspan(at, end - at)
                    : std::span<const std::int32_t>();
}

// The stored exit: the end of a cut.
void put_exit(cut_action& run) {
    run.own = 0;
    run.put(cut().is);
    run.put(PC_EXIT);
}

// Runs stored actions until step ms, from the first record on unless `onward`.
bool replay(cut_action& run, int ms, bool onward) {
    cut_state& s = cut();
    run.fresh = false;
    for (bool first = !onward; first || s.is < ms; first = false) {
        run.words = stored_from(first ? 0 : s.np);
        run.own = run.nextra = 0;
        if (run.words.empty()) return run.fail("***Error 125...Cannot advance any further");
        if (!first && run.words[0] == PC_EXIT) {
            s.is++;
            cutj.np = ++s.np;
            run.quiet = false;
            put_exit(run);
            return true;
        }
        if (!first && is_initial(run.words[0])) return run.fail("***Error 99...Invalid mode");
        if (!run_one(run, first ? ms == 0 : s.is + 1 >= ms)) return false;
        if (first) s.void_step = false;
    }
    return true;
}

// The same, and where that fails back to the step where it began.
bool replay_or_stay(cut_action& run, int ms, bool onward) {
    const int began = cut().is;
    if (replay(run, ms, onward)) return true;
    const char* message = run.message;
    replay(run, std::min(began, cutj.ns), false);
    return run.fail(message);
}

bool forward(cut_action& run) {
    if (cut().void_step) return run.fail(no_signal);
    if (cut().is >= cutj.ns) return run.fail("***Error 125...Cannot advance any further");
    return replay_or_stay(run, cut().is + 1, true);
}

bool backup(cut_action& run) {
    if (run.words.size() < 2) return run.fail("***Error 99...Incomplete record");
    const std::int64_t target = static_cast<std::int64_t>(cut().is) - run.integer(1);
    return replay_or_stay(run, static_cast<int>(std::clamp<std::int64_t>(target, 0, cut().is)), false);
}

// A stored cut that nobody has changed is left with all its steps, so that the image may keep what follows
// it.
bool exit_cut(cut_action& run) {
    cut_state& s = cut();
    if (s.void_step) s.is--;
    s.void_step = false;
    s.is++;
    if (s.given) {
        s.np = s.end;
    } else {
        cutj.ir.resize(static_cast<std::size_t>(s.np) + 1);
        cutj.ir[s.np] = PC_EXIT;
        s.end = ++s.np;
        cutj.ns = s.is;
        if (s.kin == PC_INIT_1D) cutj.jf = 0;
    }
    cutj.np = s.np;
    put_exit(run);
    return true;
}

// No cut, as before the first one.
void forget_stored() {
    cut_state& s = cut();
    cutj.ns = cutj.np = s.np = s.end = 0;
    cutj.ir.assign(1, -1);
    s.void_step = s.given = false;
}

bool reentry(cut_action& run) {
    forget_stored();
    cutj.jf = 0;
    run.own = 0;
    run.put(0);
    run.put(PC_REENTRY);
    return true;
}

// What the image gave back to be replayed: it begins with a cut, and its first record fits the words.
bool journal_is_sound() {
    if (cutj.np < PC_DATA_WORD || cutj.np > STORED_WORDS + 1 || std::ssize(cutj.ir) < cutj.np) return false;
    const int nc = cutj.ir[3];
    return cutj.ir[0] == PC_INIT && nc >= 1 && nc <= PC_MAX_SAMPLES && cutj.np >= PC_DATA_WORD + 2 * nc;
}

// A cut that comes back stands at its beginning, with all its steps ahead. Stored words that cannot be used
// are dropped for the cut that was just taken.
bool init_cut(cut_action& run) {
    cut_state& s = cut();
    const auto words = run.words;
    if (cutj.jf == 1) {
        const bool sound = journal_is_sound();
        s.end = sound ? cutj.np : 0;
        cutj.ns = std::max(cutj.ns, 0);
        cutj.jf = 0;
        s.given = true;
        if (sound && replay(run, 0, false)) return true;
        forget_stored();
    }
    run.words = words;
    run.fresh = true;
    return run_one(run, true);
}

bool dispatch(cut_action& run) {
    if (run.words.empty()) return run.fail("***Error 99...Invalid mode");
    const int action = run.words[0];
    const bool ready = cut().end > 0 && std::ssize(cutj.ir) >= cut().end && cutj.ir[0] >= 0;
    if (!ready && !is_initial(action) && action != PC_REENTRY)
        return run.fail("***Initialization must be done first");
    switch (action) {
    case PC_RESTART: return replay_or_stay(run, 0, false);
    case PC_BACKUP: return backup(run);
    case PC_FORWARD: return forward(run);
    case PC_EXIT: return exit_cut(run);
    case PC_REENTRY: return reentry(run);
    case PC_INIT: return init_cut(run);
    default: run.fresh = true; return run_one(run, true);
    }
}

} // namespace

cut_state& cut() {
    static cut_state state;
    return state;
}

bool cut_action::accept(int n, int least) {
    if (static_cast<std::size_t>(fresh ? least : n) > words.size())
        return fail("***Error 99...Incomplete record");
    if (fresh && !is_initial(integer(0)) && cut().np + n > STORED_WORDS) return fail(no_room);
    length = n;
    return true;
}

const char* pc_action_name(int action) {
    return action >= 0 && action < std::ssize(rows) ? rows[action].name : "";
}

void procut(std::span<const std::int32_t> in, std::span<std::int32_t> out) {
    cut_action run;
    run.words = in;
    run.out = out;
    if (!dispatch(run)) put_failure(out, run.message);
}

void procutpar(std::span<std::int32_t, 4> out) {
    const cut_state& s = cut();
    out[0] = s.kdd;
    out[1] = s.lw;
    out[2] = s.id;
    out[3] = std::bit_cast<std::int32_t>(s.psla);
}

} // namespace norva
