// The track reader.
#include "cu/track.h"

#include "cu/genrea.h"
#include "cu/rea.h"
#include "fileio/ufile.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace norva {
namespace {

struct arrays {
    std::vector<double> time, range, elevation, azimuth;

    void add(double t, double r, double el, double az) {
        time.push_back(t);
        range.push_back(r);
        elevation.push_back(el);
        azimuth.push_back(az);
    }
};

// Reads on from the next element to the last one at or ahead of t1, averaging each navg.
int read_averaged(_zuvfile* file, double t1, int navg, arrays& out) {
    std::array<std::byte, REA_ELEMSIZE> bytes;
    double t = 0.0, r = 0.0, el = 0.0, az = 0.0;
    int n = 0;
    auto close_group = [&] {
        if (n > 0) out.add(t / n, r / n, el / n, az / n);
        t = r = el = az = 0.0;
        n = 0;
    };
    for (std::int64_t left = u_nelem(file) - u_nextelem(file); left > 0; left--) {
        if (int status = u_getelem(file, bytes); status != ZUV_OK) return status;
        const _reaelement element = rea_unpack(bytes);
        if (element.time > t1) break;
        t += element.time;
        r += element.range;
        el += static_cast<double>(element.elevation);
        az += static_cast<double>(element.azimuth);
        if (++n == navg) close_group();
    }
    close_group();
    return ZUV_OK;
}

// Replaces the arrays, unless reading fails.
int replace(rea_track* track, _zuvfile* file, double t1, int navg) {
    arrays read;
    if (int status = read_averaged(file, t1, navg, read); status != ZUV_OK) return status;
    track->time = std::move(read.time);
    track->range = std::move(read.range);
    track->elevation = std::move(read.elevation);
    track->azimuth = std::move(read.azimuth);
    return ZUV_OK;
}

int open_and_read(rea_track* track) {
    zuvfile_ptr file = opengenrea(track->name);
    if (!file) return getgenreaerror();
    const int status = replace(track, file.get(), HUGE_VAL, 1);
    if (status == ZUV_OK) track->file = std::move(file);
    return status;
}

std::span<const double> of(const rea_track* track, std::vector<double> rea_track::*values) {
    return track ? std::span<const double>(track->*values) : std::span<const double>();
}

} // namespace

rea_track_ptr rea_setup(const std::string& name) {
    auto track = std::make_unique<rea_track>();
    track->name = name;
    return open_and_read(track.get()) == ZUV_OK ? std::move(track) : nullptr;
}

int rea_get_ndata(const rea_track* track) {
    return track ? static_cast<int>(track->time.size()) : 0;
}

std::span<const double> rea_get_time(const rea_track* track) {
    return of(track, &rea_track::time);
}

std::span<const double> rea_get_range(const rea_track* track) {
    return of(track, &rea_track::range);
}

std::span<const double> rea_get_elevation(const rea_track* track) {
    return of(track, &rea_track::elevation);
}

std::span<const double> rea_get_azimuth(const rea_track* track) {
    return of(track, &rea_track::azimuth);
}

int rea_rehash(rea_track* track) {
    return track && track->file ? open_and_read(track) : ZUV_NULL_FILE;
}

int rea_rd_and_avg(rea_track* track, double t0, double t1, int navg) {
    if (!track || !track->file) return ZUV_NULL_FILE;
    if (navg < 1) return ZUV_BAD_ARGUMENT;
    if (int status = u_timemove(track->file.get(), t0); status != ZUV_OK) return status;
    return replace(track, track->file.get(), t1, navg);
}

int rea_close_file(rea_track* track) {
    if (!track || !track->file) return ZUV_NULL_FILE;
    return u_close(std::move(track->file));
}

void rea_free(rea_track_ptr) {}

} // namespace norva
