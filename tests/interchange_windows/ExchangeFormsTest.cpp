#include <algorithm>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

#include <gtest/gtest.h>

#include "interchange/frmExportOptions.h"
#include "interchange/frmImportOptions.h"
#include "interchange/frmUserImport.h"
#include "support/Files.h"
#include "support/Keyboard.h"
#include "support/TestCompany.h"

namespace tallymar {
namespace {

using test::Keyboard;

class ExchangeForms : public testing::Test {
 protected:
    static QWidget* Window() { return QApplication::activeModalWidget(); }
    static QString Line() { return Window()->findChild<QLabel*>("TextMessage")->text(); }
    static QString TextOf(const char* field) { return Window()->findChild<QLineEdit*>(field)->text(); }
    static QString Count(int which) { return Window()->findChild<QLabel*>(QString("lblCount(%1)").arg(which))->text(); }

    void TabTo(const char* field) {
        for (int presses = 0; Keyboard::Name() != field && presses < 100; ++presses) keys_.Press(Qt::Key_Tab);
        ASSERT_EQ(Keyboard::Name(), field);
    }
    void Fill(const char* field, const char* text) {
        TabTo(field);
        keys_.Type(text);
    }
    // Presses the command, and gives it its file.
    void Press(const char* command, const std::filesystem::path& file = {}) {
        TabTo(command);
        if (!file.empty()) Keyboard::WhenAskedForFile(file);
        keys_.Press(Qt::Key_Return);
    }
    std::filesystem::path File(const char* contents) {
        test::WriteAll(company_.Folder / "aascii.txt", contents);
        return company_.Folder / "aascii.txt";
    }
    std::int64_t Assets() { return company_.Session.AssetCount(); }

    test::TestCompany company_;
    Keyboard keys_;
};

TEST_F(ExchangeForms, AnImportIsDefinedCheckedAndRunByKeyboard) {
    frmUserImport form(company_.Session, "State", false);
    Keyboard::WhenModal("frmUserImport", [&] {
        EXPECT_TRUE(Line().startsWith("An error has occurred during import of Definition File - ")) << Line().toStdString();
        keys_.Fill("silgFields", "3");
        EXPECT_EQ(Line(), "Enter the number of fields in each record");
        keys_.Fill("silgEdit(1)", "1");
        EXPECT_EQ(Line(), "Enter Import File definition field number");
        keys_.Fill("silgEdit(6)", "41");
        QString said;
        Keyboard::WhenMessage(said);
        keys_.Press(Qt::Key_Down);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !said.isEmpty(); }));
        EXPECT_EQ(said, "Value must be between 1 and 40 or blank");
        EXPECT_EQ(TextOf("silgEdit(6)"), "41");
        keys_.Type("3");
        EXPECT_EQ(Keyboard::Name(), "silgEdit(6)");
        keys_.Fill("silgEdit(20)", "2");
        Press("cmdSave");
        EXPECT_EQ(Line(), "ImpDef1.Dat has been saved");
        const std::string saved = test::ReadAll(company_.Session.Paths().Folder() / "ImpDef1.Dat");
        EXPECT_EQ(saved.substr(0, 19), "3\r\n1\r\n\r\n\r\n\r\n\r\n3\r\n\r\n");
        EXPECT_EQ(std::count(saved.begin(), saved.end(), '\n'), 41);

        // The check lists what would fail and writes nothing; nor does the import, all or nothing.
        const auto bad = File("A1,1000,1500\nA2,2000,1234567890123\n");
        int listed = 0;
        Keyboard::WhenModal("frmImportCheck", [&] {
            const auto* list = Window()->findChild<QTableWidget*>("lstRemarks");
            listed = list->rowCount();
            EXPECT_EQ(list->item(listed - 1, 0)->text() + list->item(listed - 1, 2)->text(), "2Fails");
            keys_.Press(Qt::Key_Escape);
        });
        Press("cmdCheck", bad);
        EXPECT_EQ(listed, 2);
        TabTo("chkAllOrNothing");
        keys_.Press(Qt::Key_Space);
        said.clear();
        Keyboard::WhenMessage(said);
        Press("cmdImport", bad);
        EXPECT_TRUE(said.contains("record 2, item 3")) << said.toStdString();
        EXPECT_EQ(Line(), "An error 3163 has occurred during import");
        EXPECT_EQ(Assets(), 0);

        Press("cmdImport", File("A1,1000,1500\nA2,2000,1500\n"));
        EXPECT_EQ(Line(), "DONE:  Assets Added = 2    Assets Updated = 0");
        keys_.Press(Qt::Key_Tab);
        EXPECT_EQ(Line(), "DONE:  Assets Added = 2    Assets Updated = 0") << "it stays";
        company_.Session.AssetsRecordset().Seek("A2");
        EXPECT_EQ(company_.Session.AssetsRecordset().Get("Basis(2)").Currency(), Units(2000));
        keys_.Press(Qt::Key_Escape);
    });
    form.ShowModal();
    EXPECT_EQ(Assets(), 2);
}

