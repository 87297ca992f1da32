// Writing the output data file.
#include "app/write_pfx.h"

#include "app/cdf_input.h"
#include "app/gpf.h"
#include "app/names.h"
#include "app/window_values.h"
#include "fileio/gat.h"
#include "state/calls.h"
#include "state/run.h"
#include "state/user.h"
#include "state/write_out.h"
#include "zuvsys/safefile.h"
#include "zuvsys/strprintf.h"

#include <array>
#include <charconv>
#include <filesystem>
#include <optional>
#include <vector>

namespace norva {

namespace {

// What is written.
struct output_data {
    int nf = 0, nt = 0, ksx = 0;
    double t0 = 0, dt = 0; // seconds
    double f0 = 0, df = 0; // MHz
    const float* samples = nullptr;
    std::string source = {};
};

// The texts that are taken over from the raw file.
struct old_texts {
    std::string target_type, track_info, sig_type;
};

std::optional<output_data> edited_image() {
    if (!reduced.samples) {
        popmsg("Error (write_pfx): no data to write!");
        return std::nullopt;
    }
    return output_data{.nf = reduced.nf,
                       .nt = reduced.nt,
                       .ksx = reduced.ksx,
                       .t0 = user.t0,
                       .dt = static_cast<double>(user.nt) * user.dt / reduced.nt,
                       .f0 = user.f0,
                       .df = static_cast<double>(user.nf) * user.df / reduced.nf,
                       .samples = reduced.samples.data()};
}

// The window in memory; the fields may hold a narrower one that no analysis has used yet.
std::optional<output_data> data_in_memory() {
    if (!user.pfdata) {
        popmsg("No data to write!");
        return std::nullopt;
    }
    const data_window typed = user_window(), held = loaded_window();
    set_user_window(held);
    cvrt_user_vals(1);
    const output_data data = {.nf = held.nf,
                              .nt = held.nt,
                              .ksx = user.ksx,
                              .t0 = user.t0,
                              .dt = user.dt,
                              .f0 = user.f0,
                              .df = user.df,
                              .samples = user.pfdata.data()};
    set_user_window(typed);
    cvrt_user_vals(1);
    return data;
}

// The source text. A keyword item holds 127 bytes; what the folder of the raw file would take too much is
// left out.
std::string source_text() {
    constexpr std::size_t most = 127 - 5 - (sizeof("DATA_SOURCE") - 1);
    const std::string how = imgwinon ? " (reduced after image edit in norva)" : " (written from norva)";
    std::string name = user.rdfile;
    if (name.size() + how.size() > most) name = rename_file(name);
    if (name.size() + how.size() > most) name.resize(most - how.size());
    return name + how;
}

bool same_file(const std::string& a, const std::string& b) {
    std::error_code ignored;
    return std::filesystem::equivalent(a, b, ignored);
}

// One keyword list in two forms: items of the gate file, lines of the text.
class keyword_writer {
public:
    keyword_writer(_gatfile* gate, safe_file& text) : gate_(gate), text_(text) {}

    void put(const char* name, const std::string& value) {
        if (!value.empty()) check(name, u_kwput_s(gate_, name, value)); // the list has no empty texts
        text_.write(std::string(name) + "=" + value + "\n");
    }
    void put(const char* name, int value) {
        check(name, u_kwput_i(gate_, name, value));
        text_.write(strprintf("%s=%d\n", name, value));
    }
    void put(const char* name, double value) {
        check(name, u_kwput_d(gate_, name, value));
        text_.write(strprintf("%s=%f\n", name, value));
    }
    void copy(_gatfile* old, const std::string& name, int type) {
        int status = ZUV_OK;
        if (type == KW_INT) status = u_kwput_i(gate_, name, u_kwget_i(old, name));
        if (type == KW_DOUBLE) status = u_kwput_d(gate_, name, u_kwget_d(old, name));
        if (type == KW_STRING) status = u_kwput_s(gate_, name, u_kwget_s(old, name));
        check(name, status);
    }

    const std::string& left_out() const { return left_out_; } // names that found no room

private:
    void check(const std::string& name, int status) {
        if (status != ZUV_OK) left_out_ += (left_out_.empty() ? "" : ", ") + name;
    }

