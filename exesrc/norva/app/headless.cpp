// The replay of a journal without a display.
#include "app/headless.h"

#include "app/gpf.h"
#include "app/main_window.h"
#include "image/ximag.h"
#include "journal/crash_file.h"
#include "journal/journal.h"
#include "journal/listing.h"
#include "journal/store.h"
#include "profiles/doppler_window.h"
#include "profiles/range_window.h"
#include "state/calls.h"
#include "state/run.h"
#include "state/user.h"
#include "toolkit/wi.h"
#include "vgph/winplot.h"
#include "zuvsys/safefile.h"
#include "zuvsys/strprintf.h"

#include <cstdio>
#include <filesystem>

namespace norva {

namespace fs = std::filesystem;

static struct {
    std::string journal_file;
    fs::path out;
    std::string summary;
    bool complete = true; // no message has appeared
} run;

static void report(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
    run.complete = false;
}

static void finish() {
    std::string why;
    if (!write_text_safely((run.out / "summary.txt").string(), run.summary, &why)) report(why);
    std::fputs(run.summary.c_str(), stdout);
    wi_quit(run.complete ? 0 : 1);
}

// The tag of the step at the store's cursor, that is, of the position just reached.
static int tag_at(int position) {
    std::vector<std::int32_t> reply;
    const std::int32_t request[] = {JOURNAL_GOTO, position};
    journal(request, reply);
    return reply.size() > 1 && reply[0] >= 0 ? reply[1] : -1;
}

static std::string range_gate_text() {
    rp_gate gate;
    if (!strongest_range_gate(gate)) return "-";
    return strprintf("range %.2f gates in record %d", gate.range, gate.record);
}

static std::string doppler_gate_text() {
    dp_gate gate;
    if (!strongest_doppler_gate(gate)) return "-";
    return strprintf("Doppler %.2f gates in row %d", gate.doppler, gate.row);
}

static std::string image_gate_text() {
    image_gate gate;
    if (!strongest_image_gate(gate)) return "-";
    return strprintf("range %.2f, crossrange %.2f gates", gate.range, gate.crossrange);
}

// One line of the summary.
struct step_report {
    std::string window = "main", files = "-", gate = "-";
};

// Picture of a window that the step shows, and its hardcopy when there is something to put on paper.
static void take_window(step_report& line, const std::string& name, wi_obj* window, wi_cb handler,
                        int hardcopy_tag, bool filled) {
    const fs::path png = run.out / (name + ".png"), pdf = run.out / (name + ".pdf");
    if (!the_port().picture(getparenthandle(window), png.string())) report("cannot write " + png.string());
    line.files = name + ".png";
    if (!filled) return;
    vg_hc_preset_file(pdf.string());
    handler(nullptr, hardcopy_tag);
    std::error_code ignored;
    if (!fs::exists(pdf, ignored)) report("cannot write " + pdf.string());
    line.files += " " + name + ".pdf";
}

static void take_image(step_report& line, const std::string& name) {
    line.window = "image";
    line.gate = image_gate_text();
    take_window(line, name, ximag_window(), ximag_bttn, XI_HARDCOPY, true);
}

static void show_step(int position) {
    const std::string name = strprintf("step_%03d", position);
    step_report line;
    if (rpwinon) {
        line.window = "range profile";
        line.gate = range_gate_text();
        take_window(line, name, xrp_window(), xrp_cb, 18, true);
    } else if (dpwinon) {
        line.window = "Doppler profile";
        line.gate = doppler_gate_text();
        take_window(line, name, xdp_window(), xdp_cb, 1, xdp_initialized());
    } else if (imgwinon) {
        take_image(line, name);
    }
    run.summary += strprintf("%4d  %-40s %-16s %-28s %s\n", position, step_text(tag_at(position)).c_str(),
                             line.window.c_str(), line.files.c_str(), line.gate.c_str());
}

static void go_to(int position);

static void after_step(int position) {
    if (position < eoj)
        the_port().later([position] { go_to(position + 1); });
    else
        finish();
}

// The image's own steps, until it closes.
static void next_image_step(int position);

static void after_image_step(int position) {
    step_report line;
    const int step = ximag_count();
    take_image(line, strprintf("step_%03d_%02d", position, step));
    run.summary +=
        strprintf("%7s  %-37s %-16s %-28s %s\n", strprintf(".%02d", step).c_str(), ximag_action().c_str(),
                  line.window.c_str(), line.files.c_str(), line.gate.c_str());
    next_image_step(position);
}

static void next_image_step(int position) {
    const int before = ximag_count();
    ximag_step(IMAGE_STEP_FORWARD);
    const bool shown = imgwinon && ximag_count() != before;
    the_port().later([position, shown] { shown ? after_image_step(position) : after_step(position); });
}

// A step's pictures are taken in a later turn of the loop, when its window has been painted.
static void go_to(int position) {
    user.count = position;
    mng_jrnl(nullptr, 0);
    the_port().later([position] {
        show_step(position);
        imgwinon ? next_image_step(position) : after_step(position);
    });
}

static void begin() {
    std::error_code fault;
    fs::create_directories(run.out, fault);
    if (fault) {
        report("cannot make the folder " + run.out.string() + ": " + fault.message());
        wi_quit(1);
        return;
    }
    select_journal_file(run.journal_file);
    filewin_cb(nullptr, 2);
    if (user.rdfile.empty() || data_type == raw_kind::none || kwinon) {
        report("the journal " + run.journal_file + " could not be replayed");
        wi_quit(1);
        return;
    }
    run.summary = "Journal  " + run.journal_file + "\nRaw data " + user.rdfile + "\n\n" +
                  strprintf("%4s  %-40s %-16s %-28s %s\n", "Step", "", "Window", "Files", "Strongest gate");
    go_to(0);
}

void replay_headless(const std::string& journal_file, const std::string& out_folder) {
    run = {.journal_file = journal_file, .out = out_folder, .summary = {}, .complete = true};
    app_hooks.popmsg = report;
    crash_file_kept = false;
    the_port().later(begin);
}

} // namespace norva
