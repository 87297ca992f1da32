#pragma once
// The page between page_begin and page_end.

#include "canvas.h"

#include <QBuffer>
#include <QPdfWriter>
#include <QPrinter>
#include <QString>

#include <memory>

namespace norva {

// The painter in dc must end before the device it draws on: members go in reverse order.
struct printed_page {
    QString file; // of a PDF
    QBuffer bytes;
    std::unique_ptr<QPdfWriter> pdf;
    std::unique_ptr<QPrinter> printer; // one of the two
    canvas dc;

    QPagedPaintDevice& device() const {
        return printer ? static_cast<QPagedPaintDevice&>(*printer) : static_cast<QPagedPaintDevice&>(*pdf);
    }
};

} // namespace norva
