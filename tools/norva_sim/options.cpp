// The command line of norva_sim: named scenes, options, their checks.
#include "options.h"

#include "zuvsys/numparse.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <span>

namespace norva {

const std::string_view sim_help =
    R"(norva_sim - write a gate file of a scene whose answer is known

usage: norva_sim [--scene NAME] [options] FILE

A named scene sets everything; the options behind it change it.
  turntable   nine points on a turntable, 64 frequencies by 128 records, with polar format keywords
  drift       three points that drift by 0.05 gates a record
  accel       the same with an acceleration of 0.0005 gates a record squared
  descending  the drift scene with descending frequencies (negative step)
  cw          sampled cw: one frequency, two Doppler lines at +20 and -12.5 Hz
  onetime     one record: two points at -10 and +6.5 gates
  noise       noise alone

Sampling
  --nf N  --nt N        frequencies and records
  --f0 MHZ  --df MHZ    first frequency and step; a negative step makes frequencies descend
  --t0 S  --dt S        time of the first record and interval, seconds
  --duty X              part of the interval in which the frequencies of a record follow each
                        other, 0..1 (0: all at once)

Target (each --point or --turn-point adds one; the first replaces the points of the named scene)
  --point AMP,GATE[,HZ[,CYCLES]]
                        at a range gate, with a Doppler frequency at the centre frequency
                        (positive: approaching) and a phase
  --turn-point AMP,X,Y  on the turntable, metres; y away from the radar, x across
  --rotation RAD        turntable rotation from record to record
  --depression RAD      line of sight to the plane of the turntable
  --distance M          distance to the turntable's axis; 0: far away
  --drift G  --accel G  motion of the whole target, gates a record and gates a record squared
  --noise RMS           complex noise added to each sample
  --seed N              of the noise

File
  --dattype 4|5|6       signed bytes, 16-bit integers, floats (6)
  --full-scale X        scale so that the largest component is X (120 for bytes, 30000 for 16 bits)
  --ranges              lead each row by a range
  --machine 1..5        number representation: VAX, MIPS, Sun, this machine (4), Alpha VMS
  --ksx -1|1            crossrange sign KSX (default: -1, or 1 when the rotation is negative)
  --sigtype TEXT        SIG_TYPE
  --text NAME=VALUE     a further string keyword
  --omit NAME           leave a keyword out

Signs. A scatterer of delay tau contributes exp(-2 pi i f tau): range gates count away from the
radar, with ascending and descending frequencies alike. With a positive rotation, points of
positive x approach the radar; KSX -1 shows them at positive crossrange, and approaching points at
positive Doppler. A negative rotation goes with KSX 1. Other pairings show the mirror image.

Exit status: 0 written, 1 the file could not be written, 2 the command line is wrong.
)";

namespace {

// Points that are given by a range gate get their delay once the sampling is known.
struct pending {
    sim_options& options;
    std::vector<double> gates = {}; // parallel to the points; 0 for those of a turntable
    bool own_points = false;        // the user has named points, those of the named scene are gone
    double drift = 0.0, acceleration = 0.0;

