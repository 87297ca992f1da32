// CDF pattern files.
#include "fileio/cdf.h"

#include "line_reader.h"
#include "zuvsys/numparse.h"
#include "zuvsys/strprintf.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

namespace norva {

const char* const cdf_poles[8] = {"HH", "HV", "VH", "VV", "LL", "RL", "LR", "RR"};

namespace {

constexpr double most_count = 1e9; // of frequencies and scan positions
constexpr double least_hz = 1e6;   // frequencies below are in MHz

enum item { STEPS, POLARIZATION, BASE_FREQUENCY, DELTA_FREQUENCY, START_SCAN, STOP_SCAN, DELTA_SCAN, ITEMS };
constexpr std::array<const char*, ITEMS> item_words = {"NUMBER OF FREQUENCY STEPS",
                                                       "POLARIZATION",
                                                       "BASE FREQUENCY",
                                                       "DELTA FREQUENCY",
                                                       "START SCAN",
                                                       "STOP SCAN",
                                                       "DELTA SCAN"};

bool is_blank(char c) {
    return c == ' ' || c == '\t';
}

std::string shown(std::string_view text) {
    return "\"" + std::string(text.substr(0, 40)) + "\"";
}

// Where the words of an item end in a line, npos when it does not start with them.
std::size_t behind_words(std::string_view line, const char* words) {
    std::size_t i = 0;
    while (i < line.size() && is_blank(line[i])) i++;
    for (; *words; words++) {
        if (i == line.size()) return std::string_view::npos;
        if (*words == ' ') {
            if (!is_blank(line[i])) return std::string_view::npos;
            while (i < line.size() && is_blank(line[i])) i++;
        } else if (std::toupper(static_cast<unsigned char>(line[i++])) != *words) {
            return std::string_view::npos;
        }
    }
    const bool whole = i == line.size() || !std::isalnum(static_cast<unsigned char>(line[i]));
    return whole ? i : std::string_view::npos;
}

// What stands behind the last "=", ":" or run of two blanks; all of it when there is none of these.
std::string_view value_of(std::string_view rest) {
    rest = trimmed(rest);
    for (std::size_t i = rest.size(); i > 0; i--) {
        const char c = rest[i - 1];
        const bool gap = c == '\t' || (i > 1 && is_blank(c) && is_blank(rest[i - 2]));
        if (c == '=' || c == ':' || gap) return trimmed(rest.substr(i));
    }
    return rest;
}

// The words of a text that blanks, commas and the like part.
std::vector<std::string_view> split(std::string_view text) {
    constexpr const char* separators = " \t,;=:/";
    std::vector<std::string_view> words;
    for (std::size_t i = 0; (i = text.find_first_not_of(separators, i)) != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(separators, i), text.size());
        words.push_back(text.substr(i, end - i));
        i = end;
    }
    return words;
}

// Takes the number at the start of `line`, and the blanks and commas behind it. False at anything else.
bool take_number(std::string_view& line, double& value) {
    const std::size_t n = prefix_double(line, value);
    if (n == 0) return false;
    line.remove_prefix(n);
    const std::size_t next = line.find_first_not_of(" \t,");
    if (next == 0) return false;
    line.remove_prefix(std::min(next, line.size()));
    return true;
}

bool is_numbers(std::string_view line) {
    line = trimmed(line);
    double value = 0;
    if (line.empty()) return false;
    while (!line.empty())
        if (!take_number(line, value)) return false;
    return true;
}

struct header_items {
    std::array<std::optional<double>, ITEMS> number;
    std::vector<std::string> poles;
};

std::string take_poles(std::string_view rest, std::vector<std::string>& poles) {
    poles.clear();
    for (std::string_view word : split(rest)) {
        std::string pole(word);
        std::ranges::transform(pole, pole.begin(), [](unsigned char c) { return std::toupper(c); });
        if (std::ranges::find(cdf_poles, pole) == std::end(cdf_poles))
            return shown(word) + " is no polarization (HH, HV, VH, VV, LL, RL, LR or RR)";
        if (std::ranges::find(poles, pole) != poles.end()) return "POLARIZATION names " + pole + " twice";
        poles.push_back(pole);
    }
    return {};
}

// An item of the header, or a line that is none.
std::string take_item(std::string_view line, header_items& items) {
    for (int i = 0; i < ITEMS; i++) {
        const std::size_t end = behind_words(line, item_words[i]);
        if (end == std::string_view::npos) continue;
        if (i == POLARIZATION) return take_poles(line.substr(end), items.poles);
        const std::string_view value = value_of(line.substr(end));
        items.number[i] = whole_double(value);
        if (!items.number[i] || !std::isfinite(*items.number[i]))
            return std::string(item_words[i]) + ": " + shown(value) + " is no number";
    }
    return {};
}

std::string missing_items(const header_items& items) {
    std::string missing;
    for (int i = 0; i < ITEMS; i++)
        if (i == POLARIZATION ? items.poles.empty() : !items.number[i])
            missing += (missing.empty() ? "" : ", ") + std::string(item_words[i]);
    return missing;
}

double to_hz(double value, bool hz) {
    return hz || std::fabs(value) >= least_hz ? value : value * 1e6;
}

// The scan positions from start to stop, 0 when the step does not lead there.
double positions(double start, double stop, double step) {
    if (start == stop) return 1;
    const double steps = (stop - start) / step;
    constexpr double rounding = 1e-3; // of printed angles, in steps
    return step != 0 && steps > 0 ? std::floor(steps + rounding) + 1 : 0;
}

std::string to_header(const header_items& items, cdf_header& header) {
    const std::string missing = missing_items(items);
    if (!missing.empty()) return "the header lacks " + missing;
    const double nfreq = *items.number[STEPS];
    if (nfreq < 1 || nfreq > most_count || nfreq != std::floor(nfreq))
        return strprintf("%s is %g", item_words[STEPS], nfreq);
    const double nscan =
        positions(*items.number[START_SCAN], *items.number[STOP_SCAN], *items.number[DELTA_SCAN]);
    if (nscan < 1 || nscan > most_count)
        return strprintf("no scan goes from START SCAN %g to STOP SCAN %g by DELTA SCAN %g",
                         *items.number[START_SCAN], *items.number[STOP_SCAN], *items.number[DELTA_SCAN]);
    // Steps of a GHz and more are none: beside a first frequency in Hz they are in Hz, too.
    const bool hz = std::fabs(*items.number[BASE_FREQUENCY]) >= least_hz &&
                    std::fabs(*items.number[DELTA_FREQUENCY]) >= 1000;
    header = {.nfreq = static_cast<int>(nfreq),
              .nscan = static_cast<int>(nscan),
              .f0 = to_hz(*items.number[BASE_FREQUENCY], false),
              .df = to_hz(*items.number[DELTA_FREQUENCY], hz),
              .scan0 = *items.number[START_SCAN],
              .dscan = *items.number[DELTA_SCAN],
              .poles = items.poles};
    return {};
}

double samples_in(const cdf_header& header) {
    return static_cast<double>(header.poles.size()) * header.nscan * header.nfreq;
}

std::string counts_disagree(const cdf_header& header, const std::string& found) {
    return strprintf(
               "POLARIZATION, START SCAN to STOP SCAN and NUMBER OF FREQUENCY STEPS tell of %d x %d x %d "
               "samples, ",
               static_cast<int>(header.poles.size()), header.nscan, header.nfreq) +
           found;
}

// Reads up to the first line of data, which is in `line` then when `has_line` comes back true.
std::string read_header(line_reader& in, cdf_header& header, std::string_view& line, bool& has_line) {
    using outcome = line_reader::outcome;
    header_items items;
    has_line = false;
    outcome got = in.next(line);
    if (got != outcome::fault && !line.starts_with("@D")) return "it does not start with \"@D\"";
    while (got == outcome::line) {
        got = in.next(line);
        if (got != outcome::line || line.starts_with("@E")) break;
        if (line.starts_with('@')) continue;
        if ((has_line = is_numbers(line))) break;
        const std::string fault = take_item(line, items);
        if (!fault.empty()) return in.at(fault);
    }
    if (got == outcome::fault) return in.fault();
    const std::string fault = to_header(items, header);
    if (!fault.empty()) return fault;
    constexpr double least_bytes = 4; // of a sample: two digits, two separators
    if (samples_in(header) * least_bytes - 1 > in.size())
        return counts_disagree(header, strprintf("more than its %.0f bytes can hold", in.size()));
    return {};
}

// Takes the samples in the order of the file and keeps those of the window.
class sample_sink {
public:
    sample_sink(const cdf_header& header, std::size_t pole, const cdf_window& window, std::span<float> out)
        : header_(header), pole_(pole), window_(window), out_(out) {}

