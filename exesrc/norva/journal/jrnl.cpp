// Writing a step, and the door to the replay.
#include "journal/journal.h"

#include "journal/crash_file.h"
#include "journal/listing.h"
#include "journal/record.h"
#include "journal/store.h"
#include "journal/tag_ary.h"
#include "jrnl_int.h"
#include "state/calls.h"
#include "state/run.h"
#include "state/user.h"

#include <algorithm>
#include <filesystem>

namespace norva {

namespace fs = std::filesystem;

jbuf<std::int32_t> jary;

journal_calls journal_hooks = {
    .show_count = [] {},
    .enable_fields = [](int) {},
    .show_track_button = [](bool) {},
    .show_listing = [](const std::string&) {},
    .show_journal_name = [] {},
    .track_file = [] { return std::string(); },
    .spline = [] { return journal_spline{}; },
    .mng_jrnl = [](wi_obj*, int) {},
    .head_note = [] { return std::string(); },
};

void mng_jrnl(wi_obj* wo, int tag) {
    journal_hooks.mng_jrnl(wo, tag);
}

std::string first_free_version(const std::string& name) {
    for (int i = 1; i <= 512; i++) {
        const std::string version = name + ";" + std::to_string(i);
        std::error_code ignored;
        if (!fs::exists(fs::symlink_status(version, ignored))) return version;
    }
    return {};
}

// A fault of the disk is reported when it comes up, not again at each step that it lasts.
static bool journal_fault_shown, crash_fault_shown;

static void write_failed(const char* text) {
    if (!journal_fault_shown) popmsg(text);
    journal_fault_shown = true;
}

// Somebody else has made a file of this name since it was chosen: the journal takes the next free version.
static std::string name_taken(const std::string& name) {
    const std::string other =
        first_free_version(name.substr(0, name.find(';', name.find_last_of("/\\") + 1)));
    if (!other.empty() && other.size() < JOURNAL_NAME_BYTES) {
        user.jfile = other;
        journal_hooks.show_journal_name();
        return other;
    }
    return {};
}

// One request to the store, whose faults of the disk are messages here and never a stop.
static journal_words ask_store(std::span<const std::int32_t> in) {
    journal_store_hooks = {.write_failed = write_failed, .name_taken = name_taken};
    journal_words out;
    journal(in, out);
    if (!journal_unsaved()) journal_fault_shown = false;
    return out;
}

static bool refused(const journal_words& out) {
    return !out.empty() && out[0] == -1;
}

// Replaces the crash file, unless it would become what the last call of this step has made it.
static void keep_crash_file(int count, std::string& written) {
    if (!crash_file_kept) return;
    std::string bytes = encode_crash_file(count, user.mc);
    if (bytes == written) return;
    if (write_crash_file(bytes)) {
        crash_fault_shown = false;
        written = std::move(bytes);
        return;
    }
    if (!crash_fault_shown) popmsg(std::string("ERROR(9) in rw_mc()/jrnl -- can't open file ") + CRASH_FILE);
    crash_fault_shown = true;
}

// jary as far as its own length goes; empty, after a message, when that cannot be.
static std::span<const std::int32_t> image_actions() {
    if (!jary) {
        popmsg("ERROR(2) in jrnl()/jrnl -- bad proimag_() exit!");
        return {};
    }
    if (jary[0] < 2 || jary[0] > JRNL_MAX_WORDS || static_cast<std::size_t>(jary[0]) > jary.size()) {
        popmsg("ERROR(3) in jrnl()/jrnl -- bad memory request!");
        return {};
    }
    return jary.span().first(static_cast<std::size_t>(jary[0]));
}

// A step is taken only if the record of the corrections still fits behind it: without that record a journal
// cannot be opened again.
static const char* no_room_for(const journal_words& record) {
    const std::size_t corrections = mc_record_words(user.mc, user.mc.nrecs);
    if (corrections > JRNL_MAX_WORDS) return "ERROR(4) in jrnl()/jrnl -- not enough memory!";
    if (journal_next_index() >= JOURNAL_MAX_INDEX) return "***Error in JOURNAL...INDX dimension exceeded";
    if (record.size() + corrections > static_cast<std::size_t>(journal_words_left()))
        return "***Error in JOURNAL...IR dimension exceeded";
    return nullptr;
}

// The record of a step; empty, after a message, when there is none to write.
static journal_words step_record(int tag) {
    std::span<const std::int32_t> image;
    journal_words tags;
    if (tag == 27 || tag == 28) {
        image = image_actions();
        if (image.empty()) return {};
    }
    if (tag == 27) {
        int ns = 0;
        get_tag_ary(image, ns, tags);
        jary.clear();
        image = tags;
    }
    std::string message;
    journal_words record = build_step(tag, image, message);
    if (message.empty())
        if (const char* text = no_room_for(record)) message = text;
    if (message.empty()) return record;
    popmsg(message);
    return {};
}

// The corrections go behind the last step, also while the position stands at an earlier one, so that no step
// is cut off. Corrections that no step could be written for are left out if the record is too long.
static journal_words mc_record() {
    ask_store(journal_words{JOURNAL_GOTO, eoj});
    const auto room = static_cast<std::size_t>(std::min(JRNL_MAX_WORDS, journal_words_left()));
    int n = user.mc.nrecs;
    while (n > 0 && mc_record_words(user.mc, n) > room) n--;
    if (n < user.mc.nrecs) popmsg("ERROR(4) in jrnl()/jrnl -- not enough memory!");
    return build_mc_record(user.mc, n);
}

// Begin: the raw file's name in 200 bytes, the journal's in 72. A longer journal name is tried as seen from
// the current folder; the store refuses one that is still too long.
static journal_words begin_record() {
    if (user.rdfile.size() >= JOURNAL_HEAD_BYTES) {
        popmsg("The raw data file's name is too long for a journal!");
        return {};
    }
    std::string name = user.jfile;
    std::error_code ignored;
    if (name.size() >= JOURNAL_NAME_BYTES) name = fs::proximate(name, ignored).string();
    if (name.size() >= JOURNAL_NAME_BYTES) name = user.jfile;
    journal_words record(69);
    record[0] = JOURNAL_BEGIN;
    std::string head = user.rdfile;
    if (const std::string note = journal_hooks.head_note();
        head.size() + 1 + note.size() < JOURNAL_HEAD_BYTES)
        head += '\0' + note;
    put_text(std::span(record).subspan(1, 50), head);
    put_text(std::span(record).subspan(51, 18), name);
    return record;
}

static journal_words request(int tag) {
    switch (tag) {
    case 89: return mc_record();
    case JOURNAL_BEGIN: return begin_record();
    case JOURNAL_LIST: return {JOURNAL_LIST, 4 * JOURNAL_MAX_INDEX + JOURNAL_MAX_WORDS};
    case JOURNAL_SAVE:
    case JOURNAL_ABORT: return {tag};
    default: return step_record(tag);
    }
}

static bool is_journal_tag(int tag) {
    return (tag >= 0 && tag <= JOURNAL_BEGIN) || tag == JOURNAL_SAVE || tag == JOURNAL_ABORT ||
           tag == JOURNAL_LIST;
}

// What the main window shows after the step, or after its refusal: its fields must never stay locked.
static void show_window(int tag) {
    if (tag <= 2 || tag == 23 || tag == 27 || tag == 48 || (tag == 41 && !dpwinon))
        journal_hooks.enable_fields(1);
    static constexpr int CORRECTIONS[] = {4, 5, 6, 14, 23, 31, 32, 41, 48};
    if (std::ranges::count(CORRECTIONS, tag)) journal_hooks.show_track_button(false);
}

static void show_position(int tag) {
    if (!rpwinon && !dpwinon && !pkswinon && !mcwinon) journal_hooks.show_count();
    if (user.estyle && tag != 28) jrnl(JOURNAL_LIST);
}

static void show_listing(const journal_words& reply) {
    std::string text;
    get_jrnl_info(text, reply);
    journal_hooks.show_listing(text);
}

static void show_refusal(int tag, const journal_words& reply) {
    const bool unasked = tag == 89 || tag == JOURNAL_SAVE || tag == JOURNAL_ABORT;
    const std::string text = journal_text(reply);
    if (!unasked && !text.empty()) popmsg(text);
}

void jrnl(int tag) {
    if (!is_journal_tag(tag)) return popmsg("ERROR(1) in jrnl()/jrnl -- bad jrnl tag!");
    if (managing == 1) return;

    // The crash file names the position before the step until the journal has the step: together the two
    // files are sound at every moment, also while a step replaces later ones and their corrections.
    const bool is_step = tag < 89;
    std::string crash_bytes;
    keep_crash_file(is_step ? user.count : eoj, crash_bytes);

    if (tag == JOURNAL_SAVE) journal_fault_shown = false; // told again: this may be the last call
    if (tag == JOURNAL_ABORT) user.pfdata.clear();
    const journal_words in = request(tag);
    const journal_words out = in.empty() ? journal_words{-1} : ask_store(in);
    if (refused(out)) {
        show_refusal(tag, out);
        // A journal that could not be begun must not go on in the file of the one before it.
        if (tag == JOURNAL_BEGIN && eoj == 0) ask_store(journal_words{JOURNAL_ABORT});
    } else if (is_step) {
        user.count = eoj = out[0];
    }
    if (is_step) keep_crash_file(user.count, crash_bytes);
    // The corrections are no step: should the analysis go on, the next step takes their place.
    if (tag == 89) ask_store(journal_words{JOURNAL_GOTO, user.count});

    if (!refused(out) && is_step) show_position(tag);
    if (!refused(out) && tag == JOURNAL_LIST) show_listing(out);
    show_window(tag);
}

} // namespace norva
