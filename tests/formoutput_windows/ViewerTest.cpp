#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>

#include <gmock/gmock.h>

#include "formoutput/PrintPCL.h"
#include "formoutput/frmFormSheetView.h"
#include "formoutput/frmHPViewer.h"
#include "formoutput/frmPrintForm.h"
#include "formoutput/frmPrinterSetup.h"
#include "platform/controls/HintLine.h"
#include "platform/controls/QtPrompts.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/Keyboard.h"
#include "support/PortListener.h"
#include "support/TempFolder.h"

namespace tallymar {
namespace {

using test::Keyboard;

std::string Record(char type, int line, int column, int width) {
    char numbers[16];
    snprintf(numbers, sizeof(numbers), "%3d%3d%3d", line, column, width);
    std::string record(85, ' ');
    record[2] = type;
    return record.replace(49, 9, numbers);
}

constexpr std::string_view kValues =
    "\\\\245621 \r\n"
    " \r\n"
    "  Elm Street                  (1,234.50)  \r\n"
    " \r\n"
    "\x1A";

class Viewer : public testing::Test {
 protected:
    Viewer() {
        setenv("CUPS_SERVER", "127.0.0.1:1", 1);  // the machine's own printers are left alone
        std::filesystem::create_directories(folder_ / "Laser");
        const std::string fields = std::string(85, ' ') + Record('T', 2, 0, 12) + Record('$', 2, 28, 12) + Record('$', 3, 28, 6) +
                                   Record('T', 60, 10, 5);
        for (const char* code : {"245621", "245622", "288241"}) {
            test::WriteAll(folder_ / "Laser" / (std::string(code) + ".HP"), kBlank);
            test::WriteAll(folder_ / "Laser" / (std::string(code) + ".FPF"), fields);
        }
        test::WriteAll(folder_ / "245621.LDT", kValues);
    }
    ~Viewer() override { unsetenv("CUPS_SERVER"); }

    std::unique_ptr<frmHPViewer> Open(std::string_view code) {
        auto viewer = std::make_unique<frmHPViewer>(paths_, code);
        viewer->show();
        QApplication::setActiveWindow(viewer.get());
        return viewer;
    }
    static QString HintOf(const QWidget& window) { return window.findChild<QLabel*>("TextMessage")->text(); }
    static QLineEdit* Editor() { return qobject_cast<QLineEdit*>(QApplication::focusWidget()); }
    static FormSheetView& Sheet(const QWidget& window) { return *window.findChild<FormSheetView*>(); }

