#include "reports/AssetLabels.h"

#include "platform/runtime/Format.h"
#include "platform/runtime/Pictures.h"
#include "platform/runtime/Windows1252.h"
#include "reports/ReportWriter.h"
#include "store/AssetPass.h"

namespace tallymar {

namespace {

constexpr float kLabelLinesPerInch = 6.0F;
constexpr int kTextInset = 180;  // twips that stay free at both sides of a label, for sheets that are fed askew
constexpr int kMaxLines = 10;
constexpr int kMaxAcross = 3;
constexpr std::string_view kEvery = "*";

// The labels beside each other, filled from the left.
using SheetRow = std::array<std::array<std::string, kMaxAcross>, kMaxLines>;

bool Filtered(const std::string& wanted, std::string_view held) {
    return !wanted.empty() && wanted != kEvery && held != wanted;
}

bool WantsLabel(const AssetRecord& asset, const LabelOptions& options) {
    const std::string_view number = Trim(asset.AssetNum.View());
    if (Filtered(options.Division, asset.Division.Trimmed())) return false;
    if (Filtered(options.Department, asset.Department.Trimmed())) return false;
    if (!options.Start.empty() && number < Trim(options.Start)) return false;
    if (!options.End.empty() && number > Trim(options.End)) return false;
    return !asset.Sold && !asset.Abandoned && !asset.Casualty && !asset.LikeKind;
}

class LabelPrinter {
 public:
    LabelPrinter(const LabelSheet& sheet, PageDocument& v) : sheet_(sheet), v_(v) {
        v_.FontName = "Arial";
        v_.FontSize = sheet.FontSize;
        v_.Grid = {.CharsPerInch = sheet.CharsPerInch, .LinesPerInch = kLabelLinesPerInch};
    }

    void Add(const AssetRecord& asset) {
        const auto place = static_cast<std::size_t>(across_);
        auto line = static_cast<std::size_t>(sheet_.FirstLine);
        row_[line++][place] = "Asset : " + asset.AssetNum.ToString();
        row_[line++][place] = asset.Description;
        row_[line++][place] = "Serial #: " + asset.SerialNum;
        row_[line++][place] = "Placed in Service on " + Format(asset.InService, pictures::kLabelDate);
        if (++across_ == sheet_.LabelsAcross) PrintRow();
    }

    // A row that the last label has left partly filled is printed too.
    void Finish() {
        if (across_ > 0) PrintRow();
    }

 private:
    void PrintRow() {
        // Only a row that is really there starts another sheet: no label sheet is fed through empty.
        if (down_ == sheet_.LabelsDown) {
            v_.NewPage();
            down_ = 0;
        }
        const int top = sheet_.TopMarginLines + down_ * sheet_.LinesPerLabel;
        for (std::size_t line = 0; line < row_.size(); ++line) {
            for (std::size_t place = 0; place < static_cast<std::size_t>(across_); ++place) {
                if (row_[line][place].empty()) continue;
                v_.FrameOfTexts = FrameOf(top, place);
                VSendLJ(top + static_cast<int>(line), sheet_.LeftColumns[place], row_[line][place]);
            }
        }
        row_ = {};
        across_ = 0;
        ++down_;
    }

    // The grid drifts from the stock's labels by up to an inch and a half down the sheet: on the paper each text is brought back
    // to its own label.
    std::uint16_t FrameOf(int top, std::size_t place) {
        const LabelStock& stock = sheet_.Stock;
        return v_.AddFrame({.X = GridToTwips(static_cast<float>(sheet_.LeftColumns[place]), sheet_.CharsPerInch),
                            .Y = GridToTwips(static_cast<float>(top), kLabelLinesPerInch),
                            .PaperX = stock.Left + static_cast<int>(place) * stock.AcrossPitch + kTextInset,
                            .PaperY = stock.Top + down_ * stock.DownPitch,
                            .Width = stock.Width - 2 * kTextInset});
    }

    void VSendLJ(int row, int column, std::string_view text) {
        v_.CurrentX = GridToTwips(static_cast<float>(column), sheet_.CharsPerInch);
        v_.CurrentY = GridToTwips(static_cast<float>(row), kLabelLinesPerInch);
        v_.PrintText(text);
    }

    const LabelSheet& sheet_;
    PageDocument& v_;
    SheetRow row_;
    int across_ = 0;  // labels in the row
    int down_ = 0;    // rows on the sheet
};

void DeclareDetails(DetailTable& details) {
    details.Title = "Asset Labels";
    for (const char* heading : {"Asset", "Description", "Serial #"}) details.AddColumn(heading, DetailKind::Text);
    details.AddColumn("Placed in Service", DetailKind::Date);
}

void AddDetails(DetailTable& details, const AssetRecord& asset) {
    details.AddRow();
    for (const std::string_view text :
         {asset.AssetNum.View(), std::string_view(asset.Description), std::string_view(asset.SerialNum)}) {
        details.Add(RTrim(text));
    }
    details.Add(asset.InService);
}

}  // namespace

const LabelSheet* FindLabelSheet(std::string_view code) {
    for (const LabelSheet& sheet : kLabelSheets) {
        if (sheet.Code == code) return &sheet;
    }
    return nullptr;
}

int PrintAssetLabels(CompanySession& session, const LabelOptions& options, Prompts& prompts, PageDocument& v,
                     DetailTable* details) {
    const recordset::ReadSnapshot snapshot(session.Database());
    v.Source = session.DatabaseFileName();
    v.Title = "Asset Labels - " + session.CompanyName();
    LabelPrinter printer(*options.Sheet, v);
    if (details != nullptr) DeclareDetails(*details);
    int labels = 0;
    AssetRecord asset;
    AssetPass(session, prompts).ForEach(asset, [&] {
        if (!WantsLabel(asset, options)) return;
        printer.Add(asset);
        if (details != nullptr) AddDetails(*details, asset);
        ++labels;
    });
    printer.Finish();
    return labels;
}

}  // namespace tallymar