    _gatfile* gate_;
    safe_file& text_;
    std::string left_out_;
};

void put_keywords(keyword_writer& out, const output_data& data, const old_texts& old) {
    out.put("DATA_SOURCE", data.source);
    out.put("TARGET_TYPE", old.target_type);
    out.put("TRACK_INFO", old.track_info);
    out.put("MOT_COMP", std::string(user.mc.ptr >= 1 ? "yes" : "no"));
    out.put("SIG_TYPE", old.sig_type);
    out.put("NREC", data.nt);
    out.put("T0", data.t0);
    out.put("WAVEFORM_REP_INT", data.dt);
    out.put("WFRI", data.dt);
    if (data.dt != 0) out.put("PRF", 1 / data.dt);
    out.put("PULSE_LENGTH", static_cast<double>(gp.plen));
    out.put("NFREQ", data.nf);
    out.put("STEP_FREQ", data.df * 1e6);
    out.put("FIRST_FREQ", data.f0 * 1e6);
    out.put("KSX", data.ksx);
}

// Every keyword of the raw file that the program does not write itself.
void copy_other_keywords(keyword_writer& out, _gatfile* old) {
    const int n = u_kwget_n(old);
    for (int i = 0; i < n; i++) {
        std::string name;
        int type = 0;
        if (u_kwindx(old, i, name, type) == ZUV_OK && !is_known_keyword(name)) out.copy(old, name, type);
    }
}

// Same values in the header as in the keywords, for readers that go by the header.
void put_header_times(_gatfile* gate, const output_data& data) {
    u_kwput_d(gate, "t0", data.t0);
    if (data.dt > 0) u_kwput_d(gate, "prf", 1 / data.dt);
}

// "I\tQ\n" as printf's "%f\t%f\n" has it.
void put_sample(std::string& text, float i, float q) {
    std::array<char, 128> buffer{};
    char *const first = buffer.data(), *const last = first + buffer.size();
    char* end = std::to_chars(first, last, static_cast<double>(i), std::chars_format::fixed, 6).ptr;
    *end++ = '\t';
    end = std::to_chars(end, last, static_cast<double>(q), std::chars_format::fixed, 6).ptr;
    *end++ = '\n';
    text.append(first, end);
}

// Status of the gate file; the text file keeps its own.
int write_rows(_gatfile* gate, safe_file& text, const output_data& data) {
    const std::size_t row = 2 * static_cast<std::size_t>(data.nf);
    const computation running;
    std::string lines;
    for (int j = 0; j < data.nt; j++) {
        const std::span samples(data.samples + static_cast<std::size_t>(j) * row, row);
        const int status = putgat(gate, 0, samples);
        if (status != ZUV_OK) return status;
        lines.clear();
        for (std::size_t k = 0; k < row; k += 2) put_sample(lines, samples[k], samples[k + 1]);
        text.write(lines);
        if (!text.good()) break;
        rpt_progress(j + 1, data.nt);
    }
    return ZUV_OK;
}

constexpr const char* text_start =
    "This file was written by the routine write_pfx in NORVA as a sample file \n"
    "to be tested by norva_fmt which reads an ascii file with i and q and kw's and \n"
    " writes a new pfx file to be read by NORVA\n";

// False after a message, when a name cannot be taken without loss.
bool acceptable_names(const std::string& fname, const std::string& text_name) {
    if (same_file(fname, user.rdfile) || same_file(text_name, user.rdfile)) {
        popmsg("The raw data file " + user.rdfile + " cannot be written over; choose another name!");
        return false;
    }
    if (fname == text_name) {
        popmsg("The name " + fname + " is that of the text file beside the data; choose another one!");
        return false;
    }
    return true;
}

} // namespace

void write_pfx(const std::string& fname) {
    std::optional<output_data> data = imgwinon ? edited_image() : data_in_memory();
    if (!data) return;
    data->source = source_text();
    const std::string text_name = rootname(fname) + ".asc";
    if (!acceptable_names(fname, text_name)) return;

    safe_file gate_file(fname);
    gatfile_ptr gate = gate_file.good() ? opengat(gate_file.temporary(), "New", data->nf) : nullptr;
    if (!gate) {
        popmsg("Unable to open " + fname + " for writing!");
        return;
    }
    safe_file text(text_name);
    if (!text.good()) {
        popmsg("Unable to open " + text_name + " for writing!");
        return;
    }
    gatfile_ptr old;
    old_texts texts = {cdf_texts.target_type, cdf_texts.track_info, cdf_signal_text};
    if (data_type != raw_kind::cdf) {
        old = opengat(user.rdfile, "Old", gp.nf);
        if (!old) {
            popmsg("Unable to open " + user.rdfile + " for reading!");
            return;
        }
        texts = {u_kwget_s(old.get(), "TARGET_TYPE"), u_kwget_s(old.get(), "TRACK_INFO"),
                 u_kwget_s(old.get(), "SIG_TYPE")};
    }

    text.write(text_start);
    text.write("BEGIN_KW\n");
    keyword_writer keywords(gate.get(), text);
    put_keywords(keywords, *data, texts);
    if (old) copy_other_keywords(keywords, old.get());
    put_header_times(gate.get(), *data);
    text.write("END_KW\n\nBEGIN_DATA\n");
    int status = write_rows(gate.get(), text, *data);
    text.write("END_DATA\n");
    const int closed = zuvfileclose(std::move(gate));
    if (status == ZUV_OK) status = closed;

    if (status != ZUV_OK)
        popmsg(strprintf("Error(%d) writing ", status) + fname + ": nothing was written; is the disk full?");
    else if (!text.good() || !gate_file.commit() || !text.commit())
        popmsg(gate_file.good() ? text.why() : gate_file.why());
    else if (!keywords.left_out().empty())
        popmsg(fname + " is written, but its keyword list is full; left out: " + keywords.left_out());
}

} // namespace norva
