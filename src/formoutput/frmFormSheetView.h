#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <QFont>
#include <QPixmap>
#include <QWidget>

#include "formoutput/FormFields.h"
#include "formoutput/FormPageText.h"
#include "platform/pcl/PclDrawing.h"

namespace tallymar {

// A colour as blue x 65536 + green x 256 + red.
using SheetColor = int;
inline constexpr SheetColor kMarked = 16776960;  // cyan: a field
inline constexpr SheetColor kStored = 16777215;  // white: a field that something has been put into

// A form page on screen: its values over its blank, as they print. Its coordinates are cells of the page's grid, columns and
// lines from 1; the sheet is Letter paper, whose first column lies a quarter of an inch from the left edge as printers have it.
// It is as large as SetCellWidth makes it.
class FormSheetView : public QWidget {
    Q_OBJECT

 public:
    explicit FormSheetView(QWidget* parent = nullptr);

    // Writes the page text as a values page, whole or not at all. Failures: those of FileReplacement.
    void Save(const std::filesystem::path& path) const;
    // Of the values; the size is in points of a page at paper size.
    void SetFont(const QString& name, double size, bool bold, bool italic);
    std::string GetFieldText(int column, int line, int width) const { return text_.GetFieldText(column, line, width); }
    // Paints the background of a field, whose text may have changed.
    void MarkField(int column, int line, int width, SheetColor color);
    // Of a place in this widget: the column counted from 0, as fields have it, the line from 1.
    int ColumnAtX(int x) const;
    int LineAtY(int y) const;
    // The blank to show, without the marks of an earlier page; and the values over it.
    void FormFile(PclDrawing blank);
    void DataFile(FormPageText values);

    FormPageText& Text() { return text_; }

    void SetCellWidth(double pixels);
    double CellWidth() const { return cellWidth_; }
    double CellHeight() const;
    // The place of so many cells, the column counted from 0.
    QRectF CellRect(int column, int line, int width) const;
    // A font in which each character takes a cell.
    QFont CellFont() const;
    // The field that is being edited gets a frame; width 0: none.
    void SetCurrent(int column, int line, int width);

 signals:
    void Clicked(int x, int y);

 protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

 private:
    struct Mark {
        int Column;
        int Line;
        int Width;
        SheetColor Color;
    };
    void PaintBlank();

    FormPageText text_;
    PclDrawing blank_;
    QPixmap picture_;  // of the blank at the present size; null: to be painted
    std::vector<Mark> marks_;
    Mark current_{0, 0, 0, 0};
    double cellWidth_ = 12;
    QString fontName_;
    double fontPoints_ = 12;
    bool bold_ = false;
    bool italic_ = false;
};

}  // namespace tallymar
