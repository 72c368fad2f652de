#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include <gtest/gtest.h>

#include "SampleReport.h"
#include "platform/page/frmPreview.h"
#include "platform/page/frmPreviewPages.h"
#include "support/ScriptedPrompts.h"
#include "support/TempFolder.h"

namespace tallymar::test {
namespace {

class Preview : public testing::Test {
 protected:
    void Show(int pages) {
        window_ = std::make_unique<frmPreview>(SampleReport(pages), nullptr, &prompts_);
        window_->resize(1000, 700);
        window_->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
        pages_ = window_->findChild<frmPreviewPages*>();
    }
    template <typename Widget>
    Widget* Find(const char* name) {
        return window_->findChild<Widget*>(QString::fromLatin1(name));
    }
    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : window_.get(), Qt::Key(key), modifiers);
    }
    void Type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), QString::fromLatin1(text)); }

    ScriptedPrompts prompts_;
    std::unique_ptr<frmPreview> window_;
    frmPreviewPages* pages_ = nullptr;
};

TEST_F(Preview, GoesThroughThePagesByKeys) {
    Show(5);
    EXPECT_EQ(pages_->CurrentPage(), 1);
    Press(Qt::Key_PageDown);
    EXPECT_EQ(pages_->CurrentPage(), 2);
    EXPECT_EQ(Find<QSpinBox>("PageNumber")->value(), 2);
    EXPECT_EQ(Find<QListView>("PageList")->currentIndex().row(), 1);
    Press(Qt::Key_End);
    EXPECT_EQ(pages_->CurrentPage(), 5);
    EXPECT_FALSE(Find<QPushButton>("cmdNext")->isEnabled());
    Press(Qt::Key_PageDown);
    EXPECT_EQ(pages_->CurrentPage(), 5);
    Press(Qt::Key_PageUp);
    EXPECT_EQ(pages_->CurrentPage(), 4);
    Press(Qt::Key_Home);
    EXPECT_EQ(pages_->CurrentPage(), 1);
    Press(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(pages_->CurrentPage(), 2);
    Press(Qt::Key_G, Qt::ControlModifier);
    Type("4");
    Press(Qt::Key_Return);
    EXPECT_EQ(pages_->CurrentPage(), 4);
    // On a page larger than the window a step first shows the rest of it.
    pages_->SetZoom(2);
    pages_->GoTo(1);
    pages_->StepOn();
    EXPECT_EQ(pages_->CurrentPage(), 1);
    for (int i = 0; i < 5 && pages_->CurrentPage() == 1; ++i) pages_->StepOn();
    EXPECT_EQ(pages_->CurrentPage(), 2);
}

TEST_F(Preview, ZoomKeepsThePage) {
    Show(30);
    pages_->GoTo(17);
    Press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(pages_->Zoom(), 1);
    EXPECT_EQ(pages_->CurrentPage(), 17);
    EXPECT_EQ(Find<QComboBox>("Zoom")->currentText(), QStringLiteral("100%"));
    Press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(pages_->Zoom(), 1.25);
    Press(Qt::Key_Minus, Qt::ControlModifier);
    Press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(pages_->Zoom(), 0.9);
    Press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(pages_->FitMode(), frmPreviewPages::Fit::Page);
    EXPECT_EQ(pages_->CurrentPage(), 17);
    EXPECT_EQ(Find<QComboBox>("Zoom")->currentIndex(), 0);
}

TEST_F(Preview, SearchMarksAndGoesRound) {
    Show(3);
    Press(Qt::Key_F, Qt::ControlModifier);
    Type("000045");
    Press(Qt::Key_Return);
    EXPECT_EQ(pages_->CurrentPage(), 2);
    EXPECT_EQ(Find<QLabel>("SearchResult")->text(), QStringLiteral("1 of 1"));
    Press(Qt::Key_F, Qt::ControlModifier);
    Type("page");
    Press(Qt::Key_F3);
    EXPECT_EQ(pages_->CurrentPage(), 2);  // from where the user looks
    Press(Qt::Key_F3);
    EXPECT_EQ(pages_->CurrentPage(), 3);
    Press(Qt::Key_F3);
    EXPECT_EQ(pages_->CurrentPage(), 1);
    Press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(pages_->CurrentPage(), 3);
    EXPECT_EQ(Find<QLabel>("SearchResult")->text(), QStringLiteral("3 of 3"));
    Press(Qt::Key_F, Qt::ControlModifier);
    Type("nowhere");
    Press(Qt::Key_Return);
    EXPECT_EQ(Find<QLabel>("SearchResult")->text(), QStringLiteral("Not found"));
}

// The picture has ink where the model has text, and the mark of the hit around it.
TEST_F(Preview, ShowsTheText) {
    Show(1);
    pages_->SetZoom(2);
    Press(Qt::Key_F, Qt::ControlModifier);
    Type("000020");
    Press(Qt::Key_Return);
    const QImage picture = pages_->viewport()->grab().toImage();
    int ink = 0;
    int marked = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor color = picture.pixelColor(x, y);
            if (color.lightness() < 60) ++ink;
            if (color.red() > 220 && color.green() > 120 && color.green() < 220 && color.blue() < 120) ++marked;
        }
    }
    EXPECT_GT(ink, 2000);
    EXPECT_GT(marked, 200);
}

TEST_F(Preview, SavesUnderTheChosenName) {
    const TempFolder folder;
    Show(2);
    prompts_.SaveFiles = {folder / "a.txt", std::nullopt, folder / "b", folder / "c"};
    std::ofstream(folder / "c.pdf") << "earlier";
    prompts_.YesNo = {false};
    for (int i = 0; i < 4; ++i) Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(ReadAll(folder / "a.txt").find("Page 1") != std::string::npos, true);
    EXPECT_EQ(ReadAll(folder / "b.pdf").substr(0, 5), "%PDF-");
    EXPECT_EQ(ReadAll(folder / "c.pdf"), "earlier");
    EXPECT_EQ(prompts_.Dialogs.at(0).Filters.size(), 4u);
}

TEST_F(Preview, EscapeCloses) {
    Show(1);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(window_->isVisible());
}

}  // namespace
}  // namespace tallymar::test
