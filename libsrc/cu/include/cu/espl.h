#pragma once
// The evaluated spline: a piecewise polynomial of time that can be evaluated, with any derivative, at any
// time. A fit makes one (cu/bspl.h), a spline file holds one (cu/spl.h).
//
// It lives in memory, with all its breakpoints, or on file, with the two around the current time in hand.
// What makes a new spline from others works on splines in memory only.
//
// espl_error() tells how the last call of this layer ended: 1 success, -13 a bad argument or a state in which
// the operation is not allowed, -16 a file whose contents make no spline, otherwise the status of the file
// layer. On failure a call gives null, an empty list or 0.0; a null spline gives -13.

#include "cu/spl.h"

#include <memory>
#include <string>
#include <vector>

namespace norva {

constexpr int ESPL_MEMORY = 0; // modes
constexpr int ESPL_FILE = 1;

// Most coefficients of a piece: the multipliers of its derivatives, up to 169!, just stay finite.
constexpr int ESPL_MAX_NCOE = 170;

constexpr int ESPL_NO_SPLINE = -16; // status: the contents of a file make no spline

// One breakpoint. The piece that begins here is the sum of coe[j] * (t - time)^j.
struct _brkpoint {
    double time = 0.0;
    int ncont = 0;           // continuous derivatives at this breakpoint, -1 for a jump (cu/bspl.h)
    int flg2 = 0;            // the caller's own, carried through
    std::vector<double> coe; // ncoe coefficients
};

struct _espl {
    int mode = ESPL_MEMORY;
    _splfile* fp = nullptr;          // the open file on file; not owned, stays open as long as the spline
    double t0 = 0.0, t1 = 0.0;       // times of the first and the last breakpoint
    int nbrks = 0;                   // breakpoints
    int ncoe = 0;                    // coefficients of a piece
    int ibrk = 0;                    // index of the upper breakpoint in hand; on file, of the lower one
    double tbrk0 = 0.0, tbrk1 = 0.0; // times of the breakpoints in hand
    std::vector<double> coe0, coe1;  // and copies of their coefficients
    std::vector<_brkpoint> brks;     // all breakpoints in memory, times rising
};

using espl_ptr = std::unique_ptr<_espl>;

int espl_error();

// Value at t of the derivative of order ideriv (0: of the spline itself). At a breakpoint the piece that
// begins there counts. Ahead of t0 the first piece goes on, from t1 on the polynomial of the last breakpoint.
// An order of ncoe or more gives 0.0 with status 1; a negative one, or a time that is not a number, -13.
// Changes the pieces in hand, nothing else; calls in the order of time do not search.
double espl(_espl* e, double t, int ideriv);

// A spline of nbrks >= 0 breakpoints at time 0, all coefficients 0; 1 <= ncoe <= ESPL_MAX_NCOE.
espl_ptr espl_init_for_memory(int nbrks, int ncoe);
// Takes over breakpoints with ncoe coefficients each.
espl_ptr espl_init_old(int ncoe, std::vector<_brkpoint> brks);
// From an open spline file: ESPL_MEMORY reads it all, ESPL_FILE stays on it. -16 for fewer than two elements,
// times that fall or are not finite, or more than ESPL_MAX_NCOE coefficients.
espl_ptr espl_init_with_file(_splfile* fp, int mode);
espl_ptr espl_copy(const _espl* e); // in memory only
void espl_free(espl_ptr e);         // espl_free(std::move(e)); an owner that dies does the same

int espl_bound(const _espl* e, double& t0, double& t1); // times of the first and last breakpoints
// To be called when the breakpoints, in memory or on file, have changed: recomputes the bounds, takes the
// first pieces in hand, and gives every breakpoint in memory ncoe coefficients. -13 in memory without any.
int espl_rehash(_espl* e);

espl_ptr espl_read(const std::string& name); // the whole of a spline file, into memory
// Writes a spline in memory to a file; an old one of that name is replaced once the new one is complete.
// Returns the status.
int espl_write(const _espl* e, const std::string& name, const std::string& text, const std::string& type,
               const std::string& xunits, const std::string& yunits, int ider);

espl_ptr espl_mult(const _espl* e, double factor); // factor times e
espl_ptr espl_plus(const _espl* e, double c);      // e plus c
espl_ptr espl_integrate(const _espl* e, double c); // the integral, with value c at the first breakpoint
espl_ptr espl_diff(const _espl* e);                // the derivative; ncoe of at least 2

// The sum. Its breakpoints are those of both; an operand goes on outside its bounds as espl() does. Every
// ncont and flg2 is 0.
espl_ptr espl_add(_espl* e1, _espl* e2);
// A spline at the breakpoint times of both that lie in lo..hi, a common time counted once, at least two in
// all; with the larger ncoe and all coefficients 0.
espl_ptr espl_mergebrks(const _espl* e1, const _espl* e2, double lo, double hi);

// Times for plotting, ncoe*fact of them for each piece, evenly from its start; the end of the last piece is
// not among them. In memory only.
std::vector<float> espl_plttimes(const _espl* e, int fact);

} // namespace norva
