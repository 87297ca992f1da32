// The header of a raw file: recognition, the parameters gp, the header text.
#include "app/gpf.h"

#include "app/kwin.h"
#include "fileio/gat.h"
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

static bool is_known(const std::string& name) {
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
    bool get(const char* name, float& value) const {
        double wide = 0;
        return get(name, wide) && (value = static_cast<float>(wide), true);
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
static std::string text_lines(const keyword_reader& keywords) {
    kw_ss = {keywords.text("DATA_SOURCE"), keywords.text("TARGET_TYPE"), keywords.text("TRACK_INFO"),
             keywords.text("MOT_COMP")};
    const std::string signal = acc ? kwin_signal_text() : keywords.text("SIG_TYPE");
    gp.sigtype = classify_signal(signal);
    return header_line("Data source", held_value(kw_ss.data_source)) +
           header_line("Target type", held_value(kw_ss.target_type)) +
           header_line("Tracking info", held_value(kw_ss.track_info)) +
           header_line("Motion comp", held_value(kw_ss.mot_comp)) +
           header_line("Signal type", held_value(signal));
}

// The numbers, in Hz as the file has them. False when a required keyword is missing.
static bool read_numbers(const keyword_reader& keywords) {
    const int sigtype = gp.sigtype;
    gp = {};
    gp.sigtype = sigtype;
    bool complete = keywords.get("NREC", gp.nrec);
    complete &= keywords.get("T0", gp.t0);
    complete &= keywords.get("WFRI", gp.wfri) || keywords.get("WAVEFORM_REP_INT", gp.wfri);
    complete &= keywords.get("STEP_FREQ", gp.df);
    complete &= keywords.get("FIRST_FREQ", gp.f0);
    complete &= keywords.get("NFREQ", gp.nf);
    keywords.get("PULSE_LENGTH", gp.plen);
    gp.ksx = -1;
    keywords.get("KSX", gp.ksx);
    return complete;
}

// Shows every fault of the parameters. The file's own extent is checked as well, so that a window of the
// keywords' data can always be read.
static bool acceptable(const _gatfile& file) {
    bool good = true;
    const auto check = [&](bool passes, const std::string& message) {
        if (passes) return;
        popmsg(message);
        good = false;
    };
    check(gp.nrec >= 1, "Error: number of pulses < 1!");
    check(gp.nf >= 1, "Error: number of freq samples < 1!");
    check(gp.nf >= 1, "Error: number of freq samples < 1!");
    check(gp.df != 0 && std::isfinite(gp.df), "Error: step frequency cannot be 0.!");
    check(gp.f0 >= 1e7f && std::isfinite(gp.f0), "Error: first freq < 10 MHz!");
    check(gp.wfri > 0 && std::isfinite(gp.wfri), "Error: waveform rep. interval < 0.!");
    check(std::isfinite(gp.t0), "Error: start time is not a number!");
    check(gp.nrec <= file.nelements, strprintf("Error: number of pulses is %d, but the file holds %lld!",
                                               gp.nrec, static_cast<long long>(file.nelements)));
    check(gp.nf <= file.hd.ngat, strprintf("Error: number of freq samples is %d, but the file holds %d!",
                                           gp.nf, static_cast<int>(file.hd.ngat)));
    return good;
}

static float duty_ratio() {
    return gp.plen / gp.wfri;
}

// The lines of numbers; on return the frequencies of gp are in MHz.
static std::string number_lines() {
    const double fcen = gp.f0 + 0.5 * (gp.nf - 1) * gp.df;
    const auto number = [](double value) { return strprintf("%f", value); };
    std::string text =
        header_line("Start time (sec)", number(gp.t0)) +
        header_line("End time (sec)", number((gp.nrec - 1) * static_cast<double>(gp.wfri) + gp.t0)) +
        header_line("Waveform repetition interval (sec)", number(gp.wfri)) +
        header_line("Number of time samples", strprintf("%d", gp.nrec)) +
        header_line("Center frequency (MHz)", number(fcen / 1e6)) +
        header_line("Bandwidth (MHz)", number(gp.bw / 1e6)) +
        header_line("Frequency sample spacing (MHz)", number(gp.df / 1e6)) +
        header_line("Number of frequency samples", strprintf("%d", gp.nf)) +
        header_line("Duty Ratio", number(duty_ratio())) +
        header_line("KSX (-1 or 1)", strprintf("%d", gp.ksx));
    gp.f0 /= 1e6f;
    gp.bw /= 1e6f;
    gp.df /= 1e6f;
    return text;
}

static std::string other_lines(const std::vector<raw_keyword>& keywords) {
    std::string text;
    for (const raw_keyword& kw : keywords) {
        if (is_known(kw.name)) continue;
        if (text.empty()) text = "\nOther Keywords\n";
        text += header_line(kw.name, kw.value);
    }
    return text;
}

std::string get_gpf_hdr() {
    data_type = raw_kind::none;
    const gatfile_ptr file = opengat(user.rdfile, "Old", gp.nf);
    if (!file) {
        popmsg(strprintf("ERROR(%d) in get_gpf_hdr()/get_gpf -- Unable to open file ", getgaterror()) +
               user.rdfile + " for reading!");
        return {};
    }
    data_type = raw_kind::gate;

    const keyword_reader keywords(file.get());
    std::string text = "File Parameters for " + user.rdfile + "\n" + std::string(VALUE_COLUMN, '-') + "\n\n";
    kw_r0 = 0;
    keywords.get("R0", kw_r0);
    text += text_lines(keywords);
    if (acc) {
        get_kw_vals();
    } else if (!read_numbers(keywords)) {
        kwin_init();
        return {};
    }
    if (!acceptable(*file)) {
        user.rdfile.clear();
        return {};
    }
    gp.bw = gp.nf * gp.df;
    user.ksy = gp.bw < 0 ? -1 : 1;
    user.ksx = gp.ksx > 0 ? 1 : -1;
    text += number_lines();
    user.rh = duty_ratio();
    return text + other_lines(keywords.listed());
}

} // namespace norva
