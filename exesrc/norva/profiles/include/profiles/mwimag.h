#pragma once
// Moving window image: one small image for every position of a time window that slides along the raw data,
// and the strongest peaks of each.

namespace norva {

constexpr int MWIMAG_MAX_WORDS = 2097152; // 2*NX*NY floats of one image
constexpr int MWIMAG_MAX_NPK = 50;
constexpr int MWIMAG_STEPS = 7; // refinement steps of a peak

//   q         in   nt records of nf complex samples, frequency fastest
//   nti, lag  in   records per image, records between images (both at least 1)
//   ksx, ksy  in   transform signs for crossrange and range
//   ifx, ify  in   interpolation factors: the image is niceno(nti*ifx) by niceno(nf*ify) samples
//   npk       in   peaks per image; above 50: "STOP IN MWIMAG #2"
//   nto       out  number of images, (nt-nti)/lag + 1, 0 when nti > nt
//   ap        out  amplitudes, the strongest of the whole run being 1; entry (ito-1)*npk + k is peak k of
//   image
//                  ito, by falling amplitude; entries without a peak are 0
//   xp, yp    out  crossrange and range in gates
// ap, xp, yp hold npk values for each image. An image above 2097152 floats is "STOP IN MWIMAG #1". Progress
// is reported for every image.
void mwimag(const float* q, int nf, int nt, int nti, int lag, int ksx, int ksy, int ifx, int ify, int npk,
            int* nto, float* ap, float* xp, float* yp);

} // namespace norva
