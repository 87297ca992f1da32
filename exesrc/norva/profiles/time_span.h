#pragma once
// The displayed time span of the profile windows: what its two fields do, and how it is kept on the data. All
// times in seconds.

namespace norva {

// The data: nt records, dt apart, from t0 on.
struct record_times {
    double t0 = 0, dt = 0;
    int nt = 0;
    double end() const { return t0 + nt * dt; }
};

struct time_span {
    double stime = 0, etime = 0;
    double ctime = 0;
    double interval() const { return etime - stime; }
};

// The span of all records.
time_span whole_span(const record_times& rec);

// A new centre: held to the data; the interval shrinks where it would leave them.
time_span centred_span(const record_times& rec, double ctime, double interval);

// A new interval around a centre: between three records and all of them; shifted, at the same width, where it
// would leave the data.
time_span interval_span(const record_times& rec, double ctime, double interval);

// The span as it can be drawn: at least three records wide, and inside the data when these have so many.
time_span drawable_span(const record_times& rec, const time_span& span);

} // namespace norva
