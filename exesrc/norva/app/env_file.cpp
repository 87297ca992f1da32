// The environment file.
#include "app/env_file.h"

#include <cstdlib>
#include <fstream>
#include <string_view>

namespace norva {

constexpr std::size_t ENV_LINES = 20, ENV_LINE_LENGTH = 79;

// One slot: up to ENV_LINE_LENGTH characters, ended early by a line end, which is kept as a blank at the end.
static bool read_slot(std::istream& in, std::string& slot) {
    slot.clear();
    int c;
    while (slot.size() < ENV_LINE_LENGTH && (c = in.get()) != EOF) {
        slot += static_cast<char>(c);
        if (c == '\n') break;
    }
    return !slot.empty();
}

std::vector<std::string> read_env_lines(std::istream& in) {
    std::vector<std::string> lines;
    std::string slot;
    while (lines.size() < ENV_LINES && read_slot(in, slot)) {
        if (slot[0] == '#') continue;
        while (slot.size() > 1 && std::string_view(" \t\n\r").find(slot.back()) != std::string_view::npos)
            slot.pop_back();
        lines.push_back(slot);
    }
    return lines;
}

static void put_environment(const std::string& line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos || equals == 0) return;
    setenv(line.substr(0, equals).c_str(), line.substr(equals + 1).c_str(), 1);
}

static std::string configuration_folder() {
    const char* set = std::getenv("XDG_CONFIG_HOME");
    if (set && *set) return set;
    const char* home = std::getenv("HOME");
    return std::string(home ? home : "") + "/.config";
}

bool norva_env(const std::string& installed) {
    for (const std::string& name :
         {std::string("norva.env"), configuration_folder() + "/norva/norva.env", installed}) {
        std::ifstream in(name);
        if (!in.is_open()) continue;
        const std::vector<std::string> lines = read_env_lines(in);
        if (in.bad()) continue; // a folder of that name
        for (const std::string& line : lines) put_environment(line);
        return true;
    }
    return false;
}

} // namespace norva
