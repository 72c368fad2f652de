#pragma once

namespace tallymar {

// Where on the paper a printer draws, and its grid of lines and columns: units of 1/7200 inch. The logical page begins a little
// right of the paper's left edge and at its top; the cursor's x counts from its left edge, its y from the paper's top.
struct PclPageSetup {
    int PaperWidth = 0;
    int PaperHeight = 0;
    int LogicalLeft = 0;
    int LogicalWidth = 0;
    int TopMargin = 0;
    int TextLength = 0;  // from the top margin down to the last line
    int LeftMargin = 0;
    int RightMargin = 0;
    int LineSpacing = 1200;  // VMI
    bool SkipsPerforation = true;

    PclPageSetup();  // Letter, upright, 6 lines to the inch

    // Each of them leaves the usual margins and text length.
    bool SetPaper(int number);        // ESC&l#A; false for one that is not known
    bool SetOrientation(int number);  // ESC&l#O: 0 and 2 upright, 1 and 3 on its side
    void ResetMargins();              // half an inch at the top and foot
    bool SetTopMargin(double lines);  // false: not on the page
    bool SetTextLength(double lines);
    int FirstLine() const { return TopMargin + LineSpacing * 3 / 4; }
    // A line feed beyond goes to the next page.
    int LastLine() const { return SkipsPerforation ? TopMargin + TextLength : PaperHeight; }

 private:
    void Apply();

    int paper_ = 2;
    bool sideways_ = false;
};

}  // namespace tallymar
