#include <algorithm>
#include <cmath>

#include "forms/BlankForm.h"

namespace tallymar::tools {

namespace {

constexpr int kPageWidth = kColumns * kColumnDots;
constexpr int kPageHeight = (kLastLine + 1 - kFirstLine) * kLineDots;
constexpr double kRounding = 1.5;  // dots by which a word may pass its limit

// Figures fill their cells but for narrow margins; a rule may lie on those.
DotBox ValueOf(const BlankField& field) {
    const DotBox cells = CellsOf(field);
    return {cells.Left + 1, cells.Top + 2, cells.Right - 1, cells.Bottom - 5};
}

// How far the word reaches below its baseline.
int DepthOf(const BlankWord& word) {
    constexpr double kDepth = 0.2;  // of the em
    const bool reaches = word.Text.find_first_of("gjpqyQ,;()$") != std::string::npos;
    return reaches ? static_cast<int>(std::lround(word.Font->Printer.Points * kDotsPerPoint * kDepth)) : -1;
}

std::string Quoted(const BlankWord& word) {
    return "\"" + word.Text + "\"";
}

std::string Place(const BlankField& field) {
    return "the field at line " + std::to_string(field.Line) + ", column " + std::to_string(field.Column);
}

class Checker {
 public:
    explicit Checker(const BlankForm& form) : form_(form) {}

    std::vector<std::string> Run() {
        CheckFields();
        CheckWords();
        CheckRects();
        std::stable_sort(faults_.begin(), faults_.end(), [](const Fault& a, const Fault& b) { return a.Source < b.Source; });
        std::vector<std::string> lines;
        for (const Fault& fault : faults_) lines.push_back(FormFault(form_.Name, fault.Source, fault.What).what());
        lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
        return lines;
    }

 private:
    struct Fault {
        int Source;
        std::string What;
    };

    void Say(int source, std::string what) { faults_.push_back({source, std::move(what)}); }

    void CheckFields() {
        const std::vector<BlankField>& fields = form_.Fields;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const BlankField& field = fields[i];
            if (field.Line < kFirstLine || field.Line > kLastLine) Say(field.Source, Place(field) + " leaves the page");
            if (field.Column < 1 || field.Width < 1 || field.Column + field.Width - 1 > kColumns) {
                Say(field.Source, Place(field) + " does not end within column 80");
            }
            for (std::size_t other = 0; other < i; ++other) {
                if (CellsOf(field).Meets(CellsOf(fields[other]))) {
                    Say(field.Source, Place(field) + " overlaps that of line " + std::to_string(fields[other].Source));
                }
            }
        }
    }

    void CheckWords() {
        const std::vector<BlankWord>& words = form_.Words;
        for (std::size_t i = 0; i < words.size(); ++i) {
            const BlankWord& word = words[i];
            const DotBox ink = InkOf(word);
            if (word.Left + word.Width > word.Limit + kRounding) {
                const double columns = (word.Left + word.Width - word.Limit) / kColumnDots;
                Say(word.Source, Quoted(word) + " passes its limit by " + std::to_string(columns).substr(0, 4) + " columns");
            }
            if (ink.Left < 0 || ink.Right > kPageWidth || ink.Top < 0 || ink.Bottom > kPageHeight) {
                Say(word.Source, Quoted(word) + " leaves the page");
            }
            if (word.Font->DigitsOnly && word.Text.find_first_not_of("0123456789-") != std::string::npos) {
                Say(word.Source, Quoted(word) + ": this font has digits alone");
            }
            const DotBox inner{ink.Left + 1, ink.Top + 2, ink.Right - 1, ink.Bottom - 1};
            for (std::size_t other = 0; other < i; ++other) {
                if (inner.Meets(InkOf(words[other]))) {
                    Say(word.Source,
                        Quoted(word) + " lies on " + Quoted(words[other]) + " of line " + std::to_string(words[other].Source));
                }
            }
            for (const BlankField& field : form_.Fields) {
                if (inner.Meets(CellsOf(field))) Say(word.Source, Quoted(word) + " lies on " + Place(field));
            }
            const DotBox whole{inner.Left, inner.Top, inner.Right, ink.Bottom + DepthOf(word)};
            for (const BlankRect& rect : form_.Rects) {
                if (rect.What == BlankRect::Kind::Shade || (rect.What == BlankRect::Kind::Label && word.White)) continue;
                if (whole.Meets(rect.Box)) {
                    Say(word.Source, Quoted(word) + " lies on what line " + std::to_string(rect.Source) + " draws");
                }
            }
        }
    }

    void CheckRects() {
        for (const BlankRect& rect : form_.Rects) {
            const DotBox& box = rect.Box;
            if (box.Left < 0 || box.Right > kPageWidth || box.Top < 0 || box.Bottom > kPageHeight) {
                Say(rect.Source, "what is drawn leaves the page");
            }
            for (const BlankField& field : form_.Fields) {
                const bool ownBox = rect.What == BlankRect::Kind::CheckBox && field.Width == 1 &&
                                    box.Left > CellsOf(field).Left - kColumnDots / 2 &&
                                    box.Right < CellsOf(field).Right + kColumnDots / 2;
                if (!ownBox && box.Meets(ValueOf(field))) Say(rect.Source, "what is drawn goes through " + Place(field));
            }
        }
    }

    const BlankForm& form_;
    std::vector<Fault> faults_;
};

}  // namespace

std::vector<std::string> FaultsOf(const BlankForm& form) {
    return Checker(form).Run();
}

}  // namespace tallymar::tools
