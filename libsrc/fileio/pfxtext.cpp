// From the text form of raw data to a gate file.
#include "fileio/pfxtext.h"

#include "fileio/gat.h"
#include "fileio/kwtext.h"
#include "line_reader.h"
#include "zuvsys/cstrings.h"
#include "zuvsys/numparse.h"
#include "zuvsys/safefile.h"
#include "zuvsys/strprintf.h"

#include <cmath>
#include <optional>
#include <vector>

namespace norva {

namespace {

using outcome = line_reader::outcome;

struct keyword_line {
    std::string name, value;
    long line;
};

std::string shown(std::string_view text) {
    return "\"" + std::string(text.substr(0, 40)) + "\"";
}

// Takes one number and what parts it from the next. False at anything else.
bool take_number(std::string_view& line, float& value) {
    double number = 0;
    const std::size_t n = prefix_double(line, number);
    value = static_cast<float>(number);
    if (n == 0 || !std::isfinite(value)) return false;
    line.remove_prefix(n);
    const std::size_t next = std::min(line.find_first_not_of(" \t"), line.size());
    const bool comma = next < line.size() && line[next] == ',';
    if (next == 0 && !comma && !line.empty()) return false;
    line.remove_prefix(next + (comma ? 1 : 0));
    return true;
}

class text_form {
public:
    text_form(line_reader& in, safe_file& out) : in_(in), out_(out) {}

    std::string convert() {
        std::string fault = to_word("BEGIN_KW");
        if (fault.empty()) fault = read_keywords();
        if (fault.empty()) fault = check_keywords();
        if (fault.empty()) fault = to_word("BEGIN_DATA");
        if (fault.empty()) fault = read_data();
        if (!fault.empty()) return fault;
        if (zuvfileclose(std::move(gate_)) != ZUV_OK) return zuvstatus_text(zuvfileerror());
        return {};
    }

    int nrec() const { return nrec_; }
    int nfreq() const { return nfreq_; }

private:
    // The next line that is not blank. False at the end or a fault, which `missing` then tells.
    bool next(std::string_view& line, const char* awaited, std::string& missing) {
        outcome got = outcome::line;
        while ((got = in_.next(line)) == outcome::line)
            if (line = trimmed(line); !line.empty()) return true;
        missing = got == outcome::fault ? in_.fault() : std::string("the text ends without ") + awaited;
        return false;
    }

    std::string to_word(const char* word) {
        std::string_view line;
        std::string missing;
        while (next(line, word, missing))
            if (line == word) return {};
        return missing;
    }

    std::string read_keywords() {
        std::string_view line;
        std::string missing;
        while (next(line, "END_KW", missing)) {
            if (line == "END_KW") return {};
            const std::size_t equals = line.find('=');
            if (equals == std::string_view::npos) return in_.at(shown(line) + " is not NAME=value");
            const std::string_view name = trimmed(line.substr(0, equals));
            if (name.empty()) return in_.at("no name stands ahead of \"=\"");
            keywords_.push_back(
                {std::string(name), std::string(trimmed(line.substr(equals + 1))), in_.number()});
            if (keywords_.size() > most_keywords) return in_.at("more keywords than a gate file holds");
        }
        return missing;
    }

    // The last line of that name counts, as it does in the file.
    std::string* value(const char* name) {
        for (std::size_t i = keywords_.size(); i > 0; i--)
            if (c_iseqx(keywords_[i - 1].name.c_str(), name)) return &keywords_[i - 1].value;
        return nullptr;
    }

    std::optional<double> number(const char* name) {
        const std::string* text = value(name);
        return text ? whole_double(*text) : std::nullopt;
    }

    std::string take_count(const char* name, int& count) {
        const std::optional<double> number_read = number(name);
        if (!number_read || *number_read < 1 || *number_read > most_count ||
            *number_read != std::floor(*number_read))
            return std::string(name) + " is " + shown(*value(name)) + ", not a number of samples";
        count = static_cast<int>(*number_read);
        return {};
    }

