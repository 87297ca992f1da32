#pragma once
// Between the cut window and the cut processor: the block packed into an action record with all checks made
// before, the result taken apart, and what follows from it for the block and the main data. Draws nothing.

#include "cut/parms.h"
#include "cut/procut.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace norva {

// A phase spline as the spline tool fitted it. No spline: no samples.
struct pc_spline {
    bool phase_curve = true;   // the curve is a phase of this cut
    int domain = 0;            // 0 image, 1 transform
    float x1 = 0, dx = 0;      // first sample and step
    std::span<const float> ph; // its samples, cycles
    std::span<const float> breaks;
};

// What an action needs besides the block.
struct pc_surroundings {
    float f0 = 0, df = 0;              // first frequency and step of the data, MHz
    int nf = 0;                        // their number
    float bw = 0;                      // bandwidth, MHz
    int nbu = 1;                       // steps of a back-up
    const pc_spline* spline = nullptr; // for action 17
};
pc_surroundings pc_surroundings_of_user(); // from the run state, without a spline

// What is remembered between the actions of one cut.
struct pc_session {
    int last_mode = 0;
    bool init30 = false;   // the cut is one-dimensional data
    bool mc_ok = false;    // a slope or spline was subtracted
    bool playback = false; // the stored cut was replayed to its end
};

struct pc_packed {
    std::vector<std::int32_t> record; // empty when refused
    std::string refusal;              // the message to show
};

// The action record of pc.mode, or why there is none. The crosshairs are taken in rising order.
pc_packed pc_pack(const procut_parms& pc, const pc_session& session, const pc_surroundings& around);

// One domain as the common result shows it.
struct pc_curve {
    float scale = 0;                  // amplitude that 1 stands for
    std::vector<float> u, a, p, r, q; // axis, amplitude, phase (cycles), real and imaginary part
};

struct pc_peak {
    float position = 0; // gates
    float width = 0;    // in nominal main lobes; 0 when it cannot be measured
    float skewness = 0; // right part of the width over the left
};

// A result record taken apart. Which fields are filled depends on `what`.
struct pc_result {
    enum kind { FAILED, COMMON, DERIVATIVE, PEAKS, SLOPE, SPLINE, TSA, NEW_CUT, DELAYS, ENDED };
    kind what = FAILED;
    std::string message; // FAILED
    int step = 0;        // of all others
    int mode = 0;        // action the cut stands at; else that of the record

    pc_curve cut, transform;          // COMMON
    std::vector<std::int32_t> action; // COMMON: the words of the action itself

    int id = 0, kd = 0, kf = 0; // DERIVATIVE
    std::vector<float> axis, first, second;

    std::vector<float> crosshairs; // PEAKS, SLOPE, TSA, and the one of action 20
    std::vector<pc_peak> peaks;    // PEAKS
    float p1 = 0, p2 = 0;          // SLOPE: fitted phases at the crosshairs, cycles

    int ids = 0; // SPLINE
    float x1p = 0, dxp = 0;
    std::vector<float> ph, breaks;

    float xj1 = 0, xj2 = 0, pjp = 0; // TSA: as asked for
    float f1 = 0, f2 = 0;            // positions of the stronger and the weaker scatterer, gates
    float a1 = 0, a2 = 0;            // their amplitudes
    float x1 = 0, dx = 0;            // axis of the model signal
    std::vector<float> am, phs;      // its amplitude and phase

    float wct = 0, dct = 0, xpv = 0, ypv = 0, agl = 0; // NEW_CUT
    std::vector<double> delays;                        // DELAYS: nt + 1, microseconds
};

// False, with what = FAILED and a message, for a failure and for a record that does not hold together.
bool pc_unpack(std::span<const std::int32_t> out, pc_result& result);

// What an action came to.
struct pc_outcome {
    std::string message; // refused or failed: to be shown
    pc_result result;
    pc_result display; // COMMON where a back-up ended at a measurement: the signal that it belongs to
};

// All of one action but the drawing: checks, packing, the processor, and the block brought up to date, with
// the limits of the phase graphs where they follow the data. Mode 28 replays the stored cut to its end. A
// refusal leaves block and crosshairs as they are, so that what is missing can be set; after a failure
// pc.mode is that of the last action, and the crosshairs are gone.
pc_outcome pc_perform(procut_parms& pc, pc_session& session, const pc_surroundings& around);

// Corrects the main data by the delays of a result and keeps them as a record of user.mc. False after a
// message that there is no room for them, or that they do not fit the data.
bool pc_correct_data(const pc_result& delays);

} // namespace norva
