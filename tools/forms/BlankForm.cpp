#include "forms/BlankForm.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <map>
#include <utility>

#include "platform/runtime/Windows1252.h"

namespace tallymar::tools {

namespace {

constexpr double kBaseline = 0.75;  // of a line, down from its top: where a printed value stands
constexpr double kCapHeight = 0.72;
constexpr int kRuleDots = 2;
constexpr int kJoin = kRuleDots / 2;
constexpr int kRuleLift = 3;  // dots above the edge of a line: in the middle between the figures of two lines
constexpr int kThickest = 20;
constexpr int kLeaderDot = 4;
constexpr double kPartColumn = 4;
constexpr int kLabelMargin = 12;                     // beside the words of a part's label, and between it and the title
constexpr std::string_view kArrow = "\xE2\x96\xB6";  // the only character of a description that no font of a printer holds
constexpr char kArrowMark = '\x01';                  // what stands for it until the words are placed

const FormFont& BoldOf(const FormFont& font) {
    for (const FormFont& other : kFormFonts) {
        if (other.Printer.Bold && other.Printer.Points == font.Printer.Points) return other;
    }
    return font;
}

int Dots(double value) {
    return static_cast<int>(std::lround(value));
}

// The words of one directive, read from left to right.
class Directive {
 public:
    explicit Directive(std::string_view line) : rest_(line) { SkipBlanks(); }

    bool AtEnd() const { return rest_.empty() || rest_.front() == '#'; }

    std::string Word(const char* what) {
        if (AtEnd()) throw std::runtime_error(std::string("no ") + what);
        const std::size_t end = std::min(rest_.find_first_of(" \t"), rest_.size());
        std::string word(rest_.substr(0, end));
        rest_.remove_prefix(end);
        SkipBlanks();
        return word;
    }

    double Number(const char* what) {
        const std::string word = Word(what);
        double value = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
        if (error != std::errc() || end != word.data() + word.size() || !(value >= 0 && value <= 200)) {
            throw std::runtime_error("\"" + word + "\" is no " + what);
        }
        return value;
    }

    int Whole(const char* what) {
        const double value = Number(what);
        if (value != std::floor(value)) throw std::runtime_error(std::string("the ") + what + " must be whole");
        return static_cast<int>(value);
    }

    // Between quotes; \" and \* stand for themselves. A star that may turn bold on and off becomes '\x02'.
    std::string Quoted(bool starsTurnBold) {
        if (AtEnd() || rest_.front() != '"') throw std::runtime_error("a text stands in quotes");
        std::string text;
        std::size_t i = 1;
        for (; i < rest_.size() && rest_[i] != '"'; ++i) {
            if (rest_[i] == '\\' && i + 1 < rest_.size()) {
                text += rest_[++i];
            } else if (rest_[i] == '*' && starsTurnBold) {
                text += kBoldMark;
            } else if (rest_.substr(i, kArrow.size()) == kArrow) {
                text += kArrowMark;
                i += kArrow.size() - 1;
            } else if (static_cast<unsigned char>(rest_[i]) < ' ') {
                throw std::runtime_error("a text holds no control characters");
            } else {
                text += rest_[i];
            }
        }
        if (i >= rest_.size()) throw std::runtime_error("the text has no closing quote");
        rest_.remove_prefix(i + 1);
        SkipBlanks();
        bool lossy = false;
        text = FromUtf8(text, &lossy);
        if (lossy) throw std::runtime_error("the text holds a character that Windows-1252 does not have");
        return text;
    }

    static constexpr char kBoldMark = '\x02';

 private:
    void SkipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size())); }

    std::string_view rest_;
};

// A text's words at their places, from 0; and how long it is.
struct PlacedText {
    std::vector<BlankWord> Words;
    std::vector<double> Arrows;
    double Width = 0;
};

class Reader {
 public:
    explicit Reader(std::string name) { form_.Name = std::move(name); }

    BlankForm Read(std::string_view description) {
        int number = 0;
        while (!description.empty()) {
            source_ = ++number;
            const std::size_t end = description.find('\n');
            std::string_view line = description.substr(0, end);
            description.remove_prefix(end == std::string_view::npos ? description.size() : end + 1);
            if (line.ends_with('\r')) line.remove_suffix(1);
            try {
                TakeLine(line);
            } catch (const std::runtime_error& fault) {
                throw FormFault(form_.Name, source_, fault.what());
            }
        }
        if (form_.Code.empty()) throw FormFault(form_.Name, number, "no \"page\" directive");
        if (repeats_ > 0) throw FormFault(form_.Name, number, "\"repeat\" without \"end\"");
        return std::move(form_);
    }

