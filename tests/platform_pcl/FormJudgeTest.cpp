// Every blank form, printed by another's printer and by ours: the same rules, shades and texts at the same places.

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QPainter>
#include <QRegion>

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "Judge.h"
#include "platform/page/QtFormPainter.h"
#include "platform/pcl/PclReader.h"
#include "platform/runtime/InputFile.h"

namespace tallymar::test {
namespace {

namespace fs = std::filesystem;

constexpr int kRuleTolerance = 1;  // dots
constexpr int kTextTolerance = 3;
constexpr int kDot = kPclUnitsPerDot;
const fs::path kShare = TALLYMAR_BINARY_DIR "/share/tallymar";

std::string SoftFontBytes() {
    std::string bytes;
    for (const auto& file : fs::directory_iterator(kShare / "fonts")) bytes += ReadWholeFile(file.path());
    return bytes;
}

// A row of figures at full width in every field of the page.
std::string FilledValues(const fs::path& fields) {
    constexpr std::size_t kRecord = 85;
    const std::string bytes = ReadWholeFile(fields);
    std::vector<std::string> lines;
    for (std::size_t at = kRecord; at + kRecord <= bytes.size(); at += kRecord) {
        const auto number = [&](std::size_t first) {
            return static_cast<std::size_t>(std::stoi(bytes.substr(at + first - 1, 3)));
        };
        const std::size_t line = number(50);
        const std::size_t column = number(53);
        const std::size_t width = number(56);
        if (lines.size() < line) lines.resize(line);
        std::string& text = lines[line - 1];
        if (text.size() < column + width) text.resize(column + width, ' ');
        text.replace(column, width, width, '8');
    }
    std::string values;
    for (const std::string& line : lines) values += line + "\r\n";
    return values + "\f";
}

QRect Box(const PclOp& op) {
    const auto dots = [](int units) { return (units + kDot / 2) / kDot; };
    return QRect(QPoint(dots(op.X), dots(op.Y)), QPoint(dots(op.X + op.Width) - 1, dots(op.Y + op.Height) - 1));
}

QRect Grown(const QRect& box, int by) {
    return box.adjusted(-by, -by, by, by);
}

bool IsInk(const QImage& image, int x, int y, bool white) {
    if (!image.rect().contains(x, y)) return false;
    return (image.constScanLine(y)[x] < 128) != white;
}

QRect InkBox(const QImage& image, const QRect& area, bool white, const QRegion& except = {}) {
    QRect box;
    const QRect inside = area & image.rect();
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x) {
            if (IsInk(image, x, y, white) && !except.contains(QPoint(x, y))) box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

std::string Told(const QRect& box) {
    std::ostringstream text;
    text << box.width() << "x" << box.height() << " at " << box.x() << "," << box.y();
    return text.str();
}

// Where the ink of each of the texts is, as we paint it at a dot a pixel.
std::vector<QRect> InkBoxes(const PclDrawing& drawing, const std::vector<PclOp>& texts) {
    PclDrawing apart = drawing;
    apart.Pages.clear();
    for (PclOp op : texts) {
        op.Grey = 0;
        apart.Pages.push_back({drawing.Pages[0].Width, drawing.Pages[0].Height, {op}});
    }
    const FormPainter ours(apart, 300);
    std::vector<QRect> boxes;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const PclOp& op = texts[i];
        const int size = static_cast<int>(drawing.Fonts[op.Font].Size * 300 / 72);
        const QRect area(op.X / kDot - size, op.Y / kDot - 2 * size, op.Width / kDot + 2 * size, 3 * size);
        QImage image(area.size(), QImage::Format_Grayscale8);
        image.fill(Qt::white);
        QPainter painter(&image);
        ours.Paint(painter, i, -area.topLeft());
        painter.end();
        boxes.push_back(InkBox(image, image.rect(), false).translated(area.topLeft()));
    }
    return boxes;
}

class Comparison {
 public:
    Comparison(const PclDrawing& drawing, const QImage& judge) : drawing_(drawing), judge_(judge) {
        const std::vector<PclOp>& ops = drawing.Pages[0].Ops;
        for (const PclOp& op : ops) {
            if (op.Op == PclOp::Kind::Rectangle && op.Grey == 0) rules_.push_back(op);
            if (op.Op == PclOp::Kind::Rectangle && op.Grey > 0 && op.Grey < 255) greys_.push_back(op);
            if (op.Op == PclOp::Kind::Text) texts_.push_back(op);
            if (op.Op == PclOp::Kind::Bitmap) ADD_FAILURE() << "a bitmap at " << op.X / kDot << "," << op.Y / kDot;
        }
        boxes_ = InkBoxes(drawing, texts_);
    }