    // False when the amplitude is no float.
    bool take(double db, double degrees) {
        const bool wanted = at_pole_ == pole_ && scan_ >= window_.nscan0 - 1 &&
                            scan_ < window_.nscan0 - 1 + window_.nscan && freq_ >= window_.nfreq0 - 1 &&
                            freq_ < window_.nfreq0 - 1 + window_.nfreq;
        const double amplitude = std::pow(10.0, db / 20);
        if (!(amplitude <= std::numeric_limits<float>::max()) || !std::isfinite(degrees)) return false;
        if (wanted) {
            const double phase = std::remainder(degrees, 360) * std::numbers::pi / 180;
            out_[kept_++] = static_cast<float>(amplitude * std::cos(phase));
            out_[kept_++] = static_cast<float>(amplitude * std::sin(phase));
        }
        count_++;
        if (++freq_ == header_.nfreq) {
            freq_ = 0;
            if (++scan_ == header_.nscan) scan_ = 0, at_pole_++;
        }
        return true;
    }

    double count() const { return count_; }
    int scans() const { return at_pole_ == pole_ ? scan_ : at_pole_ > pole_ ? header_.nscan : 0; }

private:
    const cdf_header& header_;
    std::size_t pole_, at_pole_ = 0;
    cdf_window window_;
    std::span<float> out_;
    int scan_ = 0, freq_ = 0;
    std::size_t kept_ = 0;
    double count_ = 0;
};

// Numbers pair up across the ends of lines.
std::string read_samples(line_reader& in, std::string_view line, bool has_line, sample_sink& sink,
                         const std::function<void(int)>& progress) {
    bool odd = false;
    double db = 0, value = 0;
    int reported = 0;
    while (true) {
        if (!has_line) {
            const line_reader::outcome got = in.next(line);
            if (got == line_reader::outcome::fault) return in.fault();
            if (got == line_reader::outcome::end || line.starts_with('@')) break;
        }
        has_line = false;
        for (line = trimmed(line); !line.empty();) {
            const std::string_view before = line;
            if (!take_number(line, value)) return in.at(shown(before) + " is no number");
            if (odd && !sink.take(db, value))
                return in.at(strprintf("no sample has %g dB and %g degrees", db, value));
            db = value;
            odd = !odd;
        }
        if (progress && sink.scans() > reported) progress(reported = sink.scans());
    }
    return odd ? "the last sample has no phase" : "";
}

} // namespace

