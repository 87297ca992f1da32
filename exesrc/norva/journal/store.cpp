// The journal store: memory, cursor, and when the file is written.
#include "journal/store.h"

#include "bytes.h"
#include "journal/record.h"
#include "journal_file.h"
#include "zuvsys/safefile.h"
#include "zuvsys/stop.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace norva {

namespace fs = std::filesystem;
using words_in = std::span<const std::int32_t>;
using words_out = std::vector<std::int32_t>;

journal_store_calls journal_store_hooks = {
    .write_failed = [](const char* text) { stop(text); },
    .name_taken = [](const std::string&) { return std::string(); },
};

// The words stand alone, so that a program that never journals pays nothing for the four megabytes of zeros.
static std::int32_t IR[JOURNAL_MAX_WORDS];

static struct journal_store {
    std::array<char, JOURNAL_HEAD_BYTES> HEAD{};
    std::string FILEO;    // output file; empty when there is none, then nothing is appended
    bool STA_OLD = false; // FILEO has been written by this store
    bool unsaved = false; // FILEO lags behind the memory
    int NJ = -1;          // 0 when a journal is defined, -1 when not
    int NC = -1;          // last record
    int IC = -1;          // current record
    int LAST = -1;        // record last given to the caller
    int NP = 0;           // next free word of IR
    std::array<std::int32_t, JOURNAL_MAX_INDEX + 1> INDX{};

    words_in indx() const { return {INDX.data(), static_cast<std::size_t>(NC + 1)}; }
    words_in words() const { return {IR, static_cast<std::size_t>(NP)}; }
} js;

static const char* const CANNOT_WRITE = "XVEN: NEEDS WRITE PRIVILEDGE IN LOCAL DIRECTORY";
static const char* const INVALID_ACTION = "***Error...Invalid control action";
static const char* const UNDEFINED_STEP = "***Error...This processing step is not defined";

static constexpr std::size_t BMES = JOURNAL_NAME_BYTES; // bytes of an error text

static void reply_text(words_out& out, const std::string& text) {
    std::string padded = text;
    padded.resize(BMES, ' ');
    out.assign(2 + BMES / 4, 0);
    out[0] = -1;
    out[1] = BMES;
    put_text(std::span(out).subspan(2), padded);
}

