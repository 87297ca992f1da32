// The header of a raw file: recognition, the parameters gp, the header text.
#include "app/gpf.h"

#include "app/cdf_input.h"
#include "app/kwin.h"
#include "fileio/cdf.h"
#include "fileio/gat.h"
#include "mocomp/polar_keywords.h"
#include "mocomp/polar_window.h"
#include "state/calls.h"
#include "state/run.h"
#include "state/user.h"
#include "zuvsys/strprintf.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <strings.h>

namespace norva {

raw_kind data_type = raw_kind::none;
raw_texts kw_ss;
bool acc = false;

const char* const signal_types[4] = {"sampled cw", "narrowband multigate", "conventional LFM",
                                     "frequency stepping"};

constexpr std::size_t VALUE_COLUMN = 50;  // header lines: dots up to here
constexpr std::size_t VALUE_LENGTH = 206; // of a line's 256 characters
constexpr std::size_t KW_VALUE_LENGTH = 80;

// Keywords that the header text shows in lines of their own, or not at all.
static constexpr std::array known_keywords = {
    "R0",    "DATA_SOURCE",  "TARGET_TYPE", "TRACK_INFO",       "MOT_COMP",    "SIG_TYPE",
    "NREC",  "T0",           "WFRI",        "WAVEFORM_REP_INT", "STEP_FREQ",   "FIRST_FREQ",
    "NFREQ", "PULSE_LENGTH", "KSX",         "FIRST_REC",        "CENTER_FREQ", "BANDWIDTH",
    "t0",    "ngat",         "dattype",     "incrng",           "prf"};
static_assert(known_keywords.size() == 23);

// The gate header's own values, served as keywords by exactly these names.
static bool is_header_name(const std::string& name) {
    return name == "t0" || name == "ngat" || name == "dattype" || name == "incrng" || name == "prf";
}

static bool same_name(const std::string& a, const std::string& b) {
    return strcasecmp(a.c_str(), b.c_str()) == 0;
}

bool is_known_keyword(const std::string& name) {
    return std::any_of(known_keywords.begin(), known_keywords.end(),
                       [&](const char* known) { return same_name(name, known); });
}

std::string header_line(const std::string& label, const std::string& value) {
    std::string line = label;
    if (line.size() < VALUE_COLUMN) line.resize(VALUE_COLUMN, '.');
    return line + value + "\n";
}

int classify_signal(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t");
    switch (first == std::string::npos ? '\0' : text[first]) {
    case 'n':
    case 'N':
    case 'm':
    case 'M': return 1;
    case 'c':
    case 'C':
    case 'l':
    case 'L': return 2;
    default: return 3;
    }
}

namespace {

// An open gate file and the keywords of it that are looked at.
class keyword_reader {
public:
    explicit keyword_reader(_gatfile* file) : file_(file) {
        const int count = std::min(u_kwget_n(file_), KW_MAX);
        for (int i = 0; i < count; i++) {
            raw_keyword kw;
            if (u_kwindx(file_, i, kw.name, kw.type) != ZUV_OK) break;
            kw.value = value_text(kw);
            listed_.push_back(std::move(kw));
        }
    }

    const std::vector<raw_keyword>& listed() const { return listed_; }

    // Each leaves `value` alone and answers false when the file has no such keyword of that type.
    bool get(const char* name, int& value) const {
        if (!has(name)) return false;
        const int found = u_kwget_i(file_, name);
        return u_error() == ZUV_OK && (value = found, true);
    }
    bool get(const char* name, double& value) const {
        if (!has(name)) return false;
        const double found = u_kwget_d(file_, name);
        return u_error() == ZUV_OK && (value = found, true);
    }
    std::string text(const char* name) const { return has(name) ? u_kwget_s(file_, name) : std::string(); }

private:
    bool has(const char* name) const {
        return std::any_of(listed_.begin(), listed_.end(), [&](const raw_keyword& kw) {
            return is_header_name(kw.name) ? kw.name == name : same_name(kw.name, name);
        });
    }

    std::string value_text(const raw_keyword& kw) const {
        std::string text;
        switch (kw.type) {
        case KW_INT: text = strprintf("%d", u_kwget_i(file_, kw.name)); break;
        case KW_DOUBLE: text = strprintf("%f", u_kwget_d(file_, kw.name)); break;
        default: text = u_kwget_s(file_, kw.name); break;
        }
        return text.substr(0, KW_VALUE_LENGTH);
    }