bool is_cdf(const std::string& name) {
    line_reader in(name);
    std::string_view line;
    return name != "-" && in.next(line) == line_reader::outcome::line && line.starts_with("@D");
}

std::string read_cdf_header(const std::string& name, cdf_header& header) {
    line_reader in(name);
    std::string_view line;
    bool has_line = false;
    return read_header(in, header, line, has_line);
}

std::string read_cdf_data(const std::string& name, const std::string& pole, const cdf_window& window,
                          std::span<float> out, const std::function<void(int, int)>& progress) {
    line_reader in(name);
    cdf_header header;
    std::string_view line;
    bool has_line = false;
    std::string fault = read_header(in, header, line, has_line);
    if (!fault.empty()) return fault;

    const auto at = std::ranges::find(header.poles, pole);
    if (at == header.poles.end()) {
        std::string there;
        for (const std::string& p : header.poles) there += (there.empty() ? "" : ", ") + p;
        return "it has no polarization " + pole + ", only " + there;
    }
    const auto inside = [](int first, int n, int most) {
        return first >= 1 && n >= 0 && n <= most - first + 1;
    };
    if (!inside(window.nscan0, window.nscan, header.nscan) ||
        !inside(window.nfreq0, window.nfreq, header.nfreq) ||
        out.size() / 2 < static_cast<std::size_t>(window.nscan) * static_cast<std::size_t>(window.nfreq))
        return strprintf("its header has changed to %d scan positions and %d frequencies", header.nscan,
                         header.nfreq);

    sample_sink sink(header, static_cast<std::size_t>(at - header.poles.begin()), window, out);
    fault = read_samples(in, line, has_line, sink,
                         progress ? std::function<void(int)>([&](int done) { progress(done, header.nscan); })
                                  : std::function<void(int)>());
    if (fault.empty() && sink.count() != samples_in(header))
        fault = counts_disagree(header, strprintf("but the data hold %.0f", sink.count()));
    return fault;
}

} // namespace norva
