#include <gtest/gtest.h>

#include <set>

#include "FormCompany.h"
#include "irsforms/Form4255.h"
#include "irsforms/Form4562.h"
#include "irsforms/Form4797.h"
#include "irsforms/Form8824.h"
#include "irsforms/FormSchD.h"
#include "store/Vocabularies.h"
#include "support/Failures.h"
#include "support/OtherProgram.h"

namespace tallymar::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kNames[] = {"4562", "4797", "D", "4255", "8824"};

// Takes assets without a company file, under any text of the Round column.
template <typename Form>
Form Computed(const std::vector<AssetRecord>& assets, std::string_view round, const char* type = "") {
    TempFolder folder;
    FormOutput output(folder.Path());
    const FormSettings settings{.Company = "Company",
                                .Id = "1",
                                .RoundText = std::string(round),
                                .YearEnd = Date::FromYmd(2002, 12, 31),
                                .Options = {.Type = type}};
    FormScan scan{
        .Settings = settings, .Tell = [](const auto&) {}, .Output = output, .Find = [](const auto&, auto&) { return false; }};
    Form form;
    for (const AssetRecord& asset : assets) form.Take(asset, scan);
    form.ComputeLines(settings);
    return form;
}

CurrencyAmount Money(const char* text) {
    return CurrencyAmount::Parse(text).value();
}

std::map<fs::path, std::string> FilesIn(const fs::path& folder) {
    std::map<fs::path, std::string> files;
    for (const auto& entry : fs::directory_iterator(folder)) files[entry.path().filename()] = ReadAll(entry.path());
    return files;
}

// Every cent of current depreciation is on a line of the form or named as left out.
TEST(FormRuns, TheThreeSumsAgreeAndTheFormsLinesBearThemOut) {
    FormCompany company(kEveryKind);
    CurrencyAmount inBook;
    recordset::Recordset& assets = company.Session.AssetsRecordset();
    for (assets.MoveFirst(); !assets.Eof(); assets.MoveNext()) inBook += assets.Get("CurrDepr(1)").Currency();
    std::unique_ptr<IrsForm> form = MakeForm("4562");
    company.Create(form);
    const DepreciationSums sums = form->Sums().value();
    EXPECT_EQ(sums.InBook, inBook);
    EXPECT_EQ(sums.OnForm + sums.LeftOut, inBook);
    EXPECT_GT(sums.LeftOut, CurrencyAmount());
    const FormLines& lines = form->Lines();
    EXPECT_EQ(sums.OnForm, lines[16] + lines[17] + lines[19] + lines[20] + lines[28] + lines[44]);
}

TEST(FormRuns, AWorkFileReadsBackToTheFormThatWroteIt) {
    FormCompany company(kEveryKind);
    for (const char* name : kNames) {
        std::unique_ptr<IrsForm> form = MakeForm(name);
        company.Create(form);
        const std::string text = form->WorkFileText();
        const std::unique_ptr<IrsForm> read = ReadWorkFile(name, text);
        EXPECT_EQ(read->WorkFileText(), text) << name;
        for (int line = 0; line <= form->Lines().Last() && std::string_view(name) != "8824"; ++line) {
            EXPECT_EQ(read->Lines()[line], form->Lines()[line]) << name << " line " << line;
        }
        EXPECT_TRUE(FailureOf([&] { ReadWorkFile(name, text.substr(0, text.size() / 2)); })) << name;
    }
    EXPECT_EQ(FilesIn(company.Out()).count("F45621.001"), 1U);
    EXPECT_EQ(FilesIn(company.Out()).count("F88241.02"), 1U);
}