    std::string check_keywords() {
        std::string missing;
        for (const char* name : {"NREC", "NFREQ", "T0", "STEP_FREQ", "FIRST_FREQ"})
            if (const std::string* text = value(name); !text || text->empty())
                missing += (missing.empty() ? "" : ", ") + std::string(name);
        if (!number("WFRI") && !number("WAVEFORM_REP_INT"))
            missing += (missing.empty() ? "" : ", ") + std::string("WFRI");
        if (!missing.empty()) return "the keywords lack " + missing;
        std::string fault = take_count("NREC", nrec_);
        if (fault.empty()) fault = take_count("NFREQ", nfreq_);
        for (const char* name : {"WFRI", "WAVEFORM_REP_INT"}) sharpen(name);
        return fault;
    }

    // Six decimals are little for a short interval; the rate beside it has more digits.
    void sharpen(const char* name) {
        const std::optional<double> prf = number("PRF");
        std::string* interval = value(name);
        if (interval && prf && *prf > 1 && *interval == format_fixed(1 / *prf, 6))
            *interval = format_exact(1 / *prf);
    }

    // Made when the first record is there, so that a count that cannot be true asks for no memory.
    std::string make_gate() {
        gate_ = opengat(out_.temporary(), "New", nfreq_);
        if (!gate_) return zuvstatus_text(getgaterror());
        for (const keyword_line& kw : keywords_) {
            const std::string fault = put_keyword_text(gate_.get(), kw.name, kw.value);
            if (!fault.empty()) return "line " + std::to_string(kw.line) + ": " + fault;
        }
        const double interval = number("WFRI").value_or(number("WAVEFORM_REP_INT").value_or(0));
        const double prf = number("PRF").value_or(interval != 0 ? 1 / interval : 0);
        if (u_kwput_d(gate_.get(), "t0", number("T0").value_or(0)) != ZUV_OK)
            return "no header can be written";
        if (std::isfinite(prf) && prf > 0) u_kwput_d(gate_.get(), "prf", prf);
        return {};
    }

    std::string take_sample(std::string_view line) {
        const std::string_view whole = line;
        float i = 0, q = 0;
        if (!take_number(line, i) || !take_number(line, q) || !line.empty())
            return in_.at(shown(whole) + " is not I and Q, two finite numbers");
        if (records_ == nrec_) return in_.at(strprintf("more than NREC=%d records", nrec_));
        row_.push_back(i);
        row_.push_back(q);
        if (row_.size() < 2 * static_cast<std::size_t>(nfreq_)) return {};
        if (!gate_) {
            std::string fault = make_gate();
            if (!fault.empty()) return fault;
        }
        if (const int status = putgat(gate_.get(), 0, row_); status != ZUV_OK) return zuvstatus_text(status);
        row_.clear();
        records_++;
        return {};
    }

    std::string read_data() {
        std::string_view line;
        std::string missing;
        while (next(line, "END_DATA", missing)) {
            if (line == "END_DATA") {
                if (records_ == nrec_) return {};
                return in_.at(
                    strprintf("the data hold %d records of NFREQ=%d samples and %d samples more, but "
                              "NREC=%d",
                              records_, nfreq_, static_cast<int>(row_.size() / 2), nrec_));
            }
            const std::string fault = take_sample(line);
            if (!fault.empty()) return fault;
        }
        return missing;
    }

    static constexpr std::size_t most_keywords = 1000;
    static constexpr double most_count = 1
                                         << 27; // a record of that many samples fills the 32 bits of its size

    line_reader& in_;
    safe_file& out_;
    std::vector<keyword_line> keywords_;
    int nrec_ = 0, nfreq_ = 0, records_ = 0;
    gatfile_ptr gate_;
    std::vector<float> row_;
};

} // namespace

pfx_text_result pfx_from_text(const std::string& text, const std::string& gate) {
    line_reader in(text);
    if (!in.fault().empty()) return {.fault = in.fault()};
    safe_file out(gate);
    if (!out.good()) return {.fault = out.why()};
    text_form form(in, out);
    std::string fault = form.convert();
    if (fault.empty() && !out.commit()) fault = out.why();
    return {.fault = fault, .nrec = form.nrec(), .nfreq = form.nfreq()};
}

} // namespace norva