 private:
    struct SourceLine {
        int Number;
        std::string_view Text;
    };

    void TakeLine(std::string_view line) {
        Directive words(line);
        if (words.AtEnd()) return;
        const std::string name = words.Word("directive");
        if (name == "repeat") {
            if (repeats_ > 0) throw std::runtime_error("\"repeat\" within \"repeat\"");
            repeats_ = words.Whole("count");
            if (repeats_ < 1 || repeats_ > kLastLine) throw std::runtime_error("a count is 1 to 67");
        } else if (name == "end") {
            if (repeats_ == 0) throw std::runtime_error("\"end\" without \"repeat\"");
            const int count = std::exchange(repeats_, 0);
            const std::vector<SourceLine> lines = std::exchange(repeated_, {});
            for (down_ = 0; down_ < count; ++down_) {
                for (const SourceLine& each : lines) {
                    source_ = each.Number;
                    Directive again(each.Text);
                    const std::string directive = again.Word("directive");
                    Take(directive, again);
                }
            }
            down_ = 0;
        } else if (repeats_ > 0) {
            repeated_.push_back({source_, line});
            return;
        } else {
            return Take(name, words);
        }
        if (!words.AtEnd()) throw std::runtime_error("\"" + words.Word("") + "\" is too much");
    }

    void Take(const std::string& name, Directive& words) {
        static const std::map<std::string_view, void (Reader::*)(Directive&)> kDirectives = {
            {"page", &Reader::TakePage},     {"text", &Reader::TakeText},     {"right", &Reader::TakeRight},
            {"center", &Reader::TakeCenter}, {"leader", &Reader::TakeLeader}, {"hrule", &Reader::TakeHRule},
            {"vrule", &Reader::TakeVRule},   {"box", &Reader::TakeBox},       {"check", &Reader::TakeCheck},
            {"shade", &Reader::TakeShade},   {"part", &Reader::TakePart},     {"field", &Reader::TakeField},
        };
        const auto found = kDirectives.find(name);
        if (found == kDirectives.end()) throw std::runtime_error("\"" + name + "\" is no directive");
        if (form_.Code.empty() && name != "page") throw std::runtime_error("the first directive is \"page\"");
        (this->*found->second)(words);
        if (!words.AtEnd()) throw std::runtime_error("\"" + words.Word("") + "\" is too much");
    }

    void TakePage(Directive& words) {
        if (!form_.Code.empty()) throw std::runtime_error("a description is of one page");
        const std::string code = words.Word("page code");
        for (const char c : code) {
            if (!std::isalnum(static_cast<unsigned char>(c))) throw std::runtime_error("\"" + code + "\" is no page code");
        }
        form_.Title = words.Quoted(false);
        form_.Code = code;
    }

    // A "+" is `behind`, where the last text has left the line.
    static double Column(Directive& words, double behind) {
        const std::string word = words.Word("column");
        return word == "+" ? behind : Directive(word).Number("column");
    }

    double Line(Directive& words) const { return words.Number("line") + down_; }

    const FormFont& Font(Directive& words) {
        const std::string name = words.Word("font");
        for (const FormFont& font : kFormFonts) {
            if (font.Name == name) return font;
        }
        throw std::runtime_error("no font \"" + name + "\"");
    }

    PlacedText Place(const FormFont& font, const std::string& text) const {
        PlacedText placed;
        const FormFont* current = &font;
        std::string word;
        const auto endWord = [&] {
            if (word.empty()) return;
            const double width = WidthInDots(*current, word);
            placed.Words.push_back({current, placed.Width, width, 0, word, false, 0, source_});
            placed.Width += width;
            word.clear();
        };
        for (const char c : text) {
            if (c == ' ') {
                endWord();
                placed.Width += WidthInDots(*current, " ");
            } else if (c == Directive::kBoldMark) {
                endWord();
                current = current == &font ? &BoldOf(font) : &font;
            } else if (c == kArrowMark) {
                endWord();
                placed.Arrows.push_back(placed.Width);
                placed.Width += ArrowHeight(font) * 0.8;
            } else {
                word += c;
            }
        }
        endWord();
        if (current != &font) throw std::runtime_error("a * has no second one (a star itself is \\*)");
        return placed;
    }

    static int ArrowHeight(const FormFont& font) { return Dots(font.Printer.Points * kDotsPerPoint * 0.66); }

    // A text has its bold stars in the size that exists in both weights.
    std::string TextFor(const FormFont& font, Directive& words) { return words.Quoted(font.Name == "08m"); }

