// Program start and end: the command line, the loop, the fatal message.
#include "toolkit_int.h"

#include <cstdlib>
#include <cstring>

namespace norva {

int isrunning = 0;
wi_hooks_t wi_hooks;

static bool help_edit = false;

std::vector<std::string> parsecommandline(std::string_view line) {
    constexpr std::string_view space(" \t\n\0", 4);
    std::vector<std::string> words{"norva"};
    for (std::size_t at = line.find_first_not_of(space); at != std::string_view::npos;) {
        const std::size_t end = std::min(line.find_first_of(space, at), line.size());
        words.emplace_back(line.substr(at, end - at));
        at = line.find_first_not_of(space, end);
    }
    return words;
}

int WinMain(int argc, char** argv, wi_main app_main) {
    isrunning = 0;
    the_port().set_events(&toolkit_events());
    std::string line;
    for (int i = 1; i < argc; ++i) line.append(argv[i]).push_back('\0');
    std::vector<std::string> words = parsecommandline(line);
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    app_main(static_cast<int>(words.size()), pointers.data());
    isrunning = 1;
    return the_port().run();
}

void wi_main_init(int& argc, char** argv) {
    if (argc < 1 || !argv || !argv[argc - 1] || std::strcmp(argv[argc - 1], "helpedit") != 0) return;
    help_edit = true;
    argv[--argc] = nullptr;
}

bool wi_help_edit() {
    return help_edit;
}

void wi_quit(int code) {
    the_port().quit(code);
}

void wi_exit(const std::string& msg) {
    the_port().fatal("Error message:", msg);
    std::exit(-1);
}

void wi_pe(int n, const char* file, const char* what) {
    wi_exit("PE " + std::to_string(n) + ", " + file + ": " + what);
}

void wi_run() {}
void wi_init_check() {}
void wi_working(int) {}
void wi_popmsg_init(wi_obj*) {}

void reset_start() {
    isrunning = 0;
    help_edit = false;
    wi_hooks = {};
}

} // namespace norva
