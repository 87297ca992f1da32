#pragma once
// Polar formatting: an image by direct summation, every sample focused on every image point with its exact
// geometry, for data that trace an arc in the plane of spatial frequencies.

namespace norva {

// Image z of a turntable measurement.
//   s           na records of nf interleaved complex samples, frequency fastest
//   f1, df      first frequency and step, MHz
//   rc          distance from the radar to the rotation axis, metres
//   de, da      depression angle against the turntable's plane, rotation between records, radians
//   nx, ny      points across and along range; dx, dy their spacing, metres. Point (nx/2, ny/2), counted from
//               0, lies on the axis
//   ni          1 takes the difference of ranges for a far radar; 2 to 5 refine it ni - 1 times for the
//               curvature of the wave front (above 5 as 5)
//   c           speed of light, metres times MHz
//   z           out: ny rows of nx interleaved complex values, replaced
// Samples are weighted by the circular weight over the largest ellipse that the band and the aperture hold;
// those on its border and outside are left out. Phases are taken from a table of 8000 steps a cycle and are
// formed in single precision with a rounding after each operation, so that the entry used is the same on
// every processor. The sums are so with any number of threads; between processors their last bits may differ.
// Calls rpt_progress(j, na) for each record, before it and up to 15 others are summed.
void polarfor1(const float* s, int nf, int na, float f1, float df, float rc, float de, float da, int nx,
               int ny, float dx, float dy, int ni, float c, float* z);

// The same for a radar that moves along a rail: du the increment between records, metres; sa the squint
// angle, radians; rc the distance to the focal point.
void polarfor2(const float* s, int nf, int nt, float f1, float df, float rc, float du, float sa, int nx,
               int ny, float dx, float dy, int ni, float c, float* z);

} // namespace norva