    void add(const scene_point& point, double gate) {
        options.world.points.push_back(point);
        gates.push_back(gate);
    }
    void clear_points() {
        options.world.points.clear();
        gates.clear();
    }
};

void add_target(pending& p) {
    p.add({.amplitude = 1.0}, -8.0);
    p.add({.amplitude = 0.7, .phase = 0.25}, 0.0);
    p.add({.amplitude = 0.5}, 12.5);
}

void turntable(pending& p) {
    scene& s = p.options.world;
    s.nf = 64;
    s.nt = 128;
    s.table = {.da = 5.5e-4, .de = 0.0, .rc = 1000.0};
    // An aircraft from above, nose towards the radar, not symmetric so that a mirror image shows.
    constexpr double points[][3] = {{1.0, 0.0, -8.0}, {0.6, 0.0, -4.0}, {0.8, 0.0, 0.0},
                                    {0.6, 0.0, 4.0},  {0.9, 0.0, 8.0},  {0.7, -7.0, 1.5},
                                    {0.7, 7.0, 1.5},  {0.5, -3.0, 8.0}, {1.0, 3.5, -1.0}};
    for (auto [amplitude, x, y] : points) p.add({.amplitude = amplitude, .x = x, .y = y}, 0.0);
}

void drift(pending& p) {
    scene& s = p.options.world;
    s.nf = 128;
    s.nt = 200;
    s.df = 2.0;
    s.dt = 0.005;
    p.drift = 0.05;
    add_target(p);
}

void accel(pending& p) {
    drift(p);
    p.acceleration = 0.0005;
}

void descending(pending& p) {
    drift(p);
    scene& s = p.options.world;
    s.f0 += (s.nf - 1) * s.df;
    s.df = -s.df;
}

void cw(pending& p) {
    scene& s = p.options.world;
    s.nf = 1;
    s.nt = 512;
    s.df = 1.0;
    p.options.form.sigtype = "sampled cw";
    p.add({.amplitude = 1.0, .doppler = 20.0}, 0.0);
    p.add({.amplitude = 0.5, .doppler = -12.5}, 0.0);
}

void onetime(pending& p) {
    p.options.world.nf = 128;
    p.options.world.nt = 1;
    p.add({.amplitude = 1.0}, -10.0);
    p.add({.amplitude = 0.5}, 6.5);
}

void noise(pending& p) {
    p.options.world.noise = 1.0;
}

struct named_scene {
    std::string_view name;
    void (*make)(pending&);
};
constexpr named_scene named_scenes[] = {
    {"turntable", turntable}, {"drift", drift}, {"accel", accel}, {"descending", descending}, {"cw", cw},
    {"onetime", onetime},     {"noise", noise}};

// Numbers separated by commas; nothing when one is none or their count is outside least..most.
std::optional<std::vector<double>> numbers(std::string_view text, std::size_t least, std::size_t most) {
    std::vector<double> out;
    for (;;) {
        std::size_t comma = std::min(text.find(','), text.size());
        std::optional<double> value = whole_double(text.substr(0, comma));
        if (!value || !std::isfinite(*value)) return std::nullopt;
        out.push_back(*value);
        if (comma == text.size()) break;
        text.remove_prefix(comma + 1);
    }
    if (out.size() < least || out.size() > most) return std::nullopt;
    return out;
}

// A plain number of the options, held to least..most.
struct number_option {
    std::string_view name;
    double least, most;
    void (*set)(pending& p, double value);
    bool whole = false;
};

constexpr double far_away = 1e12;
constexpr number_option number_options[] = {
    {"--nf", 1, 65536, [](pending& p, double v) { p.options.world.nf = static_cast<int>(v); }, true},
    {"--nt", 1, 1e6, [](pending& p, double v) { p.options.world.nt = static_cast<int>(v); }, true},
    {"--f0", 1e-3, far_away, [](pending& p, double v) { p.options.world.f0 = v; }},
    {"--df", -far_away, far_away, [](pending& p, double v) { p.options.world.df = v; }},
    {"--t0", -far_away, far_away, [](pending& p, double v) { p.options.world.t0 = v; }},
    {"--dt", 1e-12, far_away, [](pending& p, double v) { p.options.world.dt = v; }},
    {"--duty", 0, 1, [](pending& p, double v) { p.options.world.duty = v; }},
    {"--rotation", -1, 1, [](pending& p, double v) { p.options.world.table.da = v; }},
    {"--depression", -1.6, 1.6, [](pending& p, double v) { p.options.world.table.de = v; }},
    {"--distance", 0, far_away, [](pending& p, double v) { p.options.world.table.rc = v; }},
    {"--drift", -far_away, far_away, [](pending& p, double v) { p.drift = v; }},
    {"--accel", -far_away, far_away, [](pending& p, double v) { p.acceleration = v; }},
    {"--noise", 0, far_away, [](pending& p, double v) { p.options.world.noise = v; }},
    {"--seed", 0, 4e15, [](pending& p, double v) { p.options.world.seed = static_cast<std::uint64_t>(v); },
     true},
    {"--dattype", 4, 6, [](pending& p, double v) { p.options.form.dattype = static_cast<int>(v); }, true},
    {"--full-scale", 0, far_away, [](pending& p, double v) { p.options.form.full_scale = v; }},
    {"--machine", 1, 5, [](pending& p, double v) { p.options.form.machine = static_cast<int>(v); }, true},
    {"--ksx", -1, 1, [](pending& p, double v) { p.options.form.ksx = static_cast<int>(v); }, true},
};

std::string set_number(pending& p, const number_option& option, const std::string& value) {
    std::optional<double> number = whole_double(value);
    if (!number || !(*number >= option.least && *number <= option.most) ||
        (option.whole && *number != std::trunc(*number)))
        return std::string(option.name).append(": bad value \"").append(value).append("\"");
    option.set(p, *number);
    return {};
}

std::string set_point(pending& p, const std::string& name, const std::string& value) {
    bool turning = name == "--turn-point";
    auto v = numbers(value, turning ? 3 : 2, turning ? 3 : 4);
    if (!v) return name + ": bad value \"" + value + "\"";
    if (!p.own_points) p.clear_points();
    p.own_points = true;
    v->resize(4);
    if (turning)
        p.add({.amplitude = (*v)[0], .x = (*v)[1], .y = (*v)[2]}, 0.0);
    else
        p.add({.amplitude = (*v)[0], .phase = (*v)[3], .doppler = (*v)[2]}, (*v)[1]);
    return {};
}

std::string set_text(pending& p, const std::string& value) {
    std::size_t equals = value.find('=');
    if (equals == 0 || equals == std::string::npos) return "--text: bad value \"" + value + "\"";
    p.options.form.texts.emplace_back(value.substr(0, equals), value.substr(equals + 1));
    return {};
}

std::string set_scene(pending& p, const std::string& value) {
    auto found = std::ranges::find(named_scenes, value, &named_scene::name);
    if (found == std::end(named_scenes)) return "--scene: there is no scene \"" + value + "\"";
    p.clear_points();
    found->make(p);
    return {};
}

// An option with its value.
std::string set(pending& p, const std::string& name, const std::string& value) {
    auto number = std::ranges::find(number_options, name, &number_option::name);
    if (number != std::end(number_options)) return set_number(p, *number, value);
    if (name == "--point" || name == "--turn-point") return set_point(p, name, value);
    if (name == "--text") return set_text(p, value);
    if (name == "--scene") return set_scene(p, value);
    if (name == "--sigtype")
        p.options.form.sigtype = value;
    else if (name == "--omit")
        p.options.form.omit.push_back(value);
    else
        return "unknown option " + name;
    return {};
}

// What follows from all options together.
std::string finish(pending& p) {
    scene& s = p.options.world;
    if (p.options.name.empty()) return "no file is named";
    if (s.df == 0.0) return "--df: the step must not be 0";
    if (s.f0 + (s.nf - 1) * s.df <= 0.0) return "--df: the frequencies fall below 0";
    if (std::int64_t{s.nf} * s.nt > 100'000'000) return "--nt: too many samples";
    for (std::size_t i = 0; i < s.points.size(); i++) s.points[i].delay = p.gates[i] * scene_gate(s);
    if (p.drift != 0.0 || p.acceleration != 0.0) s.motion = scene_motion(s, p.drift, p.acceleration);
    return {};
}

} // namespace

std::string read_options(const std::vector<std::string>& words, sim_options& options) {
    pending p{options};
    for (std::size_t i = 0; i < words.size(); i++) {
        const std::string& word = words[i];
        if (word == "--help") {
            options.help = true;
            return {};
        }
        if (word == "--ranges") {
            options.form.ranges = true;
            continue;
        }
        if (!word.starts_with("--")) {
            if (!options.name.empty()) return "a second file is named: " + word;
            options.name = word;
            continue;
        }
        if (i + 1 == words.size()) return word + ": a value is missing";
        if (std::string wrong = set(p, word, words[++i]); !wrong.empty()) return wrong;
    }
    return finish(p);
}

} // namespace norva
