#pragma once
// The command line of norva_sim.

#include "scene/scene.h"
#include "scene/scene_file.h"

#include <string>
#include <string_view>
#include <vector>

namespace norva {

struct sim_options {
    scene world;
    scene_file form;
    std::string name; // of the file to write
    bool help = false;
};

extern const std::string_view sim_help;

// Reads the words behind the program's name. Empty, or what is wrong with them.
std::string read_options(const std::vector<std::string>& words, sim_options& options);

} // namespace norva
