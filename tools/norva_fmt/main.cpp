// norva_fmt: raw data from text into a gate file.
#include "fileio/pfxtext.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr const char* help = R"(norva_fmt - raw data from text into a gate file

usage: norva_fmt [--force] TEXT [GATE]

Reads the text form that the "WRITE" button makes beside its output file (NAME.asc), or that any other
program has made, and writes the gate file GATE, NAME.pfx when it is not given. TEXT may be "-" for
standard input. A file that exists is only replaced with --force.

  BEGIN_KW
  NREC=2                 records                       these six are needed,
  NFREQ=3                frequencies of a record       others as they come
  T0=0                   time of the first record, s
  WFRI=0.01              from record to record, s
  FIRST_FREQ=9e9         Hz
  STEP_FREQ=4e6          Hz; below 0 for descending frequencies
  END_KW
  BEGIN_DATA
  1.0  0.0               I and Q of the first frequency of the first record
  ...                    then its other frequencies, then the other records
  END_DATA

Lines ahead of BEGIN_KW and behind END_DATA are comment. Other keywords the program reads: KSX (-1 or 1),
PULSE_LENGTH, R0, DATA_SOURCE, TARGET_TYPE, TRACK_INFO, MOT_COMP, SIG_TYPE.

Exit status: 0 written, 1 the text or the file is at fault (nothing is written then), 2 the command line is
wrong.
)";

int complain(int status, const std::string& text) {
    std::fprintf(stderr, "norva_fmt: %s\n", text.c_str());
    return status;
}

std::string default_gate(const std::string& text) {
    return std::filesystem::path(text).replace_extension(".pfx").string();
}

int run(std::vector<std::string> words) {
    if (std::ranges::find(words, "--help") != words.end() || std::ranges::find(words, "-h") != words.end()) {
        std::fputs(help, stdout);
        return 0;
    }
    const bool force = std::erase(words, "--force") > 0;
    for (const std::string& word : words)
        if (word.starts_with('-') && word != "-") return complain(2, "unknown option " + word);
    if (words.empty() || words.size() > 2)
        return complain(2, "one text file and at most one gate file (--help)");
    const std::string& text = words[0];
    if (text == "-" && words.size() == 1)
        return complain(2, "text from standard input needs the name of a gate file");
    const std::string gate = words.size() == 2 ? words[1] : default_gate(text);
    std::error_code ignored;
    if (std::filesystem::equivalent(text, gate, ignored)) return complain(2, gate + " is the text itself");
    if (!force && std::filesystem::exists(gate, ignored))
        return complain(1, gate + " exists; --force replaces it");

    const norva::pfx_text_result result = norva::pfx_from_text(text, gate);
    if (!result.fault.empty()) return complain(1, text + ": " + result.fault);
    std::printf("%s: %d records of %d samples\n", gate.c_str(), result.nrec, result.nfreq);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    return run({argv + 1, argv + argc});
}
