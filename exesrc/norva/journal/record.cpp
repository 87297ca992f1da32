// The layouts of the steps' records.
#include "journal/record.h"

#include "state/run.h"
#include "state/user.h"

#include <algorithm>
#include <bit>
#include <climits>

namespace norva {

using words_in = std::span<const std::int32_t>;

static constexpr int SPLINE_MAX = 1000000; // fitted values of one spline

// What stands behind the base form, by tag.
static bool has_range_flag(int tag) {
    return tag >= 10 && tag <= 17;
}
static bool has_doppler_flag(int tag) {
    return tag >= 37 && tag <= 44;
}
static bool has_mwi(int tag) {
    return tag >= 19 && tag <= 26;
}
static bool has_doppler(int tag) {
    return tag >= 30 && tag <= 36;
}
static bool has_track(int tag) {
    return tag == 46 || tag == 47;
}
static bool has_spline(int tag) {
    return tag == 13 || tag == 24 || tag == 40 || tag == 47;
}
static bool has_tags(int tag) {
    return tag == 27;
}
static bool has_actions(int tag) {
    return tag == 28;
}

void put_text(std::span<std::int32_t> words, const std::string& text) {
    for (std::size_t i = 0; i < words.size(); i++) {
        std::uint32_t bits = 0;
        for (std::size_t b = 0; b < 4; b++)
            if (4 * i + b < text.size())
                bits |= static_cast<std::uint32_t>(static_cast<unsigned char>(text[4 * i + b])) << (8 * b);
        words[i] = static_cast<std::int32_t>(bits);
    }
}

std::string get_text(words_in words, std::size_t n_bytes) {
    std::string text(std::min(n_bytes, 4 * words.size()), '\0');
    for (std::size_t i = 0; i < text.size(); i++)
        text[i] = static_cast<char>(static_cast<std::uint32_t>(words[i / 4]) >> (8 * (i % 4)) & 0xff);
    return text;
}

void put_doubles(journal_words& words, std::span<const double> values) {
    for (const double value : values) {
        const auto bits = std::bit_cast<std::uint64_t>(value);
        words.push_back(static_cast<std::int32_t>(bits));
        words.push_back(static_cast<std::int32_t>(bits >> 32));
    }
}

void get_doubles(words_in words, std::span<double> values) {
    for (std::size_t i = 0; i < values.size(); i++) {
        const auto low = static_cast<std::uint32_t>(words[2 * i]);
        const auto high = static_cast<std::uint32_t>(words[2 * i + 1]);
        values[i] = std::bit_cast<double>(static_cast<std::uint64_t>(high) << 32 | low);
    }
}

// The work array's own length: 2a + 3b + 1 doubles, a and b being its first two words. -1 when that is
// not what stands there.
static std::int64_t spline_length(words_in counts, std::size_t doubles) {
    const std::int64_t a = counts[0], b = counts[1], nwk = 2 * a + 3 * b + 1;
    return a < 0 || b < 0 || nwk > static_cast<std::int64_t>(doubles) ? -1 : nwk;
}

static bool append_spline(journal_words& record, const journal_spline& spline) {
    if (spline.work.empty()) {
        record.insert(record.end(), {0, 0});
        return true;
    }
    journal_words counts;
    put_doubles(counts, spline.work.first(1));
    const std::int64_t nwk = spline_length(counts, spline.work.size());
    if (nwk < 0 || nwk > JRNL_MAX_WORDS / 2) return false;
    record.insert(record.end(), {spline.n, static_cast<std::int32_t>(nwk)});
    put_doubles(record, spline.work.first(static_cast<std::size_t>(nwk)));
    return true;
}

journal_words build_step(int tag, words_in image, std::string& message) {
    journal_words record = {tag, user.mc.ptr, 0, user.nf0, user.nf, user.nt0, user.nt};
    const auto add = [&record](std::initializer_list<std::int32_t> words) {
        record.insert(record.end(), words);
    };
    if (tag == 0) std::ranges::copy(std::array<std::int32_t, 4>{1, gp.nf, 1, gp.nrec}, record.begin() + 3);
    if (has_range_flag(tag)) add({rpwinon, 0, 0, 0, 0});
    if (has_doppler_flag(tag)) add({dpwinon, user.dp_ni, user.dp_ip, user.dp_lag, 0});
    if (has_doppler(tag)) add({user.dp_ni, user.dp_ip, user.dp_lag});
    if (has_mwi(tag)) {
        add({user.mwi_nti, user.mwi_lag, user.mwi_npk, user.mwi_ncoe});
        add({std::bit_cast<std::int32_t>(user.mwi_rh)});
    }
    if (has_track(tag)) {
        const std::string name = journal_hooks.track_file();
        if (name.size() > TRK_NAME_MAX) {
            message = "Trk file name is too long!";
            return {};
        }
        add({static_cast<std::int32_t>(name.size())});
        std::array<std::int32_t, TRK_NAME_MAX / 4> packed;
        put_text(packed, name);
        for (const std::int32_t word : packed) record.push_back(word);
    }
    const bool fits = !has_spline(tag) || append_spline(record, journal_hooks.spline());
    if (has_tags(tag)) record.insert(record.end(), image.begin(), image.end());
    if (has_actions(tag)) {
        record[1] = image.back();
        record.insert(record.end(), image.begin() + 1, image.end() - 1);
    }
    if (!fits || record.size() > JRNL_MAX_WORDS) {
        message = "ERROR(4) in jrnl()/jrnl -- not enough memory!";
        return {};
    }
    record[2] = static_cast<std::int32_t>(record.size()) - 3;
    return record;
}

std::size_t mc_record_words(const mcfile& mc, int n) {
    std::size_t words = 8 + 5 * static_cast<std::size_t>(n);
    for (int i = 0; i < n; i++) words += 2 * mc.t[i].size();
    return words;
}

journal_words build_mc_record(const mcfile& mc, int n) {
    journal_words record = {89, std::min(mc.ptr, n), 0, n};
    for (const auto* run : {&mc.flag, &mc.nf, &mc.nt, &mc.nf0, &mc.nt0})
        record.insert(record.end(), run->begin(), run->begin() + n);
    for (int i = 0; i < n; i++) put_doubles(record, mc.t[i].span());
    record.resize(record.size() + 4);
    record[2] = static_cast<std::int32_t>(record.size()) - 3;
    return record;
}

// A window of n samples from sample n0 on exists in some file.
static bool window_exists(int n0, int n) {
    return n0 >= 1 && n >= 1 && n <= INT_MAX - n0;
}

bool mc_is_sound(const mcfile& mc) {
    if (mc.nrecs < 0 || mc.nrecs > MC_MAX_REC || mc.ptr < 0 || mc.ptr > mc.nrecs) return false;
    for (int i = 0; i < mc.nrecs; i++) {
        if (mc.flag[i] < MC_DELAY || mc.flag[i] > MC_TRACK) return false;
        if (!window_exists(mc.nf0[i], mc.nf[i]) || !window_exists(mc.nt0[i], mc.nt[i])) return false;
        if (mc.t[i].size() != static_cast<std::size_t>(mc.values(i))) return false;
        const auto within = [](double size, int before) { return size >= 1 && size <= before; };
        if (mc.flag[i] == MC_DECIMATE && !(within(mc.t[i][0], mc.nf[i]) && within(mc.t[i][1], mc.nt[i])))
            return false;
    }
    return true;
}

std::string read_mc_record(words_in record, mcfile& mc) {
    const std::string damaged = "ERROR(5) in mng_jrnl()/jrnl -- Unable to load mocomp file!";
    if (record.size() < 4 || record[0] != 89 || record[2] < 0 ||
        record[2] + std::int64_t{3} > std::ssize(record))
        return damaged;
    record = record.first(static_cast<std::size_t>(record[2]) + 3);
    mcfile read;
    read.ptr = record[1];
    read.nrecs = record[3];
    if (read.nrecs > MC_MAX_REC) return damaged + "  (nrec > MC_MAX_REC)";
    if (read.nrecs < 0 || 4 + 5 * std::int64_t{read.nrecs} > std::ssize(record)) return damaged;

    words_in rest = record.subspan(4);
    for (auto* run : {&read.flag, &read.nf, &read.nt, &read.nf0, &read.nt0}) {
        std::copy_n(rest.begin(), read.nrecs, run->begin());
        rest = rest.subspan(static_cast<std::size_t>(read.nrecs));
    }
    for (int i = 0; i < read.nrecs; i++) {
        if (read.nt[i] < 0 || read.nt[i] == INT_MAX) return damaged;
        const auto n = static_cast<std::size_t>(read.values(i));
        if (2 * n > rest.size()) return damaged;
        read.t[i].reset(n);
        get_doubles(rest, read.t[i].span());
        rest = rest.subspan(2 * n);
    }
    if (!mc_is_sound(read)) return damaged;
    mc = std::move(read);
    return {};
}

static bool read_spline(words_in rest, journal_step& step) {
    if (rest.size() < 2 || rest[0] < 0 || rest[0] > SPLINE_MAX || rest[1] < 0) return false;
    step.uspl_n = rest[0];
    const auto nwk = static_cast<std::size_t>(rest[1]);
    rest = rest.subspan(2);
    if (2 * nwk > rest.size()) return false;
    if (nwk > 0 && spline_length(rest, nwk) != static_cast<std::int64_t>(nwk)) return false;
    step.uspl_wk.reset(nwk);
    get_doubles(rest, step.uspl_wk.span());
    return true;
}

bool read_step(words_in record, journal_step& step) {
    if (record.size() < 7 || record[2] < 4 || record[2] + std::int64_t{3} > std::ssize(record)) return false;
    const int tag = record[0];
    record = record.first(static_cast<std::size_t>(record[2]) + 3);
    step = {};
    step.tag = tag;
    step.mc_ptr = record[1];
    step.nf0 = record[3];
    step.nf = record[4];
    step.nt0 = record[5];
    step.nt = record[6];
    if (tag < 0 || tag > 88 || step.mc_ptr < 0) return false;
    if (!window_exists(step.nf0, step.nf) || !window_exists(step.nt0, step.nt)) return false;

    words_in rest = record.subspan(7); // not yet read
    const auto take = [&rest](std::initializer_list<int*> fields) {
        if (rest.size() < fields.size()) return false;
        for (int* field : fields) {
            *field = rest.front();
            rest = rest.subspan(1);
        }
        return true;
    };
    int unused = 0, bits = 0, length = 0;
    if (has_range_flag(tag) && !take({&step.window_on, &unused, &unused, &unused, &unused})) return false;
    if (has_doppler_flag(tag) && !take({&step.window_on, &step.dp_ni, &step.dp_ip, &step.dp_lag, &unused}))
        return false;
    if (has_doppler(tag) && !take({&step.dp_ni, &step.dp_ip, &step.dp_lag})) return false;
    if (has_mwi(tag)) {
        if (!take({&step.mwi_nti, &step.mwi_lag, &step.mwi_npk, &step.mwi_ncoe, &bits})) return false;
        step.mwi_rh = std::bit_cast<float>(bits);
    }
    if (has_track(tag)) {
        if (!take({&length}) || length < 0 || length > TRK_NAME_MAX || rest.size() < TRK_NAME_MAX / 4)
            return false;
        step.track_file = get_text(rest, static_cast<std::size_t>(length));
        rest = rest.subspan(TRK_NAME_MAX / 4);
    }
    if (has_spline(tag)) return read_spline(rest, step);
    if (has_actions(tag) && !rest.empty()) {
        const std::size_t k = rest.size() + 2;
        step.jary.reset(k + 1000);
        step.jary[0] = static_cast<std::int32_t>(k);
        std::ranges::copy(rest, step.jary.begin() + 1);
        step.jary[k - 1] = step.mc_ptr;
    }
    return true;
}

std::string journal_head_name(words_in load_reply) {
    std::string name = get_text(load_reply, JOURNAL_HEAD_BYTES);
    return name.substr(0, name.find('\0'));
}

std::string journal_head_note(words_in load_reply) {
    const std::string head = get_text(load_reply, JOURNAL_HEAD_BYTES);
    const std::size_t end = head.find('\0');
    if (end == std::string::npos) return {};
    const std::string note = head.substr(end + 1);
    return note.substr(0, note.find('\0'));
}

} // namespace norva