    double Limit(Directive& words, double otherwise) {
        if (words.AtEnd()) return ColumnEdge(otherwise);
        const std::string word = words.Word("limit");
        if (word != "max") throw std::runtime_error("\"" + word + "\" is too much");
        return ColumnEdge(words.Number("column"));
    }

    void Add(PlacedText placed, double left, double line, double limit, bool white = false) {
        const int baseline = Dots(LineEdge(line) + kBaseline * kLineDots);
        for (BlankWord& word : placed.Words) {
            word.Left += left;
            word.Baseline = baseline;
            word.White = white;
            word.Limit = limit;
            form_.Words.push_back(std::move(word));
        }
        end_ = left + placed.Width;
    }

    void AddArrows(const PlacedText& placed, const FormFont& font, double left, double line) {
        constexpr int kStep = 2;
        const int baseline = Dots(LineEdge(line) + kBaseline * kLineDots);
        const int height = ArrowHeight(font);
        for (const double at : placed.Arrows) {
            for (int y = 0; y < height; y += kStep) {
                const int fromTip = std::abs(height - 2 * y - kStep);
                const int width = std::max(2, Dots((height - fromTip) * 0.7));
                const int top = baseline - height + y;
                AddRect(BlankRect::Kind::Dot, {Dots(left + at), top, Dots(left + at) + width, top + kStep});
            }
        }
    }

    void AddText(const FormFont& font, const std::string& text, double line, double limit, double left, double share) {
        PlacedText placed = Place(font, text);
        if (placed.Words.empty() && placed.Arrows.empty()) throw std::runtime_error("the text is empty");
        left -= placed.Width * share;
        AddArrows(placed, font, left, line);
        Add(std::move(placed), left, line, limit);
    }

    void TakeText(Directive& words) {
        const double line = Line(words);
        const double column = Column(words, 0);
        const FormFont& font = Font(words);
        const std::string text = TextFor(font, words);
        const double left = column == 0 ? end_ + WidthInDots(font, " ") : ColumnEdge(column);
        AddText(font, text, line, Limit(words, kColumns + 1), left, 0);
    }

    void TakeRight(Directive& words) {
        const double line = Line(words);
        const double column = words.Number("column");
        const FormFont& font = Font(words);
        AddText(font, TextFor(font, words), line, ColumnEdge(column) + 1, ColumnEdge(column), 1);
    }

    void TakeCenter(Directive& words) {
        const double line = Line(words);
        const double from = words.Number("column");
        const double to = words.Number("column");
        const FormFont& font = Font(words);
        AddText(font, TextFor(font, words), line, ColumnEdge(to), (ColumnEdge(from) + ColumnEdge(to)) / 2, 0.5);
    }

    void TakeLeader(Directive& words) {
        const int y = Dots(LineEdge(Line(words)) + kBaseline * kLineDots) - kLeaderDot;
        const double from = Column(words, std::ceil(end_ / kColumnDots) + 1);
        const double to = words.Number("column");
        for (double column = from; column <= to - 0.5; column += 1) {
            const int x = Dots(ColumnEdge(column + 0.5)) - kLeaderDot / 2;
            AddRect(BlankRect::Kind::Dot, {x, y, x + kLeaderDot, y + kLeaderDot});
        }
    }

    // The half of a rule that would lie beside the page is not drawn.
    void AddRect(BlankRect::Kind kind, DotBox box, int grey = 100) {
        if (box.Left == -kJoin) box.Left = 0;
        if (box.Right == kColumns * kColumnDots + kJoin) box.Right = kColumns * kColumnDots;
        form_.Rects.push_back({kind, box, grey, source_});
    }

    int Thickness(Directive& words) {
        if (words.AtEnd()) return kRuleDots;
        const int dots = words.Whole("thickness");
        if (dots < 1 || dots > kThickest) throw std::runtime_error("a rule has 1 to 20 dots");
        return dots;
    }

    static int RuleDots(double line, BlankRect::Kind kind) {
        return Dots(LineEdge(line)) - (kind == BlankRect::Kind::CheckBox ? 0 : kRuleLift);
    }

