#include "time_span.h"

#include <algorithm>

namespace norva {

constexpr int LEAST_RECORDS = 3;

time_span whole_span(const record_times& rec) {
    return {rec.t0, rec.end(), 0.5 * (rec.t0 + rec.end())};
}

time_span centred_span(const record_times& rec, double ctime, double interval) {
    ctime = std::clamp(ctime, rec.t0, rec.end());
    const double half = std::max(0.0, std::min({interval / 2, ctime - rec.t0, rec.end() - ctime}));
    return {ctime - half, ctime + half, ctime};
}

time_span interval_span(const record_times& rec, double ctime, double interval) {
    const double width = std::min(std::max(interval, LEAST_RECORDS * rec.dt), rec.nt * rec.dt);
    double stime = ctime - width / 2;
    stime = std::min(std::max(stime, rec.t0), rec.end() - width);
    return {stime, stime + width, stime + width / 2};
}

time_span drawable_span(const record_times& rec, const time_span& span) {
    const double least = LEAST_RECORDS * rec.dt;
    double stime = std::min(span.stime, span.etime - least);
    double etime = std::min(span.etime, rec.end());
    stime = std::min(stime, rec.end() - least);
    etime = std::max(etime, rec.t0 + least);
    stime = std::max(stime, rec.t0);
    return {stime, etime, 0.5 * (stime + etime)};
}

} // namespace norva
