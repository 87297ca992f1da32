// addkw: adds keywords to a gate file, or changes or removes them. The program runs it to save polar format
// keywords.
#include "fileio/gat.h"
#include "fileio/kwtext.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using namespace norva;

constexpr const char* help = R"(addkw - add keywords to a gate file

usage: addkw FILE NAME=VALUE...

A keyword that exists is replaced; an empty VALUE removes it. Names that the program reads get the
type it reads. For others a whole number is stored as an integer, another number as a double, and
anything else as text. Either all keywords are stored or the file stays as it is.

Exit status: 0 stored, 1 the file could not be changed, 2 the command line is wrong.
)";

int complain(int status, const std::string& text) {
    std::fprintf(stderr, "addkw: %s\n", text.c_str());
    return status;
}

int run(const std::vector<std::string>& words) {
    if (std::ranges::find(words, "--help") != words.end()) {
        std::fputs(help, stdout);
        return 0;
    }
    if (words.size() < 2) return complain(2, "a file and at least one NAME=VALUE are needed (addkw --help)");
    for (std::size_t i = 1; i < words.size(); i++)
        if (std::size_t equals = words[i].find('='); equals == 0 || equals == std::string::npos)
            return complain(2, "\"" + words[i] + "\" is not NAME=VALUE");

    gatfile_ptr file = opengat(words[0], "Update", 1);
    if (!file) return complain(1, "unable to open " + words[0] + ": " + zuvstatus_text(getgaterror()));
    for (std::size_t i = 1; i < words.size(); i++) {
        std::size_t equals = words[i].find('=');
        std::string name = words[i].substr(0, equals);
        const std::string fault = put_keyword_text(file.get(), name, words[i].substr(equals + 1));
        if (fault.empty()) continue;
        file->rchng = file->dirty = 0; // nothing of it is written
        return complain(1, words[0] + ": " + fault);
    }
    if (u_close(std::move(file)) != ZUV_OK) return complain(1, "unable to write " + words[0]);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    return run({argv + 1, argv + argc});
}
