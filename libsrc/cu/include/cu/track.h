#pragma once
// The track reader: a track as arrays of time, range, elevation and azimuth.

#include "fileio/zuvfile.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace norva {

struct rea_track {
    std::string name;
    zuvfile_ptr file;                       // the open file (cu/genrea.h); null once closed
    std::vector<double> time;               // seconds
    std::vector<double> range;              // metres
    std::vector<double> elevation, azimuth; // as in the file
};

using rea_track_ptr = std::unique_ptr<rea_track>;

// Opens a track or gate file and reads all of it; null on failure (getgenreaerror).
rea_track_ptr rea_setup(const std::string& name);

// Of a null track: no data.
int rea_get_ndata(const rea_track* track);
std::span<const double> rea_get_time(const rea_track* track);
std::span<const double> rea_get_range(const rea_track* track);
std::span<const double> rea_get_elevation(const rea_track* track);
std::span<const double> rea_get_azimuth(const rea_track* track);

// Each replaces the arrays by what the file holds now, and returns 1, or the status of the file layer with
// the arrays as they were; -10 once the file is closed.
int rea_rehash(rea_track* track); // all elements, from the file opened anew
// The elements from time t0 to time t1, both included, each navg of them (-13 below 1) averaged to one, as
// far as they go.
int rea_rd_and_avg(rea_track* track, double t0, double t1, int navg);

int rea_close_file(rea_track* track); // the arrays stay
void rea_free(rea_track_ptr track);   // an owner that dies does the same

} // namespace norva