    const std::string kBlank = "\x1B&l0O\x1B&l8c66p\x1B&l0e66f0L\x1B*p300x300Y\x1B*c600a3b0P\x1B&a0r0C";
    const test::TempFolder folder_;
    const AppPath paths_ = AppPath::At(folder_.Path(), folder_ / "no-program");
    Keyboard keys_;
};

TEST_F(Viewer, FieldsAreGoneThroughAndChangedByTheKeyboardAlone) {
    const auto viewer = Open("245621");
    EXPECT_EQ(viewer->windowTitle(), "View PCL Form");
    ASSERT_EQ(Keyboard::Name(), "sitxEdit1");
    EXPECT_EQ(Editor()->text(), "Elm Street");
    keys_.Press(Qt::Key_Tab);
    ASSERT_EQ(Keyboard::Name(), "sidbEdit1");
    EXPECT_EQ(Editor()->text(), "(1,234.50)");
    keys_.Press(Qt::Key_PageDown);
    keys_.Press(Qt::Key_PageUp);
    EXPECT_FALSE(viewer->IsDirty());
    keys_.Press(Qt::Key_Return);
    EXPECT_EQ(Editor()->text(), "0.00");
    keys_.Type("1234567");  // six characters: the comma goes before a digit does, the seventh digit is refused
    EXPECT_EQ(Editor()->text().toStdString(), "123456");
    EXPECT_EQ(HintOf(*viewer).toStdString(), "The field has room for 6 characters");
    keys_.Press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(HintOf(*viewer), "Changes on this page are not saved");
    EXPECT_EQ(Editor()->text(), "(1,234.50)");
    keys_.Press(Qt::Key_Up);
    keys_.Press(Qt::Key_Backtab);  // stops at the first
    EXPECT_EQ(Editor()->text(), "Elm Street");
    keys_.Type("Oak");
    for (int i = 0; i < 5; ++i) keys_.Press(Qt::Key_Tab);  // stops at the last
    EXPECT_EQ(Keyboard::Name(), "sitxEdit1");
    EXPECT_GT(viewer->findChild<QScrollBar*>("Scroller1")->value(), 0);
    const QPoint inView = Editor()->mapTo(viewer->findChild<QScrollArea*>("Picture1")->viewport(), Editor()->rect().center());
    EXPECT_TRUE(viewer->findChild<QScrollArea*>("Picture1")->viewport()->rect().contains(inView));

    Keyboard::WhenAskedForFile(folder_ / "245621.LDT");
    QTimer::singleShot(200, [] {  // it is there already: yes, replace it
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            box->button(QMessageBox::Yes)->click();
        }
    });
    keys_.Type("end");
    keys_.Alt(Qt::Key_S);
    EXPECT_EQ(
        test::ReadAll(folder_ / "245621.LDT"),
        "\\\\245621 \r\n \r\n  Oak                         (1,234.50) \r\n                              123456 \r\n" +
            [] {
                std::string rest;
                for (int line = 4; line < 60; ++line) rest += " \r\n";
                return rest;
            }() +
            "            end \r\n\x1A");
    EXPECT_FALSE(viewer->IsDirty());
}

TEST_F(Viewer, APageMoveLosesWhatIsNotSavedAndCtrlZBringsItBack) {
    const auto viewer = Open("245621");
    EXPECT_FALSE(viewer->findChild<QPushButton*>("cmdPrevious")->isEnabled());
    keys_.Type("Oak");
    QApplication::processEvents();
    EXPECT_EQ(HintOf(*viewer), "Changes on this page are not saved");
    keys_.Alt(Qt::Key_N);
    EXPECT_EQ(viewer->Place().FileName(), "245622.LDT");
    EXPECT_EQ(Editor()->text(), "");
    keys_.Alt(Qt::Key_R);
    EXPECT_EQ(Editor()->text(), "Elm Street");
    EXPECT_EQ(HintOf(*viewer), "Changes of this page were not saved: Ctrl+Z brings them back");
    EXPECT_EQ(test::ReadAll(folder_ / "245621.LDT"), kValues);
    keys_.Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Editor()->text(), "Oak");
    EXPECT_EQ(HintOf(*viewer), "Changes on this page are not saved");
    keys_.Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Editor()->text(), "Elm Street");
    EXPECT_FALSE(viewer->IsDirty());
    keys_.Press(Qt::Key_Escape);
    EXPECT_FALSE(viewer->isVisible());
}

TEST_F(Viewer, AClickGoesToTheFieldAndDropsWhatWasBeingTyped) {
    const auto viewer = Open("245621");
    FormSheetView& sheet = Sheet(*viewer);
    const auto click = [&](int column, int line) {
        QTest::mouseClick(&sheet, Qt::LeftButton, {}, sheet.CellRect(column, line, 1).center().toPoint());
    };
    keys_.Type("Oak");
    click(50, 50);
    EXPECT_EQ(Editor()->text(), "Oak");
    click(40, 2);  // the cell behind the field
    EXPECT_EQ(Editor()->text(), "(1,234.50)");
    EXPECT_EQ(HintOf(*viewer), "What was typed before the click was not stored: Enter or Tab does that");
    EXPECT_EQ(sheet.GetFieldText(1, 2, 12), "Elm Street");
    keys_.Type("5");
    click(40, 2);  // of the same field
    EXPECT_EQ(Editor()->text(), "(1,234.50)");
    EXPECT_EQ(HintOf(*viewer), "What was typed before the click was not stored: Enter or Tab does that");
}

TEST_F(Viewer, WhatIsTypedOutlivesAnIconAndASaveThatIsCancelled) {
    const auto viewer = Open("245621");
    keys_.Type("Oak");
    viewer->hide();
    viewer->show();
    EXPECT_EQ(viewer->findChild<QLineEdit*>("sitxEdit1")->text(), "Oak");
    QApplication::setActiveWindow(viewer.get());
    QString said;
    Keyboard::WhenModal("QFileDialog", [&] {
        Keyboard::WhenMessage(said);
        keys_.Press(Qt::Key_Escape);
    });
    keys_.Alt(Qt::Key_S);
    EXPECT_THAT(said.toStdString(), testing::StartsWith("User canceled Save Option for "));
    EXPECT_EQ(Sheet(*viewer).GetFieldText(1, 2, 12), "Elm Street");
    EXPECT_EQ(viewer->findChild<QLineEdit*>("sitxEdit1")->text(), "Oak");
    EXPECT_TRUE(viewer->IsDirty());
}

