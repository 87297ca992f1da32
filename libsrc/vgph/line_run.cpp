// Runs of points to the port.

#include "line_run.h"

#include <algorithm>
#include <span>

namespace norva {

void line_run::end() {
    if (n_ > 1) flush();
    n_ = 0;
}

void line_run::flush() {
    std::span<const port_point> run(pts_.data(), static_cast<std::size_t>(n_));
    // The port goes on from where it is, and so do the dashes, when the stroke does.
    if (starts_stroke_) {
        out_.move_to(dc_, run.front());
        strokes_++;
        bool dot = std::all_of(run.begin(), run.end(), [&](port_point p) { return p == run.front(); });
        if (dot) { // a stroke within one pixel shows that pixel: small circles do not vanish
            const port_point next{run.front().x + 1, run.front().y};
            out_.polyline_to(dc_, {&next, 1});
            return;
        }
    }
    out_.polyline_to(dc_, run.subspan(1));
}

} // namespace norva