    void CheckRules(bool sameFonts) const {
        for (const PclOp& op : rules_) {
            // Every dot of it is there, or its neighbour; a white text may lie on it.
            const QRect box = Box(op);
            if (!sameFonts && HasWhiteText(box)) continue;
            int missing = 0;
            for (int y = box.top(); y <= box.bottom(); ++y) {
                for (int x = box.left(); x <= box.right(); ++x) {
                    if (!HasInkNear(x, y) && !IsInWhiteText(x, y)) ++missing;
                }
            }
            EXPECT_EQ(missing, 0) << "of the rule " << Told(box) << " the judge does not draw so many dots";
        }
    }

    // What the judge draws beside texts and shades is one of our rules.
    void CheckNothingElse() const {
        std::vector<bool> ours(static_cast<std::size_t>(judge_.width()) * judge_.height());
        const auto mark = [&](const QRect& box) {
            const QRect inside = box & judge_.rect();
            for (int y = inside.top(); y <= inside.bottom(); ++y) {
                for (int x = inside.left(); x <= inside.right(); ++x) ours[Index(x, y)] = true;
            }
        };
        for (const PclOp& op : rules_) mark(Grown(Box(op), kRuleTolerance));
        for (const PclOp& op : greys_) mark(Grown(Box(op), kRuleTolerance));
        for (const QRect& box : boxes_) mark(Grown(box, kTextTolerance));
        int strange = 0;
        QRect where;
        for (int y = 0; y < judge_.height(); ++y) {
            for (int x = 0; x < judge_.width(); ++x) {
                if (IsInk(judge_, x, y, false) && !ours[Index(x, y)]) {
                    ++strange;
                    where |= QRect(x, y, 1, 1);
                }
            }
        }
        EXPECT_EQ(strange, 0) << "dots that only the judge draws, " << Told(where);
    }

    void CheckTexts() const {
        for (std::size_t i = 0; i < texts_.size(); ++i) {
            const PclOp& op = texts_[i];
            QRegion others;
            const bool white = op.Grey == 255;
            for (std::size_t k = 0; k < texts_.size(); ++k) {
                if (k != i && Grown(boxes_[k], kTextTolerance + 1).intersects(Grown(boxes_[i], kTextTolerance + 1))) {
                    others += Grown(boxes_[k], kTextTolerance);
                }
            }
            const QRect area = Grown(boxes_[i], kTextTolerance + 1);
            for (const PclOp& rule : rules_) {
                if (!white && Box(rule).intersects(area)) others += Grown(Box(rule), kRuleTolerance);
            }
            others -= boxes_[i];
            for (const PclOp& grey : greys_) EXPECT_FALSE(Box(grey).intersects(boxes_[i])) << "a shade under a text";
            const QRect drawn = InkBox(judge_, white ? boxes_[i] : area, white, others);
            const auto differ = [](int a, int b) { return std::abs(a - b) > kTextTolerance; };
            EXPECT_FALSE(differ(drawn.left(), boxes_[i].left()) || differ(drawn.right(), boxes_[i].right()) ||
                         differ(drawn.top(), boxes_[i].top()) || differ(drawn.bottom(), boxes_[i].bottom()))
                << "\"" << drawing_.Text(op) << "\": ours " << Told(boxes_[i]) << ", the judge's " << Told(drawn);
        }
    }

    // As dark, and as far as to a pattern's width from every edge.
    void CheckShades() const {
        constexpr int kPattern = 16;
        for (const PclOp& op : greys_) {
            const QRect box = Box(op);
            int ink = 0;
            int dots = 0;
            for (int y = box.top() + 2; y < box.bottom() - 1; ++y) {
                for (int x = box.left() + 2; x < box.right() - 1; ++x, ++dots) ink += IsInk(judge_, x, y, false);
            }
            EXPECT_NEAR(1.0 * ink / std::max(dots, 1), 1 - op.Grey / 255.0, 0.05) << "a shade " << Told(box);
            const QRect drawn = InkBox(judge_, box, false);
            EXPECT_LE(std::max({drawn.left() - box.left(), box.right() - drawn.right(), drawn.top() - box.top(),
                                box.bottom() - drawn.bottom()}),
                      kPattern)
                << "a shade " << Told(box) << ", the judge's " << Told(drawn);
        }
    }

 private:
    std::size_t Index(int x, int y) const { return static_cast<std::size_t>(y) * judge_.width() + x; }
    bool HasInkNear(int x, int y) const {
        for (int dy = -kRuleTolerance; dy <= kRuleTolerance; ++dy) {
            for (int dx = -kRuleTolerance; dx <= kRuleTolerance; ++dx) {
                if (IsInk(judge_, x + dx, y + dy, false)) return true;
            }
        }
        return false;
    }
    bool HasWhiteText(const QRect& box) const {
        for (std::size_t i = 0; i < texts_.size(); ++i) {
            if (texts_[i].Grey == 255 && box.intersects(boxes_[i])) return true;
        }
        return false;
    }
    bool IsInWhiteText(int x, int y) const {
        for (std::size_t i = 0; i < texts_.size(); ++i) {
            if (texts_[i].Grey == 255 && Grown(boxes_[i], kTextTolerance).contains(x, y)) return true;
        }
        return false;
    }

