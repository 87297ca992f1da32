#pragma once
// A spline file put together byte by byte, as any of the five machines writes it.

#include "../fileio/machine_bytes.h"

#include <string>
#include <vector>

namespace norva::test {

struct spl_image {
    struct element {
        double time;
        int ncont, flg2;
        std::vector<double> coe;
    };
    int machine = MACHINE_THIS, version = 1, ncoe = 2, filetype = 106;
    int headsize = 192, elemsize = 256; // 128 for each coefficient
    int nelements = -1;                 // those there are
    std::vector<element> elements = {{-1.5, 2, 7, {1, 0.5}}, {2, -1, -3, {4.25, -2}}, {8, 0, 0, {0, 3}}};

    static std::string padded(std::string text, std::size_t size) {
        text.resize(size - 1, ' ');
        return text + '\0';
    }
    std::string whole(std::int32_t x) const { return integer_bytes(machine, x); }
    std::string real(double x) const { return double_bytes(machine, x); }

    std::string bytes() const {
        std::string b = {static_cast<char>(machine), 1, static_cast<char>(filetype), 0};
        const int n = nelements < 0 ? static_cast<int>(elements.size()) : nelements;
        b += whole(64) + whole(headsize) + whole(elemsize) + whole(n);
        b += '\x01';
        b += std::string(63, '\0'); // an empty keyword list
        std::string head = padded("a comment", 104) + whole(version) + whole(ncoe) + padded("range", 24) +
                           padded("Seconds", 24) + padded("Kilometers", 24) + whole(2) + whole(0);
        head.resize(static_cast<std::size_t>(headsize));
        b += head;
        for (const element& e : elements) {
            std::string one = real(e.time) + whole(e.ncont) + whole(e.flg2);
            for (double c : e.coe) one += real(c);
            one.resize(static_cast<std::size_t>(elemsize));
            b += one;
        }
        return b;
    }
};

} // namespace norva::test
