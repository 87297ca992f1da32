// norva_info: what a data file holds.
#include "elements.h"
#include "fileio/cdf.h"
#include "fileio/kwtext.h"
#include "fileio/mcvt.h"
#include "fileio/ufile.h"
#include "zuvsys/numparse.h"
#include "zuvsys/strprintf.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace norva;

constexpr const char* help = R"(norva_info - what a data file holds

usage: norva_info [--elements N] [--items N] FILE...

Prints the head, the header, the keywords and the first elements of any typed data file (gat, iq, pks, rea,
dop, spl, img, vec), whatever machine wrote it, and the header of CDF pattern files. Of a file that is damaged
it prints what can be read, and says what is wrong.

  --elements N   how many elements, 3 when not given
  --items N      how many items of each (samples, peaks, coefficients ...), 4 when not given
  --all          all elements and items

Exit status: 0 every file is sound, 1 one is not, 2 the command line is wrong.
)";

struct options {
    std::int64_t elements = 3, items = 4;
    std::vector<std::string> files;
};

int complain(int status, const std::string& text) {
    std::fprintf(stderr, "norva_info: %s\n", text.c_str());
    return status;
}

void print(const std::string& line) {
    std::printf("%s\n", line.c_str());
}

// Control characters as "\x1b", so that a file cannot speak to the terminal.
std::string plain(const std::string& text) {
    std::string out;
    for (unsigned char c : text)
        out += std::iscntrl(c) ? strprintf("\\x%02x", c) : std::string(1, static_cast<char>(c));
    return out;
}

std::string machine_name(int machine) {
    constexpr const char* names[] = {"VAX", "MIPS", "Sun", "this machine", "Alpha VMS"};
    return machine >= MACHINE_VAX && machine <= MACHINE_ALPHA_VMS ? names[machine - 1] : "unknown machine";
}

void print_head(const _zuvfile& file) {
    const std::string name = type_name(file.kw.filetype);
    print(strprintf("  type       %d (%s)", file.kw.filetype, name.empty() ? "unknown" : name.c_str()));
    print(strprintf("  machine    %d (%s)", file.machine, machine_name(file.machine).c_str()));
    print(strprintf("  elements   %lld of %d bytes, behind a header of %d and a reserved area of %d bytes",
                    static_cast<long long>(file.nelements), static_cast<int>(file.kw.elementsize),
                    static_cast<int>(file.kw.headsize), static_cast<int>(file.kw.reservesize)));
}

std::string keyword_text(_zuvfile* file, const std::string& name, int type) {
    switch (type) {
    case KW_INT: return "int     " + std::to_string(u_kwget_i(file, name));
    case KW_DOUBLE: return "double  " + number_text(u_kwget_d(file, name));
    default: return "string  \"" + plain(u_kwget_s(file, name)) + "\"";
    }
}

// The header's values come first in the count.
void print_keywords(_zuvfile* file) {
    int listed = 0;
    zuvfile_res_get_n(file, listed);
    const int all = u_kwget_n(file), of_header = all - listed;
    for (int i = 0; i < all; i++) {
        std::string name;
        int type = 0;
        if (i == 0 && of_header > 0) print("header");
        if (i == of_header) print("keywords");
        if (u_kwindx(file, i, name, type) != ZUV_OK) break;
        print(strprintf("  %-18s ", plain(name).c_str()) + keyword_text(file, name, type));
    }
}

// False after a message, when one cannot be read.
bool print_elements(_zuvfile* file, const options& opt) {
    const std::int64_t n = std::min(opt.elements, u_nelem(file));
    if (n > 0) print("elements");
    for (std::int64_t i = 0; i < n; i++) {
        int status = ZUV_OK;
        const std::string text = element_text(file, opt.items, status);
        if (status != ZUV_OK) {
            complain(1, u_filename(file) + ": element " + std::to_string(i) + ": " + zuvstatus_text(status));
            return false;
        }
        print("  " + std::to_string(i) + "  " + text);
    }
    return true;
}

bool show_pattern(const std::string& name) {
    cdf_header header;
    const std::string fault = read_cdf_header(name, header);
    if (!fault.empty()) {
        complain(1, name + ": " + fault);
        return false;
    }
    std::string poles;
    for (const std::string& pole : header.poles) poles += " " + pole;
    print(name + ": CDF pattern file");
    print("  polarizations    " + poles);
    print("  frequencies       " + std::to_string(header.nfreq) + " from " + number_text(header.f0) +
          " Hz by " + number_text(header.df) + " Hz");
    print("  scan positions    " + std::to_string(header.nscan) + " from " + number_text(header.scan0) +
          " by " + number_text(header.dscan) + " degrees");
    return true;
}

// What the container still tells of a file that does not open as its type.
void show_container(const std::string& name) {
    int type = 0, headsize = 0, elementsize = 0;
    const zuvfile_ptr file = zuvfileopen(name, type, headsize, elementsize);
    if (!file) return;
    print(name + ":");
    print_head(*file);
    print_keywords(file.get());
}

bool show(const std::string& name, const options& opt) {
    if (is_cdf(name)) return show_pattern(name);
    int status = ZUV_OK;
    const zuvfile_ptr file = open_typed(name, status);
    if (!file) {
        show_container(name);
        complain(1, name + ": " + zuvstatus_text(status));
        return false;
    }
    print(name + ":");
    print_head(*file);
    print_keywords(file.get());
    return print_elements(file.get(), opt);
}

// What is wrong with the command line, or nothing.
std::string read_options(const std::vector<std::string>& words, options& opt) {
    for (std::size_t i = 0; i < words.size(); i++) {
        if (words[i] == "--elements" || words[i] == "--items") {
            const auto n = i + 1 < words.size() ? whole_int(words[i + 1]) : std::nullopt;
            if (!n || *n < 0) return words[i] + " needs a number";
            (words[i++] == "--elements" ? opt.elements : opt.items) = *n;
        } else if (words[i] == "--all") {
            opt.elements = opt.items = std::numeric_limits<std::int64_t>::max();
        } else if (words[i].starts_with('-')) {
            return "unknown option " + words[i];
        } else {
            opt.files.push_back(words[i]);
        }
    }
    return opt.files.empty() ? "which file? (--help)" : "";
}

int run(const std::vector<std::string>& words) {
    if (std::ranges::find(words, "--help") != words.end() || std::ranges::find(words, "-h") != words.end()) {
        std::fputs(help, stdout);
        return 0;
    }
    options opt;
    const std::string wrong = read_options(words, opt);
    if (!wrong.empty()) return complain(2, wrong);
    bool sound = true;
    for (const std::string& name : opt.files) {
        if (&name != opt.files.data()) print("");
        sound &= show(name, opt);
        std::fflush(stdout);
    }
    return sound ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    return run({argv + 1, argv + argc});
}