TEST_F(Viewer, APageBeginsAtItsHeadWhenTheWindowHasGotItsSize) {
    test::WriteAll(folder_ / "Laser/245622.FPF", std::string(85, ' ') + Record('T', 20, 0, 12) + Record('T', 21, 0, 12));
    frmHPViewer viewer(paths_, "245622");
    const QScrollBar& scroller = *viewer.findChild<QScrollBar*>("Scroller1");
    viewer.resize(1000, 260);
    viewer.show();
    QApplication::processEvents();
    EXPECT_GT(scroller.value(), 0);  // for the field to be seen
    viewer.resize(1000, 800);
    QApplication::processEvents();
    EXPECT_EQ(scroller.value(), 0);
}

TEST_F(Viewer, AnAmountOfNothingOpensAs000) {
    for (const char* zero : {"(   0.00)", "-0.00", "  0.", "    .00", "-"}) {
        test::WriteAll(folder_ / "245621.LDT", "x\r\n \r\n" + std::string(30, ' ') + zero + "\r\n\x1A");
        const auto viewer = Open("245621");
        keys_.Press(Qt::Key_Tab);
        EXPECT_EQ(Editor()->text(), "0.00") << zero;
    }
    test::WriteAll(folder_ / "245621.LDT", "x\r\n \r\n" + std::string(30, ' ') + "*ERROR*\r\n\x1A");
    const auto viewer = Open("245621");
    keys_.Press(Qt::Key_Tab);
    EXPECT_EQ(Editor()->text(), "*ERROR*");
}

TEST_F(Viewer, TheGridStaysInPlaceAtEverySize) {
    const auto viewer = Open("245621");
    FormSheetView& sheet = Sheet(*viewer);
    for (const int width : {700, 1100, 1500}) {
        viewer->resize(width, 600);
        QApplication::processEvents();
        for (const int column : {0, 1, 40, 79}) {
            for (const int line : {1, 33, 66}) {
                const QPointF middle = sheet.CellRect(column, line, 1).center();
                EXPECT_EQ(sheet.ColumnAtX(static_cast<int>(middle.x())), column) << width;
                EXPECT_EQ(sheet.LineAtY(static_cast<int>(middle.y())), line) << width;
            }
        }
        EXPECT_LE(sheet.width(), viewer->findChild<QScrollArea*>("Picture1")->viewport()->width() + 1);
        // The blank's rule of 300 dots from the corner of the text area, a quarter of an inch right of the paper's.
        const QImage seen = sheet.grab().toImage();
        const double dot = sheet.CellWidth() / 30;
        const int y = static_cast<int>(std::round(301.5 * dot));
        int darkest = 255;
        for (int row = y - 2; row <= y + 2; ++row) {
            darkest = std::min(darkest, qGray(seen.pixel(static_cast<int>(600 * dot), row)));
        }
        EXPECT_LT(darkest, 100) << width;
        EXPECT_GT(qGray(seen.pixel(static_cast<int>(360 * dot), y)), 200) << width;
    }
}

TEST_F(Viewer, AFileThatIsNoneIsToldAndThePageStays) {
    test::WriteAll(folder_ / "Laser/245622.FPF", "cut");
    const auto viewer = Open("245621");
    QString said;
    Keyboard::WhenMessage(said);
    keys_.Alt(Qt::Key_N);
    EXPECT_THAT(said.toStdString(), testing::HasSubstr("245622.FPF is no file of form fields: its header is missing"));
    EXPECT_EQ(viewer->Place().FileName(), "245621.LDT");
    EXPECT_EQ(test::FailureOf([&] { Open("247971"); }), Failure::FileNotFound);
    test::WriteAll(folder_ / "Laser/245622.FPF", std::string(85, ' '));
    test::WriteAll(folder_ / "Laser/245622.HP", std::string("\x1B*b99999999W\x1B)s-5W\x1B", 18));
    EXPECT_EQ(HintOf(*Open("245622")).toStdString(), "This page has no fields");
}

