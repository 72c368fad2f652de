#include "platform/page/PageText.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <unordered_map>
#include <vector>

#include "platform/fonts/FontMetrics.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

constexpr double kTwipsPerInch = 1440.0;

bool IsFigure(std::string_view text) {
    return text.find_first_of("0123456789") != std::string_view::npos &&
           text.find_first_not_of("0123456789.,()-$% ") == std::string_view::npos;
}

struct Placed {
    int Line;
    int Column;
    int End;
    bool MayBeCut;
    std::string Text;
};

struct Rule {
    int From;
    int To;  // the column after it
};

class PageGrid {
 public:
    PageGrid(const PageDocument& pages, int page) : pages_(pages) {
        const PageItem* begin = pages.PageBegin(page);
        const PageItem* end = pages.PageEnd(page);
        for (const PageItem* item = begin; item != end; ++item) {
            if (item->Op != PageItem::Kind::Text) continue;
            ++leftEdges_[item->X];
            ++rightEdges_[item->X2];
        }
        for (const PageItem* item = begin; item != end; ++item) {
            if (item->Op == PageItem::Kind::Text) {
                Place(*item);
            } else if (item->Y == item->Y2) {
                PlaceRule(*item);
            }
        }
        std::stable_sort(texts_.begin(), texts_.end(), [](const Placed& a, const Placed& b) {
            return a.Line != b.Line ? a.Line < b.Line : a.Column < b.Column;
        });
    }

    std::string Print() {
        std::string out;
        bool blankAbove = false;
        std::size_t next = 0;
        const int last = std::max(texts_.empty() ? -1 : texts_.back().Line, rules_.empty() ? -1 : rules_.rbegin()->first);
        for (int line = 0; line <= last; ++line) {
            if (const auto rules = rules_.find(line); rules != rules_.end()) {
                if (blankAbove) out.pop_back();
                AppendLine(DashesOf(rules->second), out);
            }
            std::size_t end = next;
            while (end < texts_.size() && texts_[end].Line == line) ++end;
            const std::vector<std::string> layers = LayersOf(next, end);
            for (const std::string& layer : layers) AppendLine(layer, out);
            blankAbove = layers.empty() && line < last;
            if (layers.empty() && line < last) out.push_back('\n');
            next = end;
        }
        return out;
    }

 private:
    double Column(double twips) const { return (twips - pages_.Grid.Left) * pages_.Grid.CharsPerInch / kTwipsPerInch; }
    int NearestColumn(double twips) const { return static_cast<int>(std::floor(Column(twips) + 0.5)); }
    // Does a position stand on the grid, where flush edges are put?
    bool OnGrid(int twips) const {
        const double column = NearestColumn(twips) * kTwipsPerInch / pages_.Grid.CharsPerInch;
        return std::abs(pages_.Grid.Left + column - twips) <= 0.51;
    }
    int Line(int twips) const {
        return static_cast<int>(std::floor((twips - pages_.Grid.Top) * pages_.Grid.LinesPerInch / kTwipsPerInch + 0.5));
    }

    void Place(const PageItem& item) {
        Placed placed;
        placed.Text = std::string(pages_.Text(item));
        std::transform(placed.Text.begin(), placed.Text.end(), placed.Text.begin(), DrawnAs);
        const int length = static_cast<int>(placed.Text.size());
        const int lefts = OnGrid(item.X) ? leftEdges_[item.X] : 0;
        const int rights = OnGrid(item.X2) ? rightEdges_[item.X2] : 0;
        const bool figure = IsFigure(placed.Text);
        const bool flushRight = rights > lefts || (rights == lefts && rights > 0 && figure);
        if (flushRight) {
            placed.Column = NearestColumn(item.X2) - length;
        } else if (lefts > 0) {
            placed.Column = NearestColumn(item.X);
        } else {
            placed.Column = static_cast<int>(std::floor(Column((item.X + item.X2) / 2.0) - length / 2.0 + 0.5));
        }
        if (placed.Column < 0) placed.Column = 0;
        placed.Line = std::max(0, Line(item.Y));
        placed.End = placed.Column + length;
        placed.MayBeCut = !flushRight && !figure;
        texts_.push_back(std::move(placed));
    }

    void PlaceRule(const PageItem& item) {
        const Rule rule{std::max(0, NearestColumn(std::min(item.X, item.X2))), NearestColumn(std::max(item.X, item.X2))};
        if (rule.To > rule.From) rules_[std::max(0, Line(item.Y))].push_back(rule);
    }

    static std::string DashesOf(const std::vector<Rule>& rules) {
        std::string dashes;
        for (const Rule& rule : rules) {
            const auto to = static_cast<std::size_t>(rule.To);
            if (dashes.size() < to) dashes.resize(to, ' ');
            std::fill(dashes.begin() + rule.From, dashes.begin() + rule.To, '-');
        }
        return dashes;
    }

    // The texts of one line of the grid, sorted by column, as one line of print or as many as it takes to keep them apart.
    std::vector<std::string> LayersOf(std::size_t begin, std::size_t end) {
        std::vector<std::string> layers;
        for (std::size_t i = begin; i < end; ++i) {
            Placed& placed = texts_[i];
            const int neighbour = i + 1 < end ? texts_[i + 1].Column : placed.End + 1;
            if (placed.MayBeCut && neighbour - 1 > placed.Column && neighbour <= placed.End) {
                placed.Text.resize(static_cast<std::size_t>(neighbour - 1 - placed.Column));
            }
            PutInto(layers, placed);
        }
        return layers;
    }

    static void PutInto(std::vector<std::string>& layers, const Placed& placed) {
        const auto column = static_cast<std::size_t>(placed.Column);
        // Two figures that touch are one figure to the reader.
        const std::size_t free = column > 0 && IsFigure(placed.Text) ? column - 1 : column;
        for (std::string& layer : layers) {
            if (layer.find_first_not_of(' ', free) != std::string::npos) continue;
            layer.resize(column, ' ');
            layer += placed.Text;
            return;
        }
        layers.push_back(std::string(column, ' ') + placed.Text);
    }

    static void AppendLine(std::string_view line, std::string& out) {
        AppendUtf8(RTrim(line), out);
        out.push_back('\n');
    }

    const PageDocument& pages_;
    std::unordered_map<int, int> leftEdges_;
    std::unordered_map<int, int> rightEdges_;
    std::vector<Placed> texts_;
    std::map<int, std::vector<Rule>> rules_;  // by the line that they stand above
};

}  // namespace

std::string PageText(const PageDocument& pages, int page) {
    return PageGrid(pages, page).Print();
}

}  // namespace tallymar
