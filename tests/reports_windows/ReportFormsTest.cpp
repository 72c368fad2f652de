#include <functional>

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "platform/controls/CSChkList.h"
#include "platform/controls/CSOptList.h"
#include "platform/page/frmPreview.h"
#include "reports/frmLabelOptions.h"
#include "reports/frmReportOptions.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

// Answers the message boxes that come up, in their order, and records what they said.
class Answers {
 public:
    explicit Answers(std::vector<QMessageBox::StandardButton> answers) : answers_(std::move(answers)) {
        QObject::connect(&timer_, &QTimer::timeout, [this] { Answer(); });
        timer_.start(5);
    }

    std::vector<QString> Texts;
    std::vector<QString> Titles;
    std::vector<QString> DefaultButtons;

 private:
    void Answer() {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr) return;
        Texts.push_back(box->text());
        Titles.push_back(box->windowTitle());
        DefaultButtons.push_back(box->defaultButton() == nullptr ? QString() : box->defaultButton()->text().remove(u'&'));
        const bool expected = Texts.size() <= answers_.size();
        box->button(expected ? answers_[Texts.size() - 1] : box->standardButton(box->buttons().last()))->click();
    }

    std::vector<QMessageBox::StandardButton> answers_;
    QTimer timer_;
};

class ReportForms : public testing::Test {
 protected:
    ReportForms() : engine_(company_.Folder.Path()) {
        company_.SetYearEnds(Date::FromYmd(2003, 12, 31));
        AssetRecord asset = test::Machine("A1", Date::FromYmd(2002, 3, 1), 1000);
        asset.CurrDepr[1] = Units(320);
        company_.Session.AddAssetRecord(asset);
    }
    ~ReportForms() override {
        for (frmPreview* preview : OpenPreviews()) delete preview;
    }

    static std::vector<frmPreview*> OpenPreviews() {
        std::vector<frmPreview*> previews;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* preview = qobject_cast<frmPreview*>(window)) previews.push_back(preview);
        }
        return previews;
    }
    static std::size_t Previews() { return OpenPreviews().size(); }

    AssetRecord Stored() {
        company_.Session.AssetsRecordset().Seek("A1");
        AssetRecord record;
        company_.Session.ReadAssetRecord(record);
        return record;
    }

    test::TestCompany company_;
    ADepre engine_;
};

// A form that is open and looked at by the names of its controls.
template <typename Form>
struct Opened {
    explicit Opened(Form& opened) : Window(opened) {
        Window.show();
        Window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Window));
    }
    template <typename Control>
    Control* In(const char* name) {
        auto* control = Window.template findChild<Control*>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    QString Label(const char* name) { return In<QLabel>(name)->text(); }
    void Ok() { In<QPushButton>("cmdOK")->click(); }

    Form& Window;
};

TEST_F(ReportForms, OpenWithTheDefaultsOfTheirReport) {
    for (int report = 0; report < kReports; ++report) {
        frmReportOptions window(company_.Session, engine_);
        window.SetWhichReport(report);
        Opened form(window);
        EXPECT_EQ(window.WhichReport(), report);
        EXPECT_EQ(form.In<CSChkList>("chklMiscellaneous")->Value(), report == 6 ? 8 : 16);
        EXPECT_EQ(form.In<CSChkList>("chklPrintPY")->Value(), 0);
        EXPECT_EQ(form.In<CSOptList>("optlBook")->Index(), report == 9 ? 3 : 0);
        EXPECT_EQ(form.In<CSOptList>("optlSequence")->Index(), 0);
        EXPECT_EQ(form.In<CSOptList>("optlOutput")->Index(), 0);
        EXPECT_EQ(form.Label("lblFilter"), report == 5   ? "Assets Sold"
                                           : report == 6 ? "Stocks Purchased"
                                           : report == 9 ? "Compare Federal"
                                                         : "Assets Placed in Service");
        EXPECT_TRUE(form.In<QLineEdit>("sidtYStart")->text().isEmpty());
        EXPECT_FALSE(form.In<QLineEdit>("sidtReportDate")->text().isEmpty());
    }
}

TEST_F(ReportForms, TheComparisonIsNamedAfterItsBooks) {
    frmReportOptions window(company_.Session, engine_);
    window.SetWhichReport(kComparisonReport);
    Opened form(window);
    EXPECT_EQ(form.Label("lblReportName"), " Comparison Report - Federal to AMT ");
    form.In<QRadioButton>("optlBook(1)")->click();
    EXPECT_EQ(form.Label("lblReportName"), " Comparison Report - Federal to State ");
    // Among the books the arrows choose.
    form.In<QRadioButton>("optlBook(1)")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    EXPECT_EQ(form.Label("lblReportName"), " Comparison Report - Federal to Book ");
}

