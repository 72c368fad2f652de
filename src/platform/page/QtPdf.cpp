#include "platform/page/QtPdf.h"

#include <exception>

#include <QIODevice>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include "platform/page/QtPagePainter.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr int kTwipsPerInch = 1440;

// Takes what the writer produces into the file. A failure must not unwind through the toolkit, so it waits here.
class FileDevice : public QIODevice {
 public:
    explicit FileDevice(FileReplacement& file) : file_(file) { open(QIODevice::WriteOnly); }

    bool Failed() const { return failure_ != nullptr; }
    void RethrowFailure() const {
        if (failure_) std::rethrow_exception(failure_);
    }
    bool isSequential() const override { return true; }

 protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 length) override {
        if (failure_) return -1;
        try {
            file_.Write(std::string_view(data, static_cast<std::size_t>(length)));
            return length;
        } catch (...) {
            failure_ = std::current_exception();
            return -1;
        }
    }

 private:
    FileReplacement& file_;
    std::exception_ptr failure_;
};

QPageLayout LayoutOf(const PaperSize& paper) {
    // The size of the standing sheet; lying ones are a matter of orientation, which printers want to know.
    const bool lying = paper.Width > paper.Height;
    const double width = lying ? paper.Height : paper.Width;
    const double height = lying ? paper.Width : paper.Height;
    const QPageSize size(QSizeF(width / 20, height / 20), QPageSize::Point, QString(), QPageSize::FuzzyMatch);
    return {size, lying ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF()};
}

}  // namespace

void WritePdf(const PageDocument& pages, FileReplacement& file) {
    FileDevice device(file);
    QPdfWriter writer(&device);
    writer.setPageLayout(LayoutOf(pages.Paper()));
    writer.setResolution(kTwipsPerInch);
    writer.setTitle(QString::fromStdString(ToUtf8(Trim(pages.Title))));
    writer.setCreator(QStringLiteral("Tallymar"));
    QPainter painter;
    if (!painter.begin(&writer)) {
        device.RethrowFailure();
        throw PlatformError(Failure::DeviceError, "The PDF could not be begun.");
    }
    const PagePainter drawing(pages, 1);
    for (int page = 1; page <= pages.PageCount() && !device.Failed(); ++page) {
        if (page > 1) writer.newPage();
        drawing.Paint(painter, page);
    }
    const bool ended = painter.end();
    device.RethrowFailure();
    if (!ended) throw PlatformError(Failure::DeviceError, "The PDF could not be finished.");
}

}  // namespace tallymar