    const PclDrawing& drawing_;
    const QImage& judge_;
    std::vector<PclOp> rules_;
    std::vector<PclOp> greys_;
    std::vector<PclOp> texts_;
    std::vector<QRect> boxes_;  // the ink of the texts, as we paint them
};

QImage PaintedAlone(const PclDrawing& drawing, const std::vector<PclOp>& ops) {
    PclDrawing apart = drawing;
    apart.Pages = {{drawing.Pages[0].Width, drawing.Pages[0].Height, ops}};
    QImage image(drawing.Pages[0].Width / kDot, drawing.Pages[0].Height / kDot, QImage::Format_Grayscale8);
    image.fill(Qt::white);
    QPainter painter(&image);
    FormPainter(apart, 300).Paint(painter, 0);
    return image;
}

// Figures at full width in every field put no ink on a rule of the blank.
void CheckFiguresStandClear(const std::string& blank, const std::string& values) {
    const PclDrawing drawing = ReadPcl(blank + values, {});
    const std::vector<PclOp>& ops = drawing.Pages.at(0).Ops;
    // What the values add stands behind the blank's own.
    const auto own = ops.begin() + static_cast<std::ptrdiff_t>(ReadPcl(blank, {}).Pages.at(0).Ops.size());
    ASSERT_NE(own, ops.end());
    std::vector<PclOp> rules;
    std::copy_if(ops.begin(), own, std::back_inserter(rules),
                 [](const PclOp& op) { return op.Op == PclOp::Kind::Rectangle && op.Grey == 0; });
    const QImage ruled = PaintedAlone(drawing, rules);
    const QImage figures = PaintedAlone(drawing, {own, ops.end()});
    ASSERT_FALSE(InkBox(ruled, ruled.rect(), false).isEmpty());
    ASSERT_FALSE(InkBox(figures, figures.rect(), false).isEmpty());
    int dots = 0;
    QRect where;
    for (int y = 0; y < ruled.height(); ++y) {
        for (int x = 0; x < ruled.width(); ++x) {
            if (!IsInk(ruled, x, y, false) || !IsInk(figures, x, y, false)) continue;
            ++dots;
            where |= QRect(x, y, 1, 1);
        }
    }
    EXPECT_EQ(dots, 0) << "dots of figures on rules, " << Told(where);
}

void Compare(const Judge& judge, const std::string& fontBytes, const std::string& page) {
    const Judge::Result printed = judge.Print(fontBytes + page);
    EXPECT_EQ(printed.Complaints, "");
    ASSERT_EQ(printed.Sheets.size(), 1U);
    SoftFonts fonts;
    fonts.Download(fontBytes);
    const PclDrawing drawing = ReadPcl(page, fonts);
    ASSERT_EQ(drawing.Pages.size(), 1U);
    EXPECT_EQ(drawing.SkippedCommands, 0);
    EXPECT_EQ(drawing.SkippedCharacters, 0);
    EXPECT_FALSE(drawing.CutShort);
    const bool sameFonts = !fontBytes.empty();
    const Comparison comparison(drawing, printed.Sheets[0]);
    comparison.CheckRules(sameFonts);
    comparison.CheckShades();
    // Without them each printer takes a typeface of its own.
    if (!sameFonts) return;
    comparison.CheckNothingElse();
    comparison.CheckTexts();
}

TEST(FormJudge, DrawsEveryFormWhereWeDo) {
    const Judge judge;
    if (!judge.IsThere()) GTEST_SKIP() << "tools/pcl-judge has built no PCL printer to compare with";
    const std::string fonts = SoftFontBytes();
    int forms = 0;
    for (const auto& file : fs::directory_iterator(kShare / "Laser")) {
        if (file.path().extension() != ".HP") continue;
        ++forms;
        const std::string blank = ReadWholeFile(file.path());
        fs::path fields = file.path();
        const std::string filled = blank + FilledValues(fields.replace_extension(".FPF"));
        const std::string name = file.path().filename().string();
        for (const auto& [how, fontBytes, page] : {std::tuple{"alone", &fonts, &blank}, std::tuple{"filled", &fonts, &filled}}) {
            SCOPED_TRACE(name + ", " + how);
            Compare(judge, *fontBytes, *page);
        }
        CheckFiguresStandClear(blank, FilledValues(fields));
        SCOPED_TRACE(name + ", filled, without the soft fonts");
        Compare(judge, {}, filled);
    }
    EXPECT_EQ(forms, 16);
}

}  // namespace
}  // namespace tallymar::test