TEST_F(ReportForms, UpdateDatabaseShowsItsCaution) {
    frmReportOptions window(company_.Session, engine_);
    window.SetWhichReport(kPostReport);
    Opened form(window);
    form.In<CSChkList>("chklMiscellaneous")->SetValue(kUpdateDatabase);
    EXPECT_EQ(form.Label("TextMessage"), "CAUTION: Database will be posted. BACKUP Database first.");
    form.In<CSChkList>("chklMiscellaneous")->SetValue(0);
    EXPECT_EQ(form.Label("TextMessage"), "");
}

TEST_F(ReportForms, CloseYearIsReadyToPost) {
    frmReportOptions window(company_.Session, engine_);
    window.ReadyToCloseYear();
    Opened form(window);
    EXPECT_EQ(window.WhichReport(), kPostReport);
    EXPECT_EQ(form.In<CSChkList>("chklMiscellaneous")->Value(), kUpdateDatabase);
    EXPECT_EQ(form.In<CSOptList>("optlOutput")->Index(), 1);
    EXPECT_EQ(form.Label("TextMessage"), "CAUTION: Database will be posted. BACKUP Database 1st");
}

TEST_F(ReportForms, AFilterOfOneDateIsRefusedAndTheFormStays) {
    frmReportOptions window(company_.Session, engine_);
    window.SetWhichReport(kFixedAssetReport);
    Opened form(window);
    form.In<QLineEdit>("sidtYStart")->setText("1/1/2002");
    {
        Answers answers({QMessageBox::Ok});
        form.Ok();
        ASSERT_EQ(answers.Texts.size(), 1U);
        EXPECT_EQ(answers.Texts[0], "You must enter Both dates or leave both dates blank");
    }
    EXPECT_TRUE(window.isVisible());
    form.In<QLineEdit>("sidtYEnd")->setText("12/31/2002");
    form.Ok();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(Previews(), 1U);
    EXPECT_EQ(company_.Session.AssetsRecordset().Index(), "AssetNum");
}

TEST_F(ReportForms, PropertyGroupsAskAndCancelReturns) {
    frmReportOptions window(company_.Session, engine_);
    window.SetWhichReport(kFixedAssetReport);
    Opened form(window);
    form.In<CSOptList>("optlSequence")->SetIndex(5);
    {
        Answers answers({QMessageBox::Cancel});
        form.Ok();
        EXPECT_EQ(answers.Texts.at(0), "Print subtotals by Group and Year ");
        EXPECT_EQ(answers.Titles.at(0), "Subtotals by Group or Group & Year");
    }
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(Previews(), 0U);
    Answers answers({QMessageBox::Yes});
    form.Ok();
    EXPECT_EQ(Previews(), 1U);
}

TEST_F(ReportForms, PostingAsksWithNoAsItsDefault) {
    frmReportOptions window(company_.Session, engine_);
    window.ReadyToCloseYear();
    Opened form(window);
    form.In<CSOptList>("optlOutput")->SetIndex(0);
    {
        Answers answers({QMessageBox::No});
        form.Ok();
        EXPECT_EQ(answers.Texts.at(0), "WARNING: Database will be Updated. Do you wish to Continue ?");
        EXPECT_EQ(answers.Titles.at(0).trimmed(), "Confirm (See Message Below)");
        EXPECT_EQ(answers.DefaultButtons.at(0), "No");
    }
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(form.Label("TextMessage"), "CAUTION: Database will be posted. BACKUP Database first");
    EXPECT_EQ(Stored().PrevDepr[1], CurrencyAmount());
    Answers answers({QMessageBox::Yes});
    form.Ok();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(Previews(), 1U);
    EXPECT_EQ(Stored().PrevDepr[1], Units(320));
    EXPECT_EQ(company_.Session.FiscalYearEnd(1), Date::FromYmd(2004, 12, 31));
}

TEST_F(ReportForms, LabelsComeFromTheirOwnForm) {
    frmLabelOptions window(company_.Session);
    Opened form(window);
    EXPECT_EQ(form.In<QRadioButton>("optlType(3)")->text(), "5662 - 10 pitch");
    form.Ok();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(Previews(), 1U);
}

}  // namespace
}  // namespace tallymar