std::string journal_text(words_in out) {
    if (out.size() < 2 || out[0] != -1 || out[1] < 0) return {};
    std::string text = get_text(out.subspan(2), static_cast<std::size_t>(out[1]));
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

// The current record becomes the reply.
static void reply_record(words_out& out) {
    const std::int32_t* record = IR + js.INDX[js.IC];
    out.assign(1, js.IC);
    out.insert(out.end(), record, record + 3 + record[2]);
    js.LAST = js.IC;
}

// Writes FILEO; false after the hook has been told.
static bool save() {
    const std::string bytes = encode_journal({js.HEAD.data(), js.HEAD.size()}, js.indx(), js.words());
    const auto taken = [](const std::string& name) {
        std::error_code ignored;
        return fs::exists(fs::symlink_status(name, ignored));
    };
    if (!js.STA_OLD && taken(js.FILEO)) {
        const std::string other = journal_store_hooks.name_taken(js.FILEO);
        if (!other.empty() && !taken(other)) js.FILEO = other;
    }
    const bool allowed = js.STA_OLD || !taken(js.FILEO);
    js.unsaved = !allowed || !write_text_safely(js.FILEO, bytes);
    if (js.unsaved)
        journal_store_hooks.write_failed(CANNOT_WRITE);
    else
        js.STA_OLD = true;
    return !js.unsaved;
}

static void empty_store() {
    js.NP = 0;
    js.NC = js.IC = js.LAST = js.NJ = -1;
    js.FILEO.clear();
    js.STA_OLD = js.unsaved = false;
}

static void append(words_in in, words_out& out) {
    const std::int64_t na = in.size() > 2 ? in[2] : -1;
    if (in[0] < 0 || na < 0 || na + 3 > std::ssize(in)) return reply_text(out, INVALID_ACTION);
    if (js.IC + 1 > JOURNAL_MAX_INDEX)
        return reply_text(out, "***Error in JOURNAL...INDX dimension exceeded");
    if (na + js.NP + 3 > JOURNAL_MAX_WORDS)
        return reply_text(out, "***Error in JOURNAL...IR dimension exceeded");
    if (js.NJ < 0 || js.FILEO.empty()) return reply_text(out, "***Error in JOURNAL...No output file name");

    std::copy_n(in.begin(), na + 3, IR + js.NP);
    js.NC = ++js.IC;
    js.INDX[js.IC] = js.NP;
    js.NP += static_cast<int>(na) + 3;
    reply_record(out);
    save();
}

static void begin(words_in in, words_out& out) {
    if (in.size() < 69) return reply_text(out, INVALID_ACTION);
    const std::string name = get_text(in.subspan(51, 18), JOURNAL_NAME_BYTES);
    const int length = lenb(name.data(), JOURNAL_NAME_BYTES);
    if (length <= 0) return reply_text(out, "***Error...No file name supplied for Journal");
    js.FILEO = name.substr(0, static_cast<std::size_t>(length));
    get_text(in.subspan(1, 50), JOURNAL_HEAD_BYTES).copy(js.HEAD.data(), js.HEAD.size());
    js.STA_OLD = js.unsaved = false;
    js.IC = js.LAST = -1;
    js.NJ = 0;
    out.clear();
}

static void go_to(words_in in, words_out& out) {
    if (in.size() < 2) return reply_text(out, INVALID_ACTION);
    if (in[1] < 0 || js.NC < 0) return reply_text(out, UNDEFINED_STEP);
    js.IC = std::min(in[1], js.NC);
    reply_record(out);
}

static void step(words_in in, words_out& out) {
    if (in.size() < 2) return reply_text(out, INVALID_ACTION);
    if (in[1] == 0) return reply_text(out, "***Error...No backup/forward indicated");
    const std::int64_t target = std::int64_t{js.IC} + in[1];
    if ((js.LAST == 0 || js.NC < 0) && target < 0)
        return reply_text(out, "***Error...Cannot backup any further");
    if (js.LAST == js.NC && target > js.NC) return reply_text(out, "***Error...Cannot advance any further");
    js.IC = static_cast<int>(std::clamp<std::int64_t>(target, 0, js.NC));
    reply_record(out);
}

static void save_and_close(words_out& out) {
    if (js.NC < 0) return reply_text(out, "***Error...Journal file not defined");
    if (js.FILEO.empty()) return reply_text(out, "***Error...No file name supplied for Journal");
    if (!save()) return reply_text(out, CANNOT_WRITE);
    empty_store();
    reply_text(out, "Journal saved on file");
}

// The bytes of a regular file, but no more than a legal journal has: the rest would be ignored anyway.
static std::string read_journal_bytes(const std::string& name) {
    std::error_code error;
    if (!fs::is_regular_file(name, error)) return {}; // a pipe would keep the program waiting
    const auto size = fs::file_size(name, error);
    std::string bytes(error ? 0 : std::min<std::uintmax_t>(size, JOURNAL_MAX_FILE), '\0');
    std::ifstream file(name, std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

static void load(words_in in, words_out& out) {
    if (in.size() < 2 || in[1] < 0 || (std::int64_t{in[1]} + 3) / 4 > std::ssize(in) - 2)
        return reply_text(out, INVALID_ACTION);
    std::string name = get_text(in.subspan(2), static_cast<std::size_t>(in[1]));
    name.erase(std::min(name.find('\0'), name.size()));
    std::error_code ignored;
    if (!fs::exists(name, ignored)) return reply_text(out, "***Error...Journal file does not exist");

    journal_image image;
    words_out head(50);
    const bool sound = decode_journal(read_journal_bytes(name), image);
    if (sound) put_text(head, {image.head.data(), image.head.size()});
    // A reply that starts with -1 would pass for an error; no file name starts with these four bytes.
    if (!sound || head[0] == -1) return reply_text(out, "***Error...Cannot read Journal File");

    empty_store();
    js.HEAD = image.head;
    for (const std::int32_t from : image.indx) { // the file's dead words stay behind
        const std::int32_t length = image.ir[from + 2] + 3;
        std::copy_n(image.ir.begin() + from, length, IR + js.NP);
        js.INDX[++js.NC] = js.NP;
        js.NP += length;
    }
    js.NJ = js.IC = 0;
    words_out record;
    reply_record(record);
    out = head;
    out.insert(out.end(), record.begin(), record.end());
}

static void abort_journal(words_out& out) {
    if (js.STA_OLD) {
        std::error_code ignored;
        fs::remove(js.FILEO, ignored);
    }
    empty_store();
    reply_text(out, "Journal aborted");
}

static void list(words_in in, words_out& out) {
    if (in.size() < 2) return reply_text(out, INVALID_ACTION);
    const auto room = static_cast<std::size_t>(std::max(in[1], 0));
    out.assign(1, js.NC);
    for (const std::int32_t at : js.indx()) {
        const words_in record(IR + at, 3 + static_cast<std::size_t>(IR[at + 2]));
        out.insert(out.end(), {record[0], record[1]});
        if (record[0] == 27) {
            const words_in tags = record.size() > 7 ? record.subspan(7) : words_in{};
            out.push_back(static_cast<std::int32_t>(tags.size()));
            out.insert(out.end(), tags.begin(), tags.end());
        }
        if (out.size() >= room) break;
    }
    if (out.size() > room) out.resize(room);
}

void journal(words_in in, words_out& out) {
    if (in.empty()) return reply_text(out, INVALID_ACTION);
    switch (in[0]) {
    case JOURNAL_BEGIN: return begin(in, out);
    case JOURNAL_GOTO: return go_to(in, out);
    case JOURNAL_STEP: return step(in, out);
    case JOURNAL_SAVE: return save_and_close(out);
    case JOURNAL_LOAD: return load(in, out);
    case JOURNAL_ABORT: return abort_journal(out);
    case JOURNAL_LIST: return list(in, out);
    default: return in[0] < JOURNAL_BEGIN ? append(in, out) : reply_text(out, INVALID_ACTION);
    }
}

int journal_next_index() {
    return js.IC + 1;
}

int journal_words_left() {
    return JOURNAL_MAX_WORDS - js.NP;
}

bool journal_unsaved() {
    return js.unsaved;
}

static int find(const char* a, int n, auto wanted) {
    for (int i = 1; i <= n; i++)
        if (wanted(a[i - 1])) return i;
    for (int i = -n; i >= 1; i--)
        if (wanted(a[i - 1])) return i;
    return 0;
}

int lbeq(const char* a, char b, int n) {
    return find(a, n, [b](char c) { return c == b; });
}

int lbne(const char* a, char b, int n) {
    return find(a, n, [b](char c) { return c != b; });
}

int lenb(const char* a, int n) {
    return lbeq(a, '\0', n) - 1;
}

} // namespace norva
