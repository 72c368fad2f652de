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
    EXPECT_DOUBLE_EQ(pages_->Zoom(), 1);
    pages_->SetFit(frmPreviewPages::Fit::Page);
    const std::tuple<Qt::Key, Qt::KeyboardModifiers, int> keys[] = {
        {Qt::Key_PageDown, Qt::NoModifier, 2}, {Qt::Key_End, Qt::NoModifier, 5},  {Qt::Key_PageDown, Qt::NoModifier, 5},
        {Qt::Key_PageUp, Qt::NoModifier, 4},   {Qt::Key_Home, Qt::NoModifier, 1}, {Qt::Key_PageDown, Qt::ControlModifier, 2}};
    for (const auto& [key, modifiers, page] : keys) {
        Press(key, modifiers);
        EXPECT_EQ(pages_->CurrentPage(), page);
        EXPECT_EQ(Find<QSpinBox>("PageNumber")->value(), page);
        EXPECT_EQ(Find<QListView>("PageList")->currentIndex().row(), page - 1);
        EXPECT_EQ(Find<QPushButton>("cmdNext")->isEnabled(), page < 5);
    }
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
    for (const int page : {2, 3, 1}) {  // from where the user looks, and round
        Press(Qt::Key_F3);
        EXPECT_EQ(pages_->CurrentPage(), page);
    }
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

TEST_F(Preview, SavesUnderTheChosenNameAndClosesOnEscape) {
    const TempFolder folder;
    Show(2);
    prompts_.SaveFiles = {folder / "a.txt", std::nullopt, folder / "b", folder / "c"};
    WriteAll(folder / "c.pdf", "earlier");
    prompts_.YesNo = {false};
    for (int i = 0; i < 4; ++i) Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(ReadAll(folder / "a.txt").find("Page 1") != std::string::npos, true);
    EXPECT_EQ(ReadAll(folder / "b.pdf").substr(0, 5), "%PDF-");
    EXPECT_EQ(ReadAll(folder / "c.pdf"), "earlier");
    EXPECT_EQ(prompts_.Dialogs.at(0).Filters.size(), 4u);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(window_->isVisible());
}

}  // namespace
}  // namespace tallymar::test
