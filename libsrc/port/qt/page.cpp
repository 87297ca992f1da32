// One printed page, on a printer or in a PDF file, and pictures of windows.
#include "qt_port.h"

#include "draw_area.h"
#include "page.h"
#include "text.h"

#include <QDir>
#include <QPageLayout>
#include <QPageSize>
#include <QPixmap>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QSaveFile>

namespace norva {

// Beside the target and renamed over it when complete, so that a full disk leaves what was there before.
static bool write_file(const QString& name, const QByteArray& bytes) {
    QSaveFile file(name);
    // commit() alone does not notice that its last block failed to go out.
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() &&
           file.commit();
}

static QPageLayout letter(bool landscape) {
    QPageLayout layout(QPageSize(QPageSize::Letter),
                       landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF());
    layout.setMode(QPageLayout::FullPageMode);
    return layout;
}

port_page_result qt_port::page_begin(const port_page_job& job) {
    if (page_) return port_page_result::error;
    auto page = std::make_unique<printed_page>();
    page->file = to_qt(job.file);
    if (job.ask && !options_.unattended && !QPrinterInfo::availablePrinterNames().isEmpty()) {
        page->printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
        page->printer->setDocName(to_qt(job.title));
        page->printer->setPageLayout(letter(job.landscape));
        page->printer->setFullPage(true);
        inside inner(*this);
        QPrintDialog dialog(page->printer.get(), dialog_parent());
        if (dialog.exec() != QDialog::Accepted) return port_page_result::cancel;
        page->printer->setFullPage(true);
        if (page->printer->outputFormat() == QPrinter::PdfFormat) { // "print to file"
            // A relative name would land in the home folder.
            page->file = QDir::current().absoluteFilePath(page->printer->outputFileName());
            page->printer.reset();
        }
    }
    if (!page->printer) {
        if (page->file.isEmpty()) return port_page_result::error;
        page->bytes.open(QIODevice::WriteOnly);
        page->pdf = std::make_unique<QPdfWriter>(&page->bytes);
        page->pdf->setTitle(to_qt(job.title));
        page->pdf->setCreator(QStringLiteral("NORVA"));
        page->pdf->setResolution(600);
        page->pdf->setPageLayout(letter(job.landscape));
    }
    QPagedPaintDevice& device = page->device();
    if (!page->dc.begin(&device, true, device.logicalDpiX() / 150.0)) return port_page_result::error;
    page_ = std::move(page);
    return port_page_result::ok;
}

port_page_caps qt_port::page_caps() {
    if (!page_) return {};
    const QPagedPaintDevice& device = page_->device();
    const port_size paper{device.width(), device.height()};
    port_rect printable{0, 0, paper.w, paper.h};
    if (page_->printer) {
        QPageLayout layout = device.pageLayout();
        layout.setMode(QPageLayout::StandardMode);
        layout.setMargins(layout.minimumMargins());
        const QRect r = layout.paintRectPixels(device.logicalDpiX());
        printable = {r.x(), r.y(), r.width(), r.height()};
    }
    return {paper, static_cast<double>(device.logicalDpiX()), printable};
}

port_page_result qt_port::page_end() {
    if (!page_) return port_page_result::error;
    const std::unique_ptr<printed_page> page = std::move(page_);
    bool ok = page->dc.end();
    if (page->printer) {
        ok = ok && page->printer->printerState() != QPrinter::Error;
    } else {
        page->pdf.reset();
        ok = ok && write_file(page->file, page->bytes.data());
    }
    return ok ? port_page_result::ok : port_page_result::error;
}

canvas* qt_port::target(port_win dc) {
    if (dc == port_page) return page_ ? &page_->dc : nullptr;
    draw_area* area = area_of(dc);
    return area ? &area->dc : nullptr;
}

bool qt_port::picture(port_win win, const std::string& png_file) {
    const control* c = find(win, port_kind::top);
    if (!c || png_file.empty()) return false;
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    return c->widget->grab().save(&bytes, "PNG") && write_file(to_qt(png_file), bytes.data());
}

} // namespace norva
