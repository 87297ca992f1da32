#pragma once
// A small file of every series type but splines (images.h), as any of the five machines writes it. All values
// are such that every representation holds them.

#include "fileio/ufile.h"
#include "images.h"

#include <string>

namespace norva::test {

inline series_image iq_image(int machine, double prf = 4, double xlam = 0.5, int version = 1) {
    auto real = [=](double x) { return double_bytes(machine, x); };
    series_image image{machine, 101, {}, 8, {}};
    image.header = integer_bytes(machine, std::int32_t{version}) + integer_bytes(machine, std::int32_t{0}) +
                   padded("channel", 104) + real(10) + real(prf) + real(0.25) + real(xlam);
    for (int n = 0; n < 5; n++)
        image.elements.push_back(float_bytes(machine, n + 0.5F) + float_bytes(machine, -2.0F * n));
    return image;
}

inline series_image rea_image(int machine, double prf = 4, double xlam = 0.5) {
    auto real = [=](double x) { return double_bytes(machine, x); };
    auto whole = [=](std::int32_t x) { return integer_bytes(machine, x); };
    series_image image{machine, 103, {}, 32, {}};
    image.header =
        whole(1) + padded("track", 104) + whole(0) + real(10) + real(prf) + real(0.25) + real(xlam);
    for (int n = 0; n < 7; n++)
        image.elements.push_back(real(10 + 0.5 * n) + real(5000 + 8.0 * n * n) +
                                 float_bytes(machine, 0.25F * n) + float_bytes(machine, -1.5F * n) +
                                 whole(n % 2) + whole(0));
    return image;
}

inline series_image dop_image(int machine, int version, int namp = 5) {
    auto real = [=](double x) { return double_bytes(machine, x); };
    auto whole = [=](std::int32_t x) { return integer_bytes(machine, x); };
    series_image image{machine, 105, {}, (namp + 3) / 4 * 8 + (version == 2 ? 24 : 8), {}};
    image.header = padded("spectra", 104) + whole(version) + whole(namp) + real(10) + real(0.25) + real(4) +
                   real(0.5) + real(0.125);
    for (int n = 0; n < 3 && namp < 100; n++) {
        std::string one = real(10 + 0.5 * n);
        if (version == 2) one += real(n + 100) + real(n + 200);
        for (int j = 0; j < namp; j++) one += integer_bytes(machine, static_cast<std::int16_t>(300 * n - j));
        image.elements.push_back(one);
    }
    return image;
}

inline constexpr std::int32_t pks_words[] = {1, 9, 0, 256, 64, 16, 2, 0}; // version to spare
inline constexpr const char* pks_word_names[] = {nullptr, "npks", "type",   "nfft",
                                                 "wdw",   "lag",  "weight", nullptr};
inline constexpr double pks_reals[] = {10, 4, 0.25, 0.5, -32, 32};
inline constexpr const char* pks_real_names[] = {"t0", "prf", "tbias", "xlam", "hz1", "hz2"};

inline std::string peaks(int machine, int n) {
    std::string one = double_bytes(machine, 10 + 0.5 * n);
    for (int k = 0; k < 9; k++) one += float_bytes(machine, k - 1.5F * n) + float_bytes(machine, 100.0F * k);
    for (int k = 0; k < 9; k++) one += static_cast<char>(k % 3 == n % 3);
    return one;
}

inline series_image pks_image(int machine) {
    series_image image{machine, 102, padded("peaks", 104), 96, {}};
    for (std::int32_t x : pks_words) image.header += integer_bytes(machine, x);
    for (double x : pks_reals) image.header += double_bytes(machine, x);
    for (int n = 0; n < 3; n++) image.elements.push_back(peaks(machine, n));
    image.list = string_item("note", "abc");
    return image;
}

inline std::string img_row(int machine, int n) {
    std::string one;
    for (int v = 0; v < 6; v++) one += float_bytes(machine, 10.0F * n + v - 0.5F);
    return one;
}

inline std::string vec_row(int machine, int n) {
    std::string one;
    for (int v = 0; v < 3; v++) one += double_bytes(machine, 10.0 * n + v + 0.125);
    return one;
}

// Rows of three samples or values, from 10 s on, four a second.
inline series_image row_image(int machine, int filetype, int rows = 4) {
    series_image image{machine, filetype, {}, 24, {}};
    image.header = integer_bytes(machine, std::int32_t{1}) + integer_bytes(machine, std::int32_t{3});
    for (int n = 0; n < rows; n++)
        image.elements.push_back(filetype == 110 ? img_row(machine, n) : vec_row(machine, n));
    image.list =
        int_item(machine, "RUN", 7) + double_item(machine, "t0", 10) + double_item(machine, "prf", 4);
    return image;
}

// The names of the keywords in the order of the listing, each with the letter of its type.
inline std::string listing(_zuvfile* file) {
    std::string all, name;
    int type = 0;
    for (int i = 0; u_kwindx(file, i, name, type) == ZUV_OK; i++)
        all += name + (type == KW_INT ? ":i " : type == KW_DOUBLE ? ":d " : ":s ");
    return all;
}

} // namespace norva::test
