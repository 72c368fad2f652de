#include "reports/AssetLabels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PageGrid.h"
#include "ReportCompany.h"
#include "platform/page/PagePlacement.h"

namespace tallymar::test {
namespace {

using testing::Contains;
using testing::ElementsAre;

AssetRecord Labelled(int number) {
    AssetRecord asset = Machine("A" + std::to_string(100 + number), Date::FromYmd(2003, 3, 7), 100);
    asset.Description = "Desk " + std::to_string(number);
    return asset;
}

struct Position {
    int X;
    int Y;
};

std::vector<Position> LabelCorners(const PageDocument& canvas, int page) {
    std::vector<Position> corners;
    for (const PageItem* item = canvas.PageBegin(page); item != canvas.PageEnd(page); ++item) {
        if (canvas.Text(*item).starts_with("Asset : ")) corners.push_back({item->X, item->Y});
    }
    return corners;
}

TEST(AssetLabels, StandWhereTheSheetHasThem) {
    ReportCompany company;
    for (int number = 0; number < 32; ++number) company.Add(Labelled(number));
    for (const LabelSheet& sheet : kLabelSheets) {
        PageDocument canvas(kLetterPortrait);
        EXPECT_EQ(PrintAssetLabels(company.Session, {.Sheet = &sheet, .Start = "", .End = "", .Division = "", .Department = ""},
                                   company.Prompts, canvas),
                  32);
        const int perSheet = sheet.LabelsAcross * sheet.LabelsDown;
        EXPECT_EQ(canvas.PageCount(), (32 + perSheet - 1) / perSheet) << sheet.Code;
        const std::vector<Position> corners = LabelCorners(canvas, 1);
        ASSERT_EQ(corners.size(), static_cast<std::size_t>(std::min(perSheet, 32))) << sheet.Code;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const std::size_t across = i % static_cast<std::size_t>(sheet.LabelsAcross);
            const int down = static_cast<int>(i) / sheet.LabelsAcross;
            const int line = sheet.TopMarginLines + down * sheet.LinesPerLabel + sheet.FirstLine;
            EXPECT_EQ(corners[i].Y, line * 240);  // six lines to the inch
            EXPECT_EQ(corners[i].X, GridToTwips(static_cast<float>(sheet.LeftColumns[across]), sheet.CharsPerInch));
        }
        EXPECT_EQ(canvas.Font(*canvas.PageBegin(1)).Size, sheet.FontSize);
    }
}

// Whatever the grid says, on the paper every text lies within its own label of the stock.
TEST(AssetLabels, AreDeliveredWithinTheEdgesOfTheStock) {
    ReportCompany company;
    for (int number = 0; number < 40; ++number) {
        AssetRecord asset = Labelled(number);
        asset.Description = std::string(25, 'W');
        company.Add(asset);
    }
    for (const LabelSheet& sheet : kLabelSheets) {
        PageDocument canvas(kLetterPortrait);
        PrintAssetLabels(company.Session, {.Sheet = &sheet, .Start = "", .End = "", .Division = "", .Department = ""},
                         company.Prompts, canvas);
        const PagePlacement placement(canvas, 1);
        const LabelStock& stock = sheet.Stock;
        int label = -1;
        for (const PageItem* item = canvas.PageBegin(1); item != canvas.PageEnd(1); ++item) {
            const int perLine = sheet.LabelsAcross;
            const auto index = static_cast<int>(item - canvas.PageBegin(1));
            label = index / (4 * perLine) * perLine + index % perLine;  // four lines of each row of labels
            const double left = stock.Left + label % perLine * stock.AcrossPitch;
            const double top = stock.Top + label / perLine * stock.DownPitch;
            const PagePlacement::Place place = placement.PlaceOf(*item);
            canvas.FontSize = sheet.FontSize;
            EXPECT_GE(place.X, left + 90) << sheet.Code;
            EXPECT_LE(place.X + canvas.TextWidth(placement.ShownText(*item)), left + stock.Width - 90) << sheet.Code;
            EXPECT_GE(place.Y, top + 90) << sheet.Code;
            EXPECT_LE(place.Y + item->Y2 - item->Y, top + stock.Height - 90) << sheet.Code;
        }
        EXPECT_EQ(label + 1, sheet.LabelsAcross * sheet.LabelsDown);
        EXPECT_LE(stock.Left + (sheet.LabelsAcross - 1) * stock.AcrossPitch + stock.Width, canvas.Paper().Width);
        EXPECT_LE(stock.Top + sheet.LabelsDown * stock.DownPitch, canvas.Paper().Height);
    }
}

TEST(AssetLabels, FullSheetsFeedNoEmptyOne) {
    ReportCompany company;
    for (int number = 0; number < 30; ++number) company.Add(Labelled(number));
    PageDocument canvas(kLetterPortrait);
    PrintAssetLabels(company.Session, {}, company.Prompts, canvas);
    EXPECT_EQ(canvas.PageCount(), 1);
}

TEST(AssetLabels, SayFourLinesAndLeaveOutTheDisposed) {
    ReportCompany company;
    company.Add(Labelled(1));
    bool AssetRecord::*const flags[] = {&AssetRecord::Sold, &AssetRecord::Abandoned, &AssetRecord::Casualty,
                                        &AssetRecord::LikeKind};
    for (int i = 0; i < 4; ++i) {
        AssetRecord asset = Labelled(2 + i);
        asset.*flags[i] = true;
        company.Add(asset);
    }
    PageDocument canvas(kLetterPortrait);
    PrintAssetLabels(company.Session, {}, company.Prompts, canvas);
    EXPECT_THAT(TextsOf(canvas), ElementsAre("Asset : A101  ", "Desk 1", "Serial #: ", "Placed in Service on 03/07/2003"));
}

TEST(AssetLabels, AreFilteredByNumberDivisionAndDepartment) {
    ReportCompany company;
    for (int number = 1; number <= 4; ++number) {
        AssetRecord asset = Labelled(number);
        asset.Division = number <= 2 ? "NORTH" : "SOUTH";
        asset.Department = number % 2 == 0 ? "SHOP" : "OFFICE";
        company.Add(asset);
    }
    const auto labels = [&](LabelOptions options) {
        PageDocument canvas(kLetterPortrait);
        return PrintAssetLabels(company.Session, options, company.Prompts, canvas);
    };
    recordset::Recordset& assets = company.Session.AssetsRecordset();
    assets.Seek("A103");
    LabelOptions options;
    options.Start = "A102";
    EXPECT_EQ(labels(options), 3);
    ASSERT_TRUE(assets.HasCurrentRow()) << "an asset form that is open saves only while the recordset is on a row";
    EXPECT_EQ(assets.Get("AssetNum").Text(), "A103  ");
    options.End = "A103";
    EXPECT_EQ(labels(options), 2);
    options.Start = "A104";
    EXPECT_EQ(labels(options), 0);
    options = {};
    options.Division = "NORTH";
    EXPECT_EQ(labels(options), 2);
    options.Department = "SHOP";
    EXPECT_EQ(labels(options), 1);
    options.Division = options.Department = "*";
    EXPECT_EQ(labels(options), 4);
}

}  // namespace
}  // namespace tallymar::test