// ADS in its first year ends the run; nothing of it is left, on the disk or in the window.
TEST(FormRuns, AFailedRunLeavesTheEarlierPagesAndTheFormAsTheyWere) {
    FormCompany company(kEveryKind);
    std::unique_ptr<IrsForm> form = MakeForm("4562");
    company.Create(form);
    const auto before = FilesIn(company.Out());
    const std::string state = form->WorkFileText();
    AssetRecord ads = company.Read("E03");
    ads.AssetNum = "ADS001";
    ads.DeprType[1] = kAds;
    company.Session.AddAssetRecord(ads);
    const auto failure = ErrorOf([&] { company.Create(form); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->Code(), Failure::TypeMismatch);
    EXPECT_EQ(std::string(failure->what()),
              "Asset ADS001: Type mismatch: placed in service this year under ADS, which the form cannot take");
    EXPECT_EQ(FilesIn(company.Out()), before);
    EXPECT_EQ(form->WorkFileText(), state);

    EXPECT_TRUE(FailureOf([&] { CreateForm(form, company.Session, {.Book = 2}, company.Folder / "missing", company.Prompts); }));
}

TEST(FormRuns, ASecondRunAddsAndPagesOfAnEarlierRunAreNamed) {
    FormCompany company(kEveryKind);
    std::unique_ptr<IrsForm> form = MakeForm("4562");
    company.Create(form, {.Division = "SMALL"});
    const CurrencyAmount once = form->Lines()[17] + form->Lines()[19] + form->Lines()[28];
    EXPECT_TRUE(company.Create(form, {.Division = "SMALL"}).Pages.size() > 2U);
    EXPECT_EQ(form->Lines()[17] + form->Lines()[19] + form->Lines()[28], once + once);
    const DepreciationSums sums = form->Sums().value();
    EXPECT_EQ(sums.InBook, sums.OnForm + sums.LeftOut);

    std::unique_ptr<IrsForm> fresh = MakeForm("4562");
    const FormResult result = company.Create(fresh, {.Division = "SMALL"});
    EXPECT_EQ(FormNotes(*fresh, result).front(), "245623 is from an earlier run");
}

TEST(FormRuns, ExchangesAreNumberedAndTheRecordsetStaysOnItsAsset) {
    FormCompany company(kEveryKind);
    company.Session.AssetsRecordset().Seek("C07");
    std::unique_ptr<IrsForm> form = MakeForm("8824");
    const FormResult result = company.Create(form);
    EXPECT_EQ(result.Message, "94 Assets processed and 3 Asset(s) Like-Kind exchanged");
    // The exchange without a date is written over the page before it; K02, a casualty too, is met before the X assets.
    EXPECT_EQ(company.Session.AssetsRecordset().Get("AssetNum").ToText().substr(0, 3), "C07");
    std::set<std::string> boxes;
    for (const auto& said : company.Prompts.Messages) boxes.insert(said.Text);
    EXPECT_EQ(boxes.count("Asset -  - Not Found "), 1U);
    EXPECT_EQ(boxes.count("Processing Asset - Van given up - Sold on 8/1/2002"), 1U);
}

// Whoever saves while a message is read need not wait, and the form is of the state before.
TEST(FormRuns, MessagesComeWhenEverythingHasBeenRead) {
    struct SavingPrompts : ScriptedPrompts {
        explicit SavingPrompts(const fs::path& file) : Other(file) {}
        void Message(std::string_view text, std::string_view title, MessageKind kind) override {
            ScriptedPrompts::Message(text, title, kind);
            Other.Run("UPDATE Assets SET LikeKind = 0, \"TaxCredit(1)\" = 0");
        }
        OtherProgram Other;
    };
    for (const char* name : {"4255", "8824"}) {
        FormCompany company(kEveryKind);
        std::unique_ptr<IrsForm> quiet = MakeForm(name);
        company.Create(quiet);
        ASSERT_GT(company.Prompts.Messages.size(), 1U);
        SavingPrompts saving(company.File());
        std::unique_ptr<IrsForm> form = MakeForm(name);
        CreateForm(form, company.Session, {}, company.Out(), saving);
        EXPECT_EQ(saving.Messages.size(), company.Prompts.Messages.size());
        EXPECT_EQ(form->Message(), quiet->Message());
    }
}

TEST(FormRuns, RoundingGoesByColumnAndHalvesGoUp) {
    AssetRecord machine = Machine("A1", Date::FromYmd(2002, 3, 1), 1000);
    machine.Basis[1] = Money("1000.50");
    machine.CurrDepr[1] = Money("100.50");
    AssetRecord older = Machine("A2", Date::FromYmd(2000, 3, 1), 1000);
    older.CurrDepr[1] = Money("10.49");
    const auto form = Computed<Form4562>({machine, older}, "Y");
    EXPECT_EQ(form.Class(2).RowBasis, Units(1001));
    EXPECT_EQ(form.Line(22), Units(111));
    EXPECT_EQ(form.Sums()->OnForm, Money("110.99"));
    EXPECT_EQ(FormRounding("Y")(Money("-2.5")), Units(-2));

    AssetRecord stock = Machine("D1", Date::FromYmd(2000, 3, 1), 100);
    stock.DeprType[1] = kStck;
    stock.Description = "Shares";
    stock.Purchased = stock.InService;
    stock.DateSold = Date::FromYmd(2002, 3, 1);
    stock.SoldAmount = Money("60.40");
    const auto schedule = Computed<FormSchD>({stock}, "Y");
    EXPECT_EQ(schedule.Line(16), Units(-40));  // -39.60
    EXPECT_EQ(Computed<FormSchD>({stock}, "True").Line(16), Money("-39.60"));
}

TEST(FormRuns, TheEntityTypeIsReadAsItIsMeantOrRefused) {
    FormCompany company(kEveryKind);
    std::map<std::string, std::string> pages;
    for (const char* type : {"1120S", " 1120s ", "1120", ""}) {
        std::unique_ptr<IrsForm> form = MakeForm("4562");
        company.Create(form, {.Type = type, .Division = "SMALL"});
        pages[type] = ReadAll(company.Out() / "245621.LDT");
    }
    EXPECT_EQ(pages[" 1120s "], pages["1120S"]);
    EXPECT_NE(pages["1120"], pages["1120S"]);
    EXPECT_EQ(pages[""], pages["1120"]);
    std::unique_ptr<IrsForm> form = MakeForm("4797");
    EXPECT_EQ(FailureOf([&] { company.Create(form, {.Type = "1120-S"}); }), Failure::InvalidCall);
}

// Three times 33.335: the sum of what the page shows.
TEST(FormRuns, RecaptureAddsUpAsItIsShown) {
    AssetRecord asset = Machine("T1", Date::FromYmd(1980, 1, 1), 1000);
    asset.DeprType[1] = kAcam;
    asset.ClassLife = Units(8);
    asset.TaxCredit[1] = Units(50);
    asset.DateSold = Date::FromYmd(1984, 6, 1);
    EXPECT_EQ(Computed<Form4255>({asset, asset, asset}, "").Line(9), Money("100.02"));
}

// A row for each amortization with a cost: with one that has none among them the last is on no row, and is told.
TEST(FormRuns, AnAmortizationOnNoRowIsTold) {
    AssetRecord free = Machine("M1", Date::FromYmd(2002, 3, 1), 0);
    free.AssetType = "IN";
    free.CurrDepr[1] = Units(5);
    AssetRecord costed = free;
    costed.Basis[1] = Units(100);
    std::vector<AssetRecord> assets = {free, costed, costed};
    for (const std::size_t shown : {2U, 3U}) {
        assets.back().AssetNum = "LAST";
        const auto form = Computed<Form4562>(assets, "");
        EXPECT_EQ(form.ShownAmortizations().size(), shown);
        EXPECT_EQ(form.Line(44), Units(5 * static_cast<int>(assets.size())));
        ASSERT_EQ(form.NotOnForm().size(), 1U);
        EXPECT_EQ(form.NotOnForm().front().AssetNum, "LAST");
        assets.insert(assets.begin() + 1, costed);
    }
}

TEST(FormRuns, TheHundredAndFirstExchangeNamesThePageThatItReplaces) {
    AssetRecord asset = Machine("X1", Date::FromYmd(2000, 3, 1), 100);
    asset.LikeKind = true;
    asset.DateSold = Date::FromYmd(2002, 3, 1);
    std::vector<AssetRecord> assets(101, asset);
    assets.back().AssetNum = "X101";
    const auto form = Computed<Form8824>(assets, "");
    ASSERT_EQ(form.NotOnForm().size(), 1U);
    EXPECT_EQ(form.NotOnForm().front().AssetNum, "X101");
    EXPECT_EQ(form.NotOnForm().front().Reason, "its page 28824101 has taken the place of that of X1");
}

TEST(FormRuns, AFullTableEndsTheRun) {
    AssetRecord stock = Machine("D1", Date::FromYmd(2000, 3, 1), 100);
    stock.DeprType[1] = kStck;
    stock.Sold = true;
    EXPECT_EQ(Computed<FormSchD>(std::vector<AssetRecord>(200, stock), "").SaleTable().size(), 200U);
    EXPECT_EQ(FailureOf([&] { Computed<FormSchD>(std::vector<AssetRecord>(201, stock), ""); }), Failure::SubscriptOutOfRange);
    AssetRecord sold = Machine("S1", Date::FromYmd(2000, 3, 1), 100);
    sold.Sold = true;
    EXPECT_EQ(FailureOf([&] { Computed<Form4797>(std::vector<AssetRecord>(101, sold), ""); }), Failure::SubscriptOutOfRange);

    // The 41st listed property and the 41st election are dropped, and named.
    AssetRecord listed = Machine("L1", Date::FromYmd(2002, 3, 1), 100);
    listed.Description = "Camera";
    listed.Listed[1] = true;
    listed.CurrDepr[1] = Units(3);
    AssetRecord elected = Machine("E1", Date::FromYmd(2002, 3, 1), 100);
    elected.Section179[1] = Units(2);
    std::vector<AssetRecord> many(42, listed);
    many.insert(many.end(), 41, elected);
    const auto form = Computed<Form4562>(many, "");
    EXPECT_EQ(form.Line(28), Units(120));
    EXPECT_EQ(form.Line(6), Units(80));
    EXPECT_EQ(form.Sums()->LeftOut, Units(6));
    EXPECT_EQ(form.NotOnForm().size(), 3U);
}

}  // namespace
}  // namespace tallymar::test
