#pragma once
// Data files put together byte by byte, as any of the five machines writes them.

#include "../fileio/machine_bytes.h"

#include <string>
#include <vector>

namespace norva::test {

// A text field of that many bytes.
inline std::string padded(std::string text, std::size_t size) {
    text.resize(size - 1, ' ');
    return text + '\0';
}

struct spl_image {
    struct element {
        double time;
        int ncont, flg2;
        std::vector<double> coe;
    };
    int machine = MACHINE_THIS, version = 1, ncoe = 2, filetype = 106;
    int headsize = 192, elemsize = 256; // 128 for each coefficient
    int nelements = -1;
    std::vector<element> elements = {{-1.5, 2, 7, {1, 0.5}}, {2, -1, -3, {4.25, -2}}, {8, 0, 0, {0, 3}}};

    series_image image() const {
        auto whole = [&](std::int32_t x) { return integer_bytes(machine, x); };
        series_image made{machine, filetype, {}, elemsize, {}, nelements, {}};
        made.header = padded("a comment", 104) + whole(version) + whole(ncoe) + padded("range", 24) +
                      padded("Seconds", 24) + padded("Kilometers", 24) + whole(2) + whole(0);
        made.header.resize(static_cast<std::size_t>(headsize));
        for (const element& e : elements) {
            std::string one = double_bytes(machine, e.time) + whole(e.ncont) + whole(e.flg2);
            for (double c : e.coe) one += double_bytes(machine, c);
            made.elements.push_back(one);
        }
        return made;
    }
    std::string bytes() const { return image().bytes(); }
};

} // namespace norva::test
