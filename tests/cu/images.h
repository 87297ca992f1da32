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

// Items of a keyword list: size, type, value, name with its NUL.
inline std::string double_item(int machine, const std::string& name, double value) {
    return std::string{static_cast<char>(name.size() + 11), 2} + double_bytes(machine, value) + name + '\0';
}
inline std::string int_item(int machine, const std::string& name, std::int32_t value) {
    return std::string{static_cast<char>(name.size() + 7), 1} + integer_bytes(machine, value) + name + '\0';
}
inline std::string string_item(const std::string& name, const std::string& value) {
    return std::string{static_cast<char>(name.size() + value.size() + 5), 3,
                       static_cast<char>(value.size() + 1)} +
           value + '\0' + name + '\0';
}

struct series_image {
    int machine = MACHINE_THIS, filetype = 0;
    std::string header;
    int elemsize = 0;                  // shorter elements are filled up
    std::vector<std::string> elements; // in that machine's form
    int nelements = -1;                // those there are
    std::string list = {};             // items of the keyword list

    static constexpr std::int32_t reserved = 128;

    std::string bytes() const {
        std::string b = {static_cast<char>(machine), 1, static_cast<char>(filetype), 0};
        const int n = nelements < 0 ? static_cast<int>(elements.size()) : nelements;
        for (std::int32_t x : {reserved, static_cast<std::int32_t>(header.size()), elemsize, n})
            b += integer_bytes(machine, x);
        b += '\x01';
        b += list + std::string(reserved - 1 - list.size(), '\0');
        b += header;
        for (std::string e : elements) {
            e.resize(static_cast<std::size_t>(elemsize));
            b += e;
        }
        return b;
    }
};

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

    std::string bytes() const {
        auto whole = [&](std::int32_t x) { return integer_bytes(machine, x); };
        series_image image{machine, filetype, {}, elemsize, {}, nelements, {}};
        image.header = padded("a comment", 104) + whole(version) + whole(ncoe) + padded("range", 24) +
                       padded("Seconds", 24) + padded("Kilometers", 24) + whole(2) + whole(0);
        image.header.resize(static_cast<std::size_t>(headsize));
        for (const element& e : elements) {
            std::string one = double_bytes(machine, e.time) + whole(e.ncont) + whole(e.flg2);
            for (double c : e.coe) one += double_bytes(machine, c);
            image.elements.push_back(one);
        }
        return image.bytes();
    }
};

} // namespace norva::test
