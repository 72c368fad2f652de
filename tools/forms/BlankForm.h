#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "forms/FormFonts.h"

namespace tallymar::tools {

// A blank page as its description says it (data/forms/README.md), in dots of 300 to the inch from the corner of the text area.

struct DotBox {
    int Left = 0;
    int Top = 0;
    int Right = 0;  // behind the last dot
    int Bottom = 0;

    bool Meets(const DotBox& other) const {
        return Left < other.Right && other.Left < Right && Top < other.Bottom && other.Top < Bottom;
    }
};

struct BlankRect {
    enum class Kind { Rule, Dot, CheckBox, Label, Shade };
    Kind What;
    DotBox Box;
    int Grey;  // percent
    int Source;
};

struct BlankWord {
    const FormFont* Font;
    double Left;
    double Width;
    int Baseline;
    std::string Text;  // Windows-1252
    bool White;
    double Limit;  // the dot that its text must not pass
    int Source;    // the line of the description
};

struct BlankField {
    bool IsAmount;
    int Line;  // of the page's file
    int Column;
    int Width;
    int Source;
};

struct BlankForm {
    std::string Name;  // of the description's file
    std::string Code;
    std::string Title;
    std::vector<BlankRect> Rects;
    std::vector<BlankWord> Words;
    std::vector<BlankField> Fields;
};

inline constexpr int kColumns = 80;
inline constexpr int kFirstLine = 2;
inline constexpr int kLastLine = 67;
inline constexpr int kColumnDots = 30;
inline constexpr int kLineDots = 50;

// The dot of a column's left edge, of a line's upper edge. Both may lie between two.
double ColumnEdge(double column);
double LineEdge(double line);
DotBox CellsOf(const BlankField& field);
// A word's ink: from the top of its capitals down to its baseline.
DotBox InkOf(const BlankWord& word);

// "245621.form:12: no font \"09m\"".
struct FormFault : std::runtime_error {
    FormFault(const std::string& name, int line, const std::string& what)
        : std::runtime_error(name + ":" + std::to_string(line) + ": " + what) {}
};

// Throws FormFault at the first line that is no directive.
BlankForm ReadBlankForm(const std::string& name, std::string_view description);

// What would not print as it should, one line each: a text that leaves its limit or the page, that lies on another, on a rule or
// on a field; a rule or shade through the cells of a field; fields that overlap or leave the page.
std::vector<std::string> FaultsOf(const BlankForm& form);

// The files that the program shows and prints: the page's PCL and its fields.
std::string LaserPage(const BlankForm& form);
std::string FieldRecords(const BlankForm& form);

}  // namespace tallymar::tools
