#pragma once
// A scene as a gate file with all the keywords the program reads.

#include "scene/scene.h"

#include <string>
#include <utility>
#include <vector>

namespace norva {

struct scene_file {
    int dattype = 6;         // 4 bytes, 5 16-bit integers, 6 floats
    int machine = 4;         // whose number representation: 1 VAX, 2 MIPS, 3 Sun, 4 this machine, 5 Alpha VMS
    bool ranges = false;     // each row led by a range, here 0
    double full_scale = 0.0; // the largest component is scaled to this; 0: 120 for bytes, 30000 for 16 bits,
                             // floats as they are
    int ksx = 0;     // crossrange sign; 0: the one that shows a turntable the right way round, else -1
    double r0 = 0.0; // range offset of the display
    std::string source = "closed-form scene";
    std::string target = "point scatterers";
    std::string sigtype = "frequency stepping";
    std::vector<std::string> omit = {};                          // keywords to leave out, in any case
    std::vector<std::pair<std::string, std::string>> texts = {}; // further string keywords
};

// Writes the file by way of a temporary beside it. 1, or a status of the file layer with nothing left behind.
int write_scene(const scene& s, const scene_file& options, const std::string& name);

} // namespace norva
