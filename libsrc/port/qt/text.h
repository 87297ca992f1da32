#pragma once
// Small conversions at the edge between the program and Qt: texts, colours, rectangles.

#include "port/port.h"

#include <QColor>
#include <QRect>
#include <QString>

#include <algorithm>
#include <cmath>

namespace norva {

inline QString to_qt(const std::string& s) {
    return QString::fromUtf8(s.data(), static_cast<qsizetype>(s.size()));
}

inline std::string from_qt(const QString& s) {
    return s.toStdString();
}

// In button and menu texts a lone "&" would underline the next letter.
inline QString plain_mnemonics(const std::string& s) {
    QString text = to_qt(s);
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

// The program keeps red in the low byte, Qt in the third.
inline std::uint32_t swap_red_blue(std::uint32_t rgb) {
    return ((rgb & 0xff) << 16) | (rgb & 0xff00) | ((rgb >> 16) & 0xff);
}

inline QColor to_colour(std::uint32_t rgb) {
    return QColor::fromRgb(0xff000000u | swap_red_blue(rgb));
}

// Limits keep x + w inside the range of int whatever the caller passes; no picture is that large.
inline QRect to_qrect(port_rect r) {
    constexpr int far = 1 << 24;
    return {std::clamp(r.x, -far, far), std::clamp(r.y, -far, far), std::clamp(r.w, 0, far),
            std::clamp(r.h, 0, far)};
}

inline int scaled(int length, double ratio) {
    return static_cast<int>(std::lround(length * ratio));
}

} // namespace norva
