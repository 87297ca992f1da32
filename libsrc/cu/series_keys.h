#pragma once
// The four keys that most series have in their headers, at once.

#include "series.h"

namespace norva {

template <class T>
int series_getkeys(typename T::file* p, double& t0, double& tbias, double& prf, double& xlam) {
    if (!p) return series_status<T>(ZUV_NULL_FILE);
    t0 = p->hd.t0;
    tbias = p->hd.tbias;
    prf = p->hd.prf;
    xlam = p->hd.xlam;
    return series_status<T>(ZUV_OK);
}

template <class T> int series_putkeys(typename T::file* p, double t0, double tbias, double prf, double xlam) {
    typename T::head head;
    if (int status = series_gethead<T>(p, head); status != ZUV_OK) return status;
    head.t0 = t0;
    head.tbias = tbias;
    head.prf = prf;
    head.xlam = xlam;
    return series_puthead<T>(p, head);
}

} // namespace norva
