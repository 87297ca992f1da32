#pragma once
// What the product is measured against: transforms by FFTW, and everything else as the formulas tell it, in
// plain loops.

#include <memory>
#include <string>
#include <vector>

namespace norva::bench {

// FFTW in single precision, planned with FFTW_MEASURE, in place on its own array. ny = 1: one line.
class fftw {
public:
    static bool available();
    fftw(int nx, int ny, int sign, float* a); // the array's content is lost
    ~fftw();
    fftw(const fftw&) = delete;
    fftw& operator=(const fftw&) = delete;
    void run();

private:
    void* plan_ = nullptr;
};

// Floats on a boundary that suits every kernel.
class floats {
public:
    explicit floats(std::size_t n);
    ~floats();
    floats(const floats&) = delete;
    floats& operator=(const floats&) = delete;
    float* data() { return p_; }
    std::size_t size() const { return n_; }
    void fill(const std::vector<float>& from);

private:
    float* p_;
    std::size_t n_;
};

std::vector<float> noise(std::size_t n);

// Each sample by itself: remainder of one cycle, cosine, sine.
void plain_mocomp(float* x, int nf, int nt, float f1, float df, float rh, const double* d);

// Each sample into each point: refinement of the range, remainder, table.
void plain_polarfor1(const float* s, int nf, int na, float f1, float df, float rc, float de, float da, int nx,
                     int ny, float dx, float dy, int ni, float c, float* z);

// Each tap by itself: two looks into the tables.
void plain_pk2dpos(const float* c, int nx, int ny, int k0, int ni, float* xp, float* yp, float* ap);

void plain_peaks(const float* a, int nx, int ny, int npm, float amn, int* lp, int* np);

} // namespace norva::bench
