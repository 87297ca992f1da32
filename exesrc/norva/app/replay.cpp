// Going to a position of the journal.
#include "app/replay.h"

#include "app/cdf_input.h"
#include "app/decimation.h"
#include "app/gpf.h"
#include "app/main_window.h"
#include "app/names.h"
#include "app/window_values.h"
#include "image/ximag.h"
#include "journal/crash_file.h"
#include "journal/journal.h"
#include "journal/record.h"
#include "journal/store.h"
#include "mocomp/mocomp.h"
#include "profiles/doppler_window.h"
#include "profiles/range_window.h"
#include "state/calls.h"
#include "state/run.h"
#include "state/user.h"
#include "zuvsys/strprintf.h"

#include <algorithm>
#include <filesystem>
#include <unistd.h>

namespace norva {

using reply_words = std::vector<std::int32_t>;

// Tags whose step returned to the main window.
static bool returns_to_main(int tag) {
    return tag <= 2 || tag == 9 || tag == 23 || tag == 27 || tag == 41 || tag == 48;
}

static bool ask_store(const reply_words& request, reply_words& reply) {
    journal(request, reply);
    if (!reply.empty() && reply[0] == -1) {
        popmsg(journal_text(reply));
        return false;
    }
    return true;
}

// --- Loading

// The raw file as the journal names it, or the file of that name in the journal's own folder.
static std::string find_raw_file(const std::string& name) {
    std::error_code ignored;
    if (std::filesystem::exists(name, ignored)) return name;
    const std::string beside = directory_of(user.jfile) + rename_file(name);
    return std::filesystem::exists(beside, ignored) ? beside : name;
}

// The last record is the one written at a regular end: the corrections come from it.
static bool restore_from_end(std::span<const std::int32_t> record) {
    const std::string fault = read_mc_record(record, user.mc);
    if (!fault.empty()) {
        popmsg(fault);
        return false;
    }
    eoj -= 1;
    return true;
}

// The name under which an opened journal goes on: its next free version, in the current folder when its own
// takes no files.
static std::string continuation_name() {
    const std::string folder = directory_of(user.jfile);
    std::string name = rootname(user.jfile) + ".jou";
    if (access(folder.empty() ? "." : folder.c_str(), W_OK) != 0) name = rename_file(name);
    return versno(name, 1).value_or(name);
}

// Reads the journal user.jfile into the store, and from it the raw file, the whole-file window and the number
// of steps. `closed` tells whether its corrections came with it. False after a message.
static bool read_journal(bool& closed) {
    reply_words request = {JOURNAL_LOAD, static_cast<std::int32_t>(user.jfile.size())}, reply;
    request.resize(2 + (user.jfile.size() + 3) / 4);
    put_text(std::span(request).subspan(2), user.jfile);
    if (!ask_store(request, reply)) return false;
    user.rdfile = find_raw_file(journal_head_name(reply));
    choose_pole(journal_head_note(reply));

    journal_step first;
    if (!read_step(std::span(reply).subspan(51), first)) {
        popmsg("ERROR(6) in mng_jrnl()/jrnl -- corrupted memory!");
        return false;
    }
    set_user_window({first.nf0, first.nf, first.nt0, first.nt});
    if (!ask_store({JOURNAL_LIST, JOURNAL_MAX_WORDS}, reply)) return false;
    eoj = reply[0];
    if (!ask_store({JOURNAL_GOTO, eoj}, reply)) return false;
    const std::span<const std::int32_t> last = std::span(reply).subspan(1);
    closed = last[0] == 89;
    return !closed || restore_from_end(last);
}

// A journal that was cut short gets its corrections from the crash file, and is then closed under the next
// version of its name, so that it never depends on that file again.
static bool recover() {
    if (!rw_mc("r")) return false;
    eoj = std::clamp(user.count, 0, eoj);
    user.jfile = continuation_name();
    jrnl(90);
    jrnl(89);
    jrnl(93);
    return !journal_unsaved();
}

static bool load() {
    if (eoj != 0) jrnl(95);
    bool closed = false;
    if (!read_journal(closed)) return false;
    if (!closed && recover() && !read_journal(closed)) return false;
    user.jfile = continuation_name();
    jrnl(90);
    return true;
}

// --- Building the state of a position

// The raw data as they were read before any step. The window that was read last serves again when it holds
// what the position needs; otherwise just that is read.
static bool read_raw(const journal_step& step) {
    const mcfile& mc = user.mc;
    const data_window needed = mc.ptr > 0 ? data_window{mc.nf0[0], mc.nf[0], mc.nt0[0], mc.nt[0]}
                                          : data_window{step.nf0, step.nf, step.nt0, step.nt};
    if (!user.pfdata || (user.count > 0 && !fresh_window_covers(needed))) {
        user.pfdata.clear();
        set_user_window(needed);
    }
    get_gpf_data(0, 0, 0, 0);
    if (user.pfdata) return true;
    popmsg("ERROR(7) in mng_jrnl()/jrnl -- no raw data!");
    return false;
}

// Cuts the data to a window.
static bool cut_to(const data_window& window) {
    const data_window held = loaded_window();
    set_user_window(window);
    get_gpf_data(1, held.nf0, held.nt0, held.nf);
    if (user.pfdata) return true;
    popmsg("ERROR(8) in mng_jrnl()/jrnl -- no raw data!");
    return false;
}

static bool apply_corrections() {
    const mcfile& mc = user.mc;
    for (int i = 0; i < mc.ptr; i++) {
        if (!cut_to({mc.nf0[i], mc.nf[i], mc.nt0[i], mc.nt[i]})) return false;
        const bool decimation = mc.flag[i] == MC_DECIMATE;
        if (user.nt < 2 ||
            (decimation && (user.nt > DECIMATION_MOST_RECORDS || user.nf > DECIMATION_MOST_FREQUENCIES))) {
            popmsg("This journal holds a correction that cannot be applied to its data.");
            return false;
        }
        if (decimation) {
            apply_decimation(static_cast<int>(mc.t[i][0]), static_cast<int>(mc.t[i][1]));
        } else {
            user.f0 = window_f0(user.nf0);
            user.bw = user.nf * user.df;
            mocomp(user.pfdata.data(), user.nf, user.nt, user.f0, user.df, user.rh, mc.t[i].data());
        }
        rpt_progress(i + 1, mc.ptr);
    }
    return true;
}

// The step's own window of data, in memory and in the fields.
static bool take_step_window(const journal_step& step) {
    const int nt_before = user.nt;
    const data_window window{step.nf0, step.nf, step.nt0, step.nt};
    // Position 0 is the whole file, which nothing computes on: the next analysis reads its window afresh.
    if (user.count == 0)
        set_user_window(window);
    else if (!cut_to(window))
        return false;
    cvrt_user_vals(1);
    show_numflds(user.count == 0 ? nt_before : user.nt);
    return true;
}

static void close_windows() {
    if (imgwinon) ximag_leave();
    if (rpwinon) xrp_cb(nullptr, 0);
    norva_enable_flds(1);
    if (dpwinon) xdp_cb(nullptr, 0);
}

// Steps of the Doppler window. Its parameters belong to the step, but for the opening.
static void drive_doppler(const journal_step& step) {
    const int ko = step.tag;
    if (ko != 29) {
        user.dp_ni = step.dp_ni;
        user.dp_ip = step.dp_ip;
        user.dp_lag = step.dp_lag;
    }
    if (!dpwinon || ko == 29) {
        filewin_cb(nullptr, 10);
        if (ko != 29) xdp_ok(nullptr, 0);
    } else if (ko == 30) {
        xdp_ok(nullptr, 0);
    } else if (ko == 31 || ko == 32) {
        xdp_cb(nullptr, -1);
    }
}

static void drive(journal_step& step) {
    const int ko = step.tag;
    if (returns_to_main(ko)) return;
    // A jump from one window's steps to another's passes no step that closes the first.
    if (imgwinon) ximag_leave();
    if (rpwinon && ko >= 28) xrp_cb(nullptr, 0);
    if (dpwinon && (ko <= 16 || ko == 28)) xdp_cb(nullptr, 0);
    if (ko >= 3 && ko <= 8) {
        filewin_cb(nullptr, 8);
    } else if (ko == 16 && step.window_on) {
        xrp(2);
    } else if (ko == 28) {
        jary = std::move(step.jary);
        filewin_cb(nullptr, 9);
    } else if (ko >= 29 && ko <= 34) {
        drive_doppler(step);
    } else {
        popmsg(
            strprintf("Step %d of the journal needs a window that this version does not have.", user.count));
    }
}

static bool build_position(const journal_step& step) {
    const computation running;
    return read_raw(step) && apply_corrections() && take_step_window(step);
}

// --- Positions

// Asks the store for the record that `tag` means. False when there is none, after a message where the user
// would wonder.
static bool find_record(wi_obj* wo, int tag, reply_words& reply) {
    if (eoj == 0) {
        popmsg("No journal records yet!");
        return false;
    }
    switch (tag) {
    case 0: return ask_store({JOURNAL_GOTO, std::clamp(wo ? typed_position() : user.count, 0, eoj)}, reply);
    case 1:
        if (user.count >= eoj) {
            popmsg("End of journal!");
            return false;
        }
        return ask_store({JOURNAL_STEP, 1}, reply);
    case 2:
    case -2: return user.count != 0 && ask_store({JOURNAL_STEP, -1}, reply);
    default: return false;
    }
}

void replay_journal(wi_obj* wo, int tag) {
    if (wo && analysis_window_open()) return;
    if (tag == -1) {
        if (!load()) user.rdfile.clear();
        return;
    }
    reply_words reply;
    if (!find_record(wo, tag, reply)) {
        show_count(); // a typed position that led nowhere goes back to the one in force
        return;
    }
    journal_step step;
    if (!read_step(std::span<const std::int32_t>(reply).subspan(1), step)) {
        popmsg("ERROR(6) in mng_jrnl()/jrnl -- corrupted memory!");
        ask_store({JOURNAL_GOTO, user.count}, reply); // the next step goes where the program stands
        return;
    }
    user.count = reply[0];
    if (!wo && tag == -2) return;

    user.mc.ptr = step.mc_ptr;
    journal_hooks.show_track_button(user.mc.ptr == 0);
    if (user.mc.ptr < 0 || user.mc.ptr > user.mc.nrecs) {
        popmsg(
            "Bad mocomp pointer in mng_jrnl()!  The problem is probably due to a bad journal file that was "
            "written after an improper exit.");
        user.mc.ptr = 0;
        user.pfdata.clear(); // they are those of another position
        close_windows();
        refresh_controls();
        return;
    }
    managing = 1;
    if (returns_to_main(step.tag)) close_windows();
    if (!build_position(step)) {
        close_windows(); // what they show is no longer so
        refresh_controls();
        return;
    }
    drive(step);
    if (!analysis_window_open()) show_count();
    managing = 0;
    refresh_controls();
}

} // namespace norva