TEST_F(Viewer, PrintSendsTheFileAndSaysWhichOfForm8824) {
    SavePrinterSettings(folder_.Path(), {"", PrintDestination::File(folder_ / "out.prn")});
    test::WriteAll(folder_ / "28824101.LDT", "x\r\n  first\r\n\x1A");
    test::WriteAll(folder_ / "28824102.LDT", "x\r\n  second\r\n\x1A");
    const auto viewer = Open("288241");
    keys_.Alt(Qt::Key_N);
    EXPECT_EQ(viewer->Place().FileName(), "28824102.LDT");
    EXPECT_FALSE(viewer->findChild<QPushButton*>("cmdNext")->isEnabled());
    std::string what;
    Keyboard::WhenModal("frmPrintForm", [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        what = (dialog->windowTitle() + "|" + dialog->findChild<QLabel*>("lblWhat")->text()).toStdString();
        keys_.Alt(Qt::Key_P);
    });
    keys_.Alt(Qt::Key_P);
    EXPECT_EQ(what, "Print Form 288241|Form 8824 prints its first file, 28824101.LDT");
    EXPECT_EQ(test::ReadAll(folder_ / "out.prn"), kBlank + "first\r\n\f");
    EXPECT_THAT(HintOf(*viewer).toStdString(), testing::StartsWith("28824101.LDT was sent to "));

    QString said;
    Keyboard::WhenModal("frmPrintForm", [&] {
        Keyboard::WhenMessage(said);
        keys_.Press(Qt::Key_Escape);
    });
    keys_.Alt(Qt::Key_P);
    EXPECT_EQ(said, "Printing of Laser\\288241.HP was canceled");

    said.clear();
    Keyboard::WhenModal("frmPrintForm", [&] {
        Keyboard::WhenModal("QFileDialog", [&] {
            Keyboard::WhenMessage(said);
            keys_.Press(Qt::Key_Escape);
        });
        keys_.Alt(Qt::Key_D);
    });
    keys_.Alt(Qt::Key_P);
    EXPECT_EQ(said, "Printing of Laser\\288241.HP was canceled");
}

TEST_F(Viewer, ValuesThatCannotBeReadAreToldAndTheBlankPrints) {
    SavePrinterSettings(folder_.Path(), {"", PrintDestination::File(folder_ / "out.prn")});
    const auto viewer = Open("245621");
    test::WriteAll(folder_ / "245621.LDT", std::string(70000, ' '));
    std::string warning;
    QString said;
    Keyboard::WhenModal("frmPrintForm", [&] {
        warning = QApplication::activeModalWidget()->findChild<QLabel*>("lblWarning")->text().toStdString();
        Keyboard::WhenMessage(said);
        keys_.Alt(Qt::Key_P);
    });
    keys_.Alt(Qt::Key_P);
    EXPECT_THAT(warning, testing::EndsWith("245621.LDT is no form page: it is too long"));
    EXPECT_EQ(said, "ERROR 75 Reading 245621.LDT");
    EXPECT_EQ(test::ReadAll(folder_ / "out.prn"), kBlank);

    Keyboard::WhenModal("frmPrintForm", [&] {
        Keyboard::WhenModal("QFileDialog", [&] {
            Keyboard::WhenMessage(said);
            QApplication::activeModalWidget()
                ->findChild<QLineEdit*>("fileNameEdit")
                ->setText(QString::fromStdString((folder_ / "a.pdf").string()));
            keys_.Press(Qt::Key_Return);
        });
        keys_.Alt(Qt::Key_D);
    });
    keys_.Alt(Qt::Key_P);
    EXPECT_EQ(said, "Printing of Laser\\245621.HP was canceled");
    EXPECT_THAT(HintOf(*viewer).toStdString(), testing::HasSubstr("is no form page: it is too long"));
}

TEST_F(Viewer, ATooLongPageIsToldBeforeAnythingIsSentAndWhatGoesWrongStandsInTheHintLine) {
    test::PortListener gone;
    SavePrinterSettings(folder_.Path(), {"", PrintDestination::Port("127.0.0.1", gone.Port())});
    gone.Stop();
    test::WriteAll(folder_ / "245621.LDT", "x\r\n  " + std::string(500, 'v') + "\r\n");
    std::string values = "x\r\n";
    for (int line = 0; line < 60; ++line) values += "  " + std::string(80, 'v') + "\r\n";
    test::WriteAll(folder_ / "245621.LDT", values);
    const auto viewer = Open("245621");
    std::string warning;
    std::string focused;
    QString said;
    Keyboard::WhenModal("frmPrintForm", [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        warning = dialog->findChild<QLabel*>("lblWarning")->text().toStdString();
        focused = Keyboard::Name();
        Keyboard::WhenMessage(said);
        keys_.Alt(Qt::Key_P);
    });
    keys_.Alt(Qt::Key_P);
    EXPECT_THAT(warning, testing::StartsWith("The page needs 4921 bytes and a print takes 4096"));
    EXPECT_EQ(focused, "cmdPdf");
    EXPECT_EQ(said, "ERROR 9 Reading 245621.LDT");
    EXPECT_THAT(HintOf(*viewer).toStdString(), testing::HasSubstr("cannot be reached: Connection refused"));
}