    _gatfile* file_;
    std::vector<raw_keyword> listed_;
};

} // namespace

static std::string held_value(const std::string& text) {
    return text.size() > VALUE_LENGTH ? text.substr(0, VALUE_LENGTH - 1) : text;
}

// The five lines of text, and the signal type.
static std::string text_lines(const raw_texts& texts, const std::string& signal) {
    kw_ss = texts;
    gp.sigtype = classify_signal(signal);
    return header_line("Data source", held_value(kw_ss.data_source)) +
           header_line("Target type", held_value(kw_ss.target_type)) +
           header_line("Tracking info", held_value(kw_ss.track_info)) +
           header_line("Motion comp", held_value(kw_ss.mot_comp)) +
           header_line("Signal type", held_value(signal));
}

// False when a required keyword is missing.
static bool read_numbers(const keyword_reader& keywords, header_numbers& h) {
    bool complete = keywords.get("NREC", h.nrec);
    complete &= keywords.get("T0", h.t0);
    complete &= keywords.get("WFRI", h.wfri) || keywords.get("WAVEFORM_REP_INT", h.wfri);
    complete &= keywords.get("STEP_FREQ", h.df);
    complete &= keywords.get("FIRST_FREQ", h.f0);
    complete &= keywords.get("NFREQ", h.nf);
    keywords.get("PULSE_LENGTH", h.plen);
    keywords.get("KSX", h.ksx);
    return complete;
}

// Shows every fault of the numbers. The file's own extent (records, samples) is checked as well, so that a
// window of the data that the keywords tell of can always be read.
static bool acceptable(const header_numbers& h, std::int64_t nrec, int nf) {
    bool good = true;
    const auto check = [&](bool passes, const std::string& message) {
        if (passes) return;
        popmsg(message);
        good = false;
    };
    const auto usable = [](double value) { return std::isfinite(static_cast<float>(value)); };
    check(h.nrec >= 1, "Error: number of pulses < 1!");
    check(h.nf >= 1, "Error: number of freq samples < 1!");
    check(h.nf >= 1, "Error: number of freq samples < 1!");
    check(static_cast<float>(h.df) != 0 && usable(h.df), "Error: step frequency cannot be 0.!");
    check(h.f0 >= 1e7 && usable(h.f0), "Error: first freq < 10 MHz!");
    check(static_cast<float>(h.wfri) > 0 && usable(h.wfri), "Error: waveform rep. interval < 0.!");
    check(usable(h.t0), "Error: start time is not a number!");
    check(h.nrec <= nrec, strprintf("Error: number of pulses is %d, but the file holds %lld!", h.nrec,
                                    static_cast<long long>(nrec)));
    check(h.nf <= nf, strprintf("Error: number of freq samples is %d, but the file holds %d!", h.nf, nf));
    return good;
}

static void take_numbers(const header_numbers& h) {
    gp.nrec = h.nrec;
    gp.nf = h.nf;
    gp.ksx = h.ksx;
    gp.t0 = static_cast<float>(h.t0);
    gp.wfri = static_cast<float>(h.wfri);
    gp.plen = static_cast<float>(h.plen);
    gp.f0 = static_cast<float>(h.f0 / 1e6);
    gp.df = static_cast<float>(h.df / 1e6);
    gp.bw = static_cast<float>(h.nf * h.df / 1e6);
    user.ksy = gp.bw < 0 ? -1 : 1;
    user.ksx = gp.ksx > 0 ? 1 : -1;
    user.rh = static_cast<float>(h.plen / h.wfri);
}

static std::string number_lines(const header_numbers& h) {
    const double fcen = h.f0 + 0.5 * (h.nf - 1) * h.df;
    const auto real = [](double value) { return strprintf("%f", value); };
    const auto whole = [](int value) { return strprintf("%d", value); };
    return header_line("Start time (sec)", real(h.t0)) +
           header_line("End time (sec)", real((h.nrec - 1) * h.wfri + h.t0)) +
           header_line("Waveform repetition interval (sec)", real(h.wfri)) +
           header_line("Number of time samples", whole(h.nrec)) +
           header_line("Center frequency (MHz)", real(fcen / 1e6)) +
           header_line("Bandwidth (MHz)", real(h.nf * h.df / 1e6)) +
           header_line("Frequency sample spacing (MHz)", real(h.df / 1e6)) +
           header_line("Number of frequency samples", whole(h.nf)) +
           header_line("Duty Ratio", real(h.plen / h.wfri)) + header_line("KSX (-1 or 1)", whole(h.ksx));
}

static std::string other_lines(const std::vector<raw_keyword>& keywords) {
    std::string text;
    for (const raw_keyword& kw : keywords) {
        if (is_known_keyword(kw.name)) continue;
        if (text.empty()) text = "\nOther Keywords\n";
        text += header_line(kw.name, kw.value);
    }
    return text;
}

static std::string title(const std::string& kind) {
    return "File Parameters for " + kind + user.rdfile + "\n" + std::string(VALUE_COLUMN, '-') + "\n\n";
}

static std::string gate_header(_gatfile* file) {
    const keyword_reader keywords(file);
    keywords.get("R0", kw_r0);
    const raw_texts texts = {keywords.text("DATA_SOURCE"), keywords.text("TARGET_TYPE"),
                             keywords.text("TRACK_INFO"), keywords.text("MOT_COMP")};
    const std::string head =
        title("") + text_lines(texts, acc ? kwin_signal_text() : keywords.text("SIG_TYPE"));
    header_numbers numbers;
    if (acc) {
        numbers = get_kw_vals();
    } else {
        const bool complete = read_numbers(keywords, numbers);
        rd_plr_kw(file);
        if (plr_kw_stat()) pkw_putvals();
        if (!complete) {
            kwin_init(numbers);
            return {};
        }
    }
    if (!acceptable(numbers, file->nelements, file->hd.ngat)) {
        user.rdfile.clear();
        return {};
    }
    take_numbers(numbers);
    return head + number_lines(numbers) + other_lines(keywords.listed());
}

static std::string pattern_header() {
    const std::string head = title("CDF file ") + text_lines(cdf_texts, cdf_signal_text);
    header_numbers numbers;
    if (!rd_cdf(numbers) || !acceptable(numbers, numbers.nrec, numbers.nf)) {
        user.rdfile.clear();
        return {};
    }
    choose_pol_init();
    take_numbers(numbers);
    return head + number_lines(numbers);
}

std::string get_gpf_hdr() {
    data_type = raw_kind::none;
    kw_r0 = 0;
    choose_pol_leave();
    if (const gatfile_ptr file = opengat(user.rdfile, "Old", gp.nf)) {
        data_type = raw_kind::gate;
        return gate_header(file.get());
    }
    const int status = getgaterror();
    if (is_cdf(user.rdfile)) {
        data_type = raw_kind::cdf;
        return pattern_header();
    }
    popmsg(strprintf("ERROR(%d) in get_gpf_hdr()/get_gpf -- Unable to open file ", status) + user.rdfile +
           " for reading!");
    return {};
}

} // namespace norva
