// The small streams of the fuzzer's corpus, printed by another's printer and by ours: as many sheets, and the same ink on them.

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QPainter>

#include <algorithm>
#include <filesystem>
#include <set>

#include "Judge.h"
#include "platform/page/QtFormPainter.h"
#include "platform/pcl/PclReader.h"
#include "platform/runtime/InputFile.h"

namespace tallymar::test {
namespace {

constexpr int kTolerance = 2;  // dots

QImage Painted(const PclDrawing& drawing, std::size_t page) {
    const PclPage& size = drawing.Pages[page];
    QImage image(size.Width / kPclUnitsPerDot, size.Height / kPclUnitsPerDot, QImage::Format_Grayscale8);
    image.fill(Qt::white);
    QPainter painter(&image);
    FormPainter(drawing, 300).Paint(painter, page);
    return image;
}

// The dots of one that are near none of the other's.
QRect Stray(const QImage& image, const QImage& other) {
    QRect where;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.constScanLine(y)[x] >= 128) continue;
            bool found = false;
            for (int dy = -kTolerance; dy <= kTolerance && !found; ++dy) {
                for (int dx = -kTolerance; dx <= kTolerance && !found; ++dx) {
                    found = other.rect().contains(x + dx, y + dy) && other.constScanLine(y + dy)[x + dx] < 160;
                }
            }
            if (!found) where |= QRect(x, y, 1, 1);
        }
    }
    return where;
}

TEST(SmallStreams, PrintLikeAnothersPrinter) {
    const Judge judge;
    if (!judge.IsThere()) GTEST_SKIP() << "tools/pcl-judge has built no PCL printer to compare with";
    // Greys are dots in the one and even in the other; the judge takes the first block of a character for all of it, shows signs
    // for control characters, and prints a character once more that the macro at the page's end has deleted.
    const std::set<std::string> differ = {"pattern.pcl", "soft-font-in-blocks.pcl", "transparent.pcl", "wrap-into-macro.pcl"};
    for (const auto& file : std::filesystem::directory_iterator(TALLYMAR_SOURCE_DIR "/tests/fuzz/corpus/Pcl")) {
        const std::string name = file.path().filename().string();
        if (differ.contains(name)) continue;
        SCOPED_TRACE(name);
        const std::string stream = ReadWholeFile(file.path());
        const Judge::Result printed = judge.Print(stream);
        const PclDrawing drawing = ReadPcl(stream, {});
        EXPECT_EQ(drawing.Pages.size(), printed.Sheets.size());
        for (std::size_t page = 0; page < std::min(drawing.Pages.size(), printed.Sheets.size()); ++page) {
            const QImage ours = Painted(drawing, page);
            QImage theirs = printed.Sheets[page];
            // It holds every sheet upright.
            if (ours.width() > ours.height()) theirs = theirs.transformed(QTransform().rotate(90));
            EXPECT_EQ(ours.size(), theirs.size());
            const QRect lacking = Stray(theirs, ours);
            const QRect surplus = Stray(ours, theirs);
            EXPECT_TRUE(lacking.isNull()) << "sheet " << page + 1 << ": only the judge draws " << lacking.width() << "x"
                                          << lacking.height() << " at " << lacking.x() << "," << lacking.y();
            EXPECT_TRUE(surplus.isNull()) << "sheet " << page + 1 << ": only we draw " << surplus.width() << "x"
                                          << surplus.height() << " at " << surplus.x() << "," << surplus.y();
        }
    }
}

}  // namespace
}  // namespace tallymar::test
