// norva_sim: writes a gate file of a scene whose answer is known.
#include "options.h"

#include <cstdio>

int main(int argc, char** argv) {
    norva::sim_options options;
    std::string wrong = norva::read_options({argv + 1, argv + argc}, options);
    if (options.help) {
        std::fwrite(norva::sim_help.data(), 1, norva::sim_help.size(), stdout);
        return 0;
    }
    if (!wrong.empty()) {
        std::fprintf(stderr, "norva_sim: %s (norva_sim --help tells the options)\n", wrong.c_str());
        return 2;
    }
    int status = norva::write_scene(options.world, options.form, options.name);
    if (status != 1) {
        std::fprintf(stderr, "norva_sim: unable to write %s (status %d)\n", options.name.c_str(), status);
        return 1;
    }
    return 0;
}