    // A rule lies on its edge, half of it on either side; where two meet, each ends with the other's far side.
    void HRule(double line, double from, double to, int dots, BlankRect::Kind kind = BlankRect::Kind::Rule) {
        if (to <= from) throw std::runtime_error("the rule ends before it begins");
        const int y = RuleDots(line, kind) - dots / 2;
        AddRect(kind, {Dots(ColumnEdge(from)) - kJoin, y, Dots(ColumnEdge(to)) + kJoin, y + dots});
    }
    void VRule(double column, double from, double to, int dots, BlankRect::Kind kind = BlankRect::Kind::Rule) {
        if (to <= from) throw std::runtime_error("the rule ends before it begins");
        const int x = Dots(ColumnEdge(column)) - dots / 2;
        AddRect(kind, {x, RuleDots(from, kind) - kJoin, x + dots, RuleDots(to, kind) + kJoin});
    }
    void Outline(double top, double left, double bottom, double right, int dots, BlankRect::Kind kind = BlankRect::Kind::Rule) {
        HRule(top, left, right, dots, kind);
        HRule(bottom, left, right, dots, kind);
        VRule(left, top, bottom, dots, kind);
        VRule(right, top, bottom, dots, kind);
    }

    void TakeHRule(Directive& words) {
        const double line = Line(words);
        const double from = words.Number("column");
        const double to = words.Number("column");
        HRule(line, from, to, Thickness(words));
    }

    void TakeVRule(Directive& words) {
        const double column = words.Number("column");
        const double from = Line(words);
        const double to = Line(words);
        VRule(column, from, to, Thickness(words));
    }

    void TakeBox(Directive& words) {
        const double top = Line(words);
        const double left = words.Number("column");
        const double bottom = Line(words);
        const double right = words.Number("column");
        Outline(top, left, bottom, right, Thickness(words));
    }

    // About the cell's capital letter: a little wider than the cell, and less high.
    void TakeCheck(Directive& words) {
        const double line = Line(words);
        const double column = words.Number("column");
        Outline(line + 0.06, column - 0.1, line + 0.84, column + 1.1, kRuleDots, BlankRect::Kind::CheckBox);
    }

    void TakeShade(Directive& words) {
        const double top = Line(words);
        const double left = words.Number("column");
        const double bottom = Line(words);
        const double right = words.Number("column");
        const int percent = words.Whole("percentage");
        if (percent < 1 || percent > 100) throw std::runtime_error("a shade has 1 to 100 percent");
        if (bottom <= top || right <= left) throw std::runtime_error("the shade ends before it begins");
        constexpr BlankRect::Kind kKind = BlankRect::Kind::Shade;
        AddRect(kKind, {Dots(ColumnEdge(left)), RuleDots(top, kKind), Dots(ColumnEdge(right)), RuleDots(bottom, kKind)}, percent);
    }

    void TakePart(Directive& words) {
        const double line = Line(words);
        const FormFont& font =
            *std::find_if(kFormFonts.begin(), kFormFonts.end(), [](const FormFont& f) { return f.Name == "10b"; });
        PlacedText label = Place(font, words.Quoted(false));
        PlacedText title = Place(font, words.Quoted(false));
        const double left = ColumnEdge(kPartColumn);
        const double right = left + label.Width + 2 * kLabelMargin;
        AddRect(BlankRect::Kind::Label, {Dots(left), Dots(LineEdge(line + 0.04)), Dots(right), Dots(LineEdge(line + 0.96))});
        const double limit = Limit(words, kColumns + 1);
        Add(std::move(label), left + kLabelMargin, line, limit, true);
        Add(std::move(title), right + kLabelMargin, line, limit);
    }

    void TakeField(Directive& words) {
        const std::string kind = words.Word("kind");
        if (kind != "$" && kind != "T") throw std::runtime_error("a field is $ or T");
        BlankField field{kind == "$", 0, 0, 0, source_};
        field.Line = words.Whole("line") + down_;
        field.Column = words.Whole("column");
        field.Width = words.Whole("width");
        form_.Fields.push_back(field);
    }

    BlankForm form_;
    int source_ = 0;
    int repeats_ = 0;  // of the block that is being read
    std::vector<SourceLine> repeated_;
    int down_ = 0;    // lines to the row that a block is at
    double end_ = 0;  // of the last text
};

}  // namespace

double ColumnEdge(double column) {
    return (column - 1) * kColumnDots;
}

double LineEdge(double line) {
    return (line - kFirstLine) * kLineDots;
}

DotBox CellsOf(const BlankField& field) {
    const int left = Dots(ColumnEdge(field.Column));
    const int top = Dots(LineEdge(field.Line));
    return {left, top, left + field.Width * kColumnDots, top + kLineDots};
}

DotBox InkOf(const BlankWord& word) {
    return {Dots(word.Left), word.Baseline - Dots(word.Font->Printer.Points * kDotsPerPoint * kCapHeight),
            Dots(word.Left + word.Width), word.Baseline};
}

BlankForm ReadBlankForm(const std::string& name, std::string_view description) {
    return Reader(name).Read(description);
}

}  // namespace tallymar::tools
