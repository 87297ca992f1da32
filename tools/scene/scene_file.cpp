// A scene as a gate file.
#include "scene/scene_file.h"

#include "fileio/gat.h"
#include "fileio/mcvt.h"
#include "zuvsys/cstrings.h"
#include "zuvsys/safefile.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace norva {

namespace fs = std::filesystem;

namespace {

// Keywords of one file, in the order in which they are put; the first status other than 1 stays.
struct keyword_writer {
    _zuvfile* file;
    const scene_file& options;
    int status = ZUV_OK;

    bool wanted(const std::string& name) const {
        return status == ZUV_OK && std::ranges::none_of(options.omit, [&](const std::string& left_out) {
                   return c_iseqx(left_out.c_str(), name.c_str());
               });
    }
    void put(const std::string& name, double value) {
        if (wanted(name)) status = u_kwput_d(file, name, value);
    }
    void put(const std::string& name, int value) {
        if (wanted(name)) status = u_kwput_i(file, name, value);
    }
    void put(const std::string& name, const std::string& value) {
        if (wanted(name) && !value.empty()) status = u_kwput_s(file, name, value);
    }
};

int ksx_of(const scene& s, const scene_file& options) {
    if (options.ksx != 0) return options.ksx;
    return s.table.da < 0.0 ? 1 : -1;
}

// Twice the largest coordinate of a point, with some room, but within what the sampling resolves.
double extent(const scene& s, double scene_point::*coordinate, double ambiguity) {
    double largest = 0.0;
    for (const scene_point& p : s.points) largest = std::max(largest, std::fabs(p.*coordinate));
    return std::min(2.5 * largest, 0.95 * ambiguity);
}

void put_geometry(keyword_writer& k, const scene& s) {
    double across = 0.5 * scene_light / scene_centre(s) / std::fabs(s.table.da);
    double along = 0.5 * scene_light / std::fabs(s.df);
    k.put("DTYPE", 0);
    k.put("XEX", extent(s, &scene_point::x, across));
    k.put("YEX", extent(s, &scene_point::y, along));
    k.put("RC", s.table.rc > 0.0 ? s.table.rc : 1e6); // far away
    k.put("DE", s.table.de);
    k.put("DA", s.table.da);
}

int put_keywords(_zuvfile* file, const scene& s, const scene_file& options) {
    keyword_writer k{file, options};
    k.put("R0", options.r0);
    k.put("DATA_SOURCE", options.source);
    k.put("TARGET_TYPE", options.target);
    k.put("TRACK_INFO", "none");
    k.put("MOT_COMP", "no");
    k.put("SIG_TYPE", options.sigtype);
    k.put("NREC", s.nt);
    k.put("T0", s.t0);
    k.put("WAVEFORM_REP_INT", s.dt);
    k.put("WFRI", s.dt);
    k.put("PRF", 1.0 / s.dt);
    k.put("STEP_FREQ", s.df * 1e6);
    k.put("FIRST_FREQ", s.f0 * 1e6);
    k.put("NFREQ", s.nf);
    k.put("PULSE_LENGTH", s.duty * s.dt);
    k.put("KSX", ksx_of(s, options));
    if (s.table.da != 0.0) put_geometry(k, s);
    for (const auto& [name, value] : options.texts) k.put(name, value);
    return k.status;
}

// The scale that brings the largest component to full scale.
float scale_of(const std::vector<float>& data, const scene_file& options) {
    double full = options.full_scale;
    if (full <= 0.0 && options.dattype == GAT_BYTE) full = 120.0;
    if (full <= 0.0 && options.dattype == GAT_SHORT) full = 30000.0;
    double largest = 0.0;
    for (float x : data) largest = std::max(largest, std::fabs(static_cast<double>(x)));
    return full > 0.0 && largest > 0.0 ? static_cast<float>(full / largest) : 1.0F;
}

// A file is created as this machine's. While it holds no rows and no keywords, only numbers of its head and
// its header have a representation: turning those over makes it another machine's, and updates keep it so.
bool turn_over(const std::string& name, int machine) {
    if (machine == MACHINE_THIS) return true;
    std::ifstream in(name, std::ios::binary);
    std::string bytes(std::istreambuf_iterator<char>(in), {});
    constexpr std::size_t header = 20 + ressize;
    if (bytes.size() != header + GAT_HEADSIZE || setmcvt(MACHINE_THIS, machine) != 1) return false;
    bytes[0] = static_cast<char>(machine);
    mcvt_i4(&bytes[4], 4);
    mcvt_i4(&bytes[header], 4);
    mcvt_f8(&bytes[header + 16], 2);
    return write_text_safely(name, bytes);
}

int put_rows(_gatfile* p, const scene& s, const scene_file& options) {
    std::vector<float> data = scene_data(s);
    float scale = scale_of(data, options);
    for (float& x : data) x *= scale;
    std::size_t row = 2 * static_cast<std::size_t>(s.nf);
    for (int i = 0; i < s.nt; i++) {
        int status = putgat(p, 0.0, std::span(data).subspan(static_cast<std::size_t>(i) * row, row));
        if (status != ZUV_OK) return status;
    }
    return ZUV_OK;
}

int write_file(const scene& s, const scene_file& options, const std::string& name) {
    gatfile_ptr p = opengat_opt(name, s.nf, options.dattype, options.ranges);
    if (!p) return getgaterror();
    if (int status = u_close(std::move(p)); status != ZUV_OK) return status;
    if (!turn_over(name, options.machine)) return ZUV_WRITE_FAILED;

    p = opengat(name, "Update", s.nf);
    if (!p) return getgaterror();
    int status = u_kwput_d(p.get(), "t0", s.t0);
    if (status == ZUV_OK) status = u_kwput_d(p.get(), "prf", 1.0 / s.dt);
    if (status == ZUV_OK) status = put_keywords(p.get(), s, options);
    if (status == ZUV_OK) status = put_rows(p.get(), s, options);
    int closed = u_close(std::move(p));
    return status == ZUV_OK ? closed : status;
}

} // namespace

int write_scene(const scene& s, const scene_file& options, const std::string& name) {
    if (s.nf < 1 || s.nt < 1 || s.df == 0.0 || s.dt <= 0.0) return ZUV_BAD_ARGUMENT;
    std::string temporary = name + ".part";
    int status = write_file(s, options, temporary);
    std::error_code error;
    if (status == ZUV_OK) {
        fs::rename(temporary, name, error);
        if (error) status = ZUV_WRITE_FAILED;
    }
    if (status != ZUV_OK) fs::remove(temporary, error);
    return status;
}

} // namespace norva
