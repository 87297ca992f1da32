// File names and small numbers.
#include "app/names.h"

#include <cmath>
#include <filesystem>
#include <system_error>

namespace norva {

static bool file_exists(const std::string& name) {
    std::error_code ignored;
    return std::filesystem::exists(name, ignored);
}

static std::size_t own_part(const std::string& name) {
    const std::size_t slash = name.find_last_of("/\\");
    return slash == std::string::npos ? 0 : slash + 1;
}

static std::size_t first_dot(const std::string& name) {
    return name.find('.', own_part(name));
}

std::optional<std::string> versno(const std::string& name, int mode) {
    if (name.find(';') != std::string::npos) return std::nullopt;
    if (mode == 1) {
        for (int i = 1; i <= 512; i++) {
            const std::string version = name + ";" + std::to_string(i);
            if (!file_exists(version) && !file_exists(name + std::to_string(i + 1))) return version;
        }
        return std::nullopt;
    }
    for (int i = 512; i >= 1; i--) {
        const std::string version = name + ":" + std::to_string(i);
        if (file_exists(version)) return version;
    }
    return std::nullopt;
}

std::string rootname(const std::string& fname) {
    return fname.substr(0, first_dot(fname));
}

std::string rename_file(const std::string& fname) {
    return fname.substr(own_part(fname));
}

std::string directory_of(const std::string& fname) {
    return fname.substr(0, own_part(fname));
}

std::string version_part(const std::string& fname) {
    const std::size_t at = fname.find(';', own_part(fname));
    return at == std::string::npos ? std::string() : fname.substr(at);
}

static std::string extension(const std::string& fname) {
    const std::size_t dot = first_dot(fname);
    if (dot == std::string::npos) return {};
    return fname.substr(dot, fname.find_first_of(":;", dot) - dot);
}

std::string getdir(const std::string& fname) {
    const std::string ext = extension(fname), dir = directory_of(fname);
    if (ext == ".pf" || ext == ".pfx") return dir + "*.pf*";
    if (ext == ".jou") return dir + "*.jou";
    if (ext == ".rea") return dir + "*.rea";
    return fname;
}

bool ext_eq(const std::string& fname, const std::string& ext) {
    return extension(fname) == ext;
}

bool rnm_eq(const std::string& a, const std::string& b) {
    return rootname(a) == rootname(b);
}

bool is_even(int num) {
    return num % 2 == 0;
}

int nearest_elem(float xval, float c1, float dc) {
    if (dc == 0 || !std::isfinite(xval) || !std::isfinite(c1) || !std::isfinite(dc)) return 0;
    const double steps = std::round((static_cast<double>(xval) - c1) / dc);
    if (std::fabs(steps) > 2e9) return 0;
    return static_cast<int>(steps);
}

int ipow(int base, int exponent) {
    int result = 1;
    for (int i = 0; i < exponent; i++) result *= base;
    return result;
}

double fpow(double base, int exponent) {
    if (base == 0) return 0;
    double result = 1;
    for (int i = 0; i < std::abs(exponent); i++) result *= base;
    return exponent < 0 ? 1 / result : result;
}

bool isfact(int f, int num) {
    return f != 0 && num % f == 0;
}

int near_factor(int dir, int f, int num) {
    const int step = dir < 0 ? -1 : 1;
    for (int next = f + step; next >= 1 && next <= num; next += step)
        if (isfact(next, num)) return next;
    return f;
}

double absval(double x) {
    return std::fabs(x);
}

} // namespace norva