TEST_F(ExchangeForms, AnExportNeedsAYearEndAndCountsItsFields) {
    company_.Session.AddAssetRecord(test::Machine("A1", Date::FromYmd(2003, 5, 1), 1000));
    frmExportOptions form(company_.Session);
    Keyboard::WhenModal("frmExportOptions", [&] {
        const auto* cancel = Window()->findChild<QPushButton*>("cmdCancel");
        QString said;
        Keyboard::WhenMessage(said);
        Press("cmdOK");
        EXPECT_EQ(said, "Invalid fiscal year-end date for selected book\nPlease use company setup options");
        EXPECT_EQ(cancel->text(), "Cancel");
        company_.SetYearEnds(Date::FromYmd(2003, 12, 31));
        Press("cmdOK", company_.Folder / "out.txt");
        EXPECT_EQ((Count(1) + Count(2) + Count(3)).simplified().remove(u' '), "101");
        EXPECT_EQ(cancel->text(), "&Close");
        EXPECT_EQ(test::ReadAll(company_.Folder / "out.txt").substr(0, 7), "A1    ,");

        Keyboard::WhenModal("frmUserExport", [&] {
            Fill("silgEdit(1)", "1");
            Fill("silgEdit(8)", "3");
            Press("cmdSave");
            EXPECT_EQ(Line(), "ERROR: Field number 2 missing");
            EXPECT_EQ(TextOf("silgFields"), "3");
            Fill("silgFields", "2");
            Fill("silgEdit(8)", "2");
            Press("cmdExport", company_.Folder / "own.txt");
            EXPECT_EQ(Line().simplified(), "Total Assets = 1 Assets exported = 1");
            // What has been changed since it was saved is offered to be saved.
            Keyboard::WhenMessage(said);
            keys_.Press(Qt::Key_Escape);
        });
        Press("cmdUserExport");
        keys_.Press(Qt::Key_Escape);
    });
    form.ShowModal();
    EXPECT_EQ(test::ReadAll(company_.Folder / "own.txt"), "A1,5/1/2003\r\n");
}

TEST_F(ExchangeForms, TheOptionsGoToTheRunAndAMissingTwinIsTold) {
    company_.Session.AddAssetRecord(test::Machine("A1", Date::FromYmd(2003, 5, 1), 1000));
    test::WriteAll(company_.Folder / "assetctl.txt", "Ladders Ltd\r\n");
    std::string record = "A1";
    for (int item = 2; item <= 40; ++item) record += item == 4 ? ",Lathe" : ",";
    frmImportOptions form(company_.Session);
    Keyboard::WhenModal("frmImportOptions", [&] {
        EXPECT_EQ(Keyboard::Name(), "optlBook(1)");
        keys_.Press(Qt::Key_Up);
        QString said;
        Keyboard::WhenMessage(said);
        Press("cmdOK", company_.Folder / "assetctl.txt");
        EXPECT_TRUE(said.startsWith("Asset import file not found for this client:\n")) << said.toStdString();
        EXPECT_EQ(Window()->findChild<QPushButton*>("cmdCancel")->text(), "&Close");
        TabTo("optlBook(0)");
        keys_.Press(Qt::Key_Down);
        TabTo("optlDuplicate(0)");
        keys_.Press(Qt::Key_Down);
        Press("cmdOK", File((record + "\n").c_str()));
        EXPECT_EQ((Count(1) + Count(2) + Count(3)).simplified().remove(u' '), "001");
        keys_.Press(Qt::Key_Escape);
    });
    form.ShowModal();
    EXPECT_EQ(company_.Session.CompanyName(), "Ladders Ltd");
    company_.Session.AssetsRecordset().Seek("DUP001");
    EXPECT_EQ(company_.Session.AssetsRecordset().Get("Description").Text(), "Lathe");
}

TEST_F(ExchangeForms, ASpreadsheetIsPairedCheckedAndImportedByKeyboard) {
    const auto choice = [](int heading) {
        return Window()->findChild<QComboBox*>(QString("cboField(%1)").arg(heading))->currentText().toStdString();
    };
    const std::filesystem::path file = company_.Folder / "in.csv";
    test::WriteAll(file, "Asset No.,Colour,Cost\nA1,Mill,1250.5\nA2,Mill,much\n");
    frmImportOptions form(company_.Session);
    Keyboard::WhenModal("frmImportOptions", [&] {
        Keyboard::WhenModal("frmSpreadsheetImport", [&] {
            EXPECT_EQ(choice(1) + "|" + choice(2) + "|" + choice(3), "Asset Number|(not imported)|Federal Asset Cost");
            TabTo("cboField(2)");
            EXPECT_EQ(Line(), "Choose the field that this column of the file holds");
            keys_.Type("Division");
            // A table with a value that fails is not taken: its list has nothing to press.
            bool isOffered = true;
            Keyboard::WhenModal("frmImportCheck", [&] {
                isOffered = Window()->findChild<QPushButton*>("cmdImport")->isEnabled();
                EXPECT_EQ(Window()->findChild<QTableWidget*>("lstRemarks")->item(0, 1)->text(), "Basis(1)");
                keys_.Press(Qt::Key_Escape);
            });
            keys_.Alt(Qt::Key_I);
            EXPECT_FALSE(isOffered);
            EXPECT_EQ(Assets(), 0);

            test::WriteAll(file, "Asset No.,Colour,Cost\nA1,Mill,1250.5\nA2,Mill,7\n");
            Keyboard::WhenModal("frmImportCheck", [&] { Press("cmdImport"); });
            keys_.Alt(Qt::Key_I);
            EXPECT_EQ(Line(), "The file has been imported");
            EXPECT_EQ((Count(1) + Count(2) + Count(3)).simplified().remove(u' '), "020");
            keys_.Alt(Qt::Key_G);
            EXPECT_EQ(choice(2), "(not imported)");
            keys_.Press(Qt::Key_Escape);
        });
        Press("cmdSpreadsheet", file);
        Keyboard::WhenModal("frmSpreadsheetImport", [&] {
            EXPECT_EQ(choice(2), "Division") << "remembered";
            keys_.Press(Qt::Key_Escape);
        });
        Press("cmdSpreadsheet", file);
        keys_.Press(Qt::Key_Escape);
    });
    form.ShowModal();
    company_.Session.AssetsRecordset().Seek("A2");
    EXPECT_EQ(company_.Session.AssetsRecordset().Get("Division").Text(), "Mill");
}

}  // namespace
}  // namespace tallymar