TEST_F(Viewer, PrinterSetupRemembersAPortThatWorks) {
    test::PortListener printer;
    const std::string address = "127.0.0.1:" + std::to_string(printer.Port());
    frmPrinterSetup setup(paths_);
    setup.show();
    QApplication::setActiveWindow(&setup);
    EXPECT_EQ(setup.windowTitle(), "Printer Setup");
    EXPECT_EQ(setup.findChild<QListWidget*>("List1")->count(), 1);  // that there is none
    setup.findChild<QRadioButton*>("optlRaw(1)")->setFocus();
    keys_.Press(Qt::Key_Space);
    setup.findChild<QPushButton*>("OKButton")->click();
    EXPECT_EQ(Keyboard::Name(), "sitxPort");
    EXPECT_TRUE(setup.isVisible());
    keys_.Type(address.c_str());
    keys_.Alt(Qt::Key_T);
    EXPECT_EQ(HintOf(setup).toStdString(), "A test page was sent to socket://" + address);
    setup.findChild<QPushButton*>("OKButton")->click();
    EXPECT_FALSE(setup.isVisible());
    EXPECT_EQ(LoadPrinterSettings(folder_.Path()).RawTo().Text(), "socket://" + address);
    EXPECT_EQ(printer.Stop(), std::vector<std::string>{TestPage("The printer at socket://" + address)});
}

TEST_F(Viewer, PrinterSetupTakesNoPrinterThatNobodyHasSelected) {
    SavePrinterSettings(folder_.Path(), {"Gone", {}});
    frmPrinterSetup setup(paths_);
    setup.show();
    QApplication::setActiveWindow(&setup);
    auto& list = *setup.findChild<QListWidget*>("List1");
    list.addItem("Other");
    list.item(1)->setData(Qt::UserRole, "Other");
    list.setCurrentRow(1, QItemSelectionModel::NoUpdate);  // as the keyboard does that only passes through
    setup.findChild<QPushButton*>("OKButton")->click();
    EXPECT_EQ(HintOf(setup), "Select a printer in the list, or another way for the form pages");
    EXPECT_EQ(Keyboard::Name(), "List1");
    setup.findChild<QRadioButton*>("optlRaw(2)")->setChecked(true);
    auto& file = *setup.findChild<QLineEdit*>("sitxFile");
    file.setText(QString::fromStdString((folder_ / "245621.LDT").string()));
    setup.findChild<QPushButton*>("OKButton")->click();
    EXPECT_THAT(HintOf(setup).toStdString(), testing::HasSubstr("is one of the files that forms are made of"));
    file.setText(QString::fromStdString((folder_ / "out.prn").string()));
    setup.findChild<QPushButton*>("OKButton")->click();
    EXPECT_EQ(LoadPrinterSettings(folder_.Path()), (PrinterSettings{"Gone", PrintDestination::File(folder_ / "out.prn")}));
}

TEST_F(Viewer, SoftFontsAreDownloadedAfterAsking) {
    SavePrinterSettings(folder_.Path(), {"", PrintDestination::File(folder_ / "fonts.prn")});
    std::filesystem::create_directories(folder_ / "fonts");
    std::string all;
    for (const std::string_view font : kSoftFonts) {
        test::WriteAll(folder_ / font, font);
        all += font;
    }
    QtPrompts prompts(nullptr);
    QString said;
    Keyboard::WhenModal("frmPrintForm", [&] {
        Keyboard::WhenMessage(said);
        keys_.Alt(Qt::Key_P);
    });
    EXPECT_EQ(DownloadSoftFontsWithDialog(paths_, prompts, nullptr).Problem, "");
    EXPECT_EQ(said, "8 Soft Fonts were downloaded to your laser printer");
    EXPECT_EQ(test::ReadAll(folder_ / "fonts.prn"), all);
    Keyboard::WhenModal("frmPrintForm", [&] {
        Keyboard::WhenMessage(said);
        keys_.Press(Qt::Key_Escape);
    });
    DownloadSoftFontsWithDialog(paths_, prompts, nullptr);
    EXPECT_EQ(said, "Soft Fonts download was canceled");
}

}  // namespace
}  // namespace tallymar
