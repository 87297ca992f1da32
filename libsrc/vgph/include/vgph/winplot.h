#pragma once
// Hardcopy: the same objects that go to a display, drawn on one page of paper (a printer, or a PDF file) at
// the resolution of the device.
//
//   vghardcopy_ptr hc = vg_hc_init("profile", 0, 1.0f, 1.0f, 0.5f, 0.5f, 1);
//   vg_hc_frame(*hc, frame.get());
//   vg_hc_done(*hc);
//
// After a cancel or a failure, which the user has been told, the record's `context` is 0 and the other calls
// do nothing.

#include "port/port.h"
#include "vgph/vgph.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace norva {

// Output types as set by "QELMHCTYPE". They are kept as settings; all output goes to the platform's page.
constexpr int vg_hc_cps = 1, vg_hc_ps = 2, vg_hc_hpgl = 3, vg_hc_tek = 4;

struct _vghardcopy {
    port_win context = 0;                                                // the page being drawn, 0 for none
    int currentcolor = -1, currentlinestyle = -1, currentthickness = -1; // of the pen in use
    std::string path, filename, tfname; // folder; document name; file for the PDF
    int type = vg_hc_ps;
    std::string queue = "lp";
    int doprt = 1; // 0: to a file, whether or not there is a printer
    int del = 1;
    int dousr = 0;                                    // a user command is set ...
    std::string usrcmd;                               // ... this
    float xscale = 1, yscale = 1, xoff = 0, yoff = 0; // plot inches to paper inches
    int invxy = 0;                                    // x runs along the long side of the paper
    int nvector = 0, nstroke = 0;                     // vectors and strokes drawn so far
    void (*lineset)(_vghardcopy&, int color, int linetype, int linethick) = nullptr; // how to start a line
    port_point (*mover)(const _vghardcopy&, float x, float y) = nullptr;             // where a point goes
    // Taken from the page when it is opened.
    port_size paper;  // device units
    double pinch = 0; // device units per plot inch: short side / 8.5
};
using vghardcopy_ptr = std::unique_ptr<_vghardcopy>;

// Opens the output. `file` names the document and, with the time, the PDF; `type` 0 takes the environment's.
// A point x, y of an object goes to x*xscale + xoff, y*yscale + yoff inches from the lower left corner of the
// paper. Shows "Print Canceled." or "Print Error." when there is nothing to draw on.
vghardcopy_ptr vg_hc_init(std::string_view file, int type, float xscale, float yscale, float xoff, float yoff,
                          int invxy);
void vg_hc_object(_vghardcopy& hc, const _vgobject* obj);
void vg_hc_frame(_vghardcopy& hc, const _vgframe* frame);
// Cells of a colour image, as vg_render_cells.
void vg_hc_cells(_vghardcopy& hc, const _vgrect& box, std::span<const std::uint32_t> rgb, int w, int h);
// A small line with the date, after `text` when there is one; x0, y0, height as in vg_symbol.
void vg_hc_date(_vghardcopy& hc, float x0, float y0, float height, std::string_view text);
// Ends the page and the document; shows "Print Error." when it could not be written.
void vg_hc_done(_vghardcopy& hc);
// A frame in one call: scale 1.0, offsets 1.0, x along the long side.
void vg_hardcopy(const _vgframe* frame);

// Moves and draws, on the page with the current pen.
void vg_hc_drawvec(_vghardcopy& hc, std::span<const _vgvec> vec);
// The two routines that a new record starts with.
port_point vg_mover(const _vghardcopy& hc, float x, float y);
void vg_lineset(_vghardcopy& hc, int color, int linetype, int linethick);

// Sets one of the 16 printing colours; values as in vg_set_palette. A `col` outside 0 to 15 is ignored.
void vghc_newcolor(int col, double r, double g, double b);

// Settings from the environment: "QELMHCTYPE" (CPS, PS, HPGL, TEK, in any case; other words leave the type),
// "QELMHCQUEUE", "QELMHCPATH", "QELMHCPRINT" and "QELMHCDELETE" ("NO" switches off), "QELMHCUSER".
void vg_hc_getenv(_vghardcopy& hc);

// For runs without a user: stands above the environment and the dialog.
struct vg_hc_preset {
    bool ask = true;  // false: no print dialog, straight to a PDF
    std::string dir;  // folder of the PDFs, in place of "QELMHCPATH" when not empty
    std::string file; // full name of the next PDF, which uses it up
};
vg_hc_preset& vg_hc_presets();
// Shorthand: the next page goes to this file, with no dialog.
void vg_hc_preset_file(std::string_view name);

} // namespace norva
