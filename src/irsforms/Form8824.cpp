#include "irsforms/Form8824.h"

#include <algorithm>

#include "irsforms/FormTables.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/Windows1252.h"
#include "store/FormPageFile.h"
#include "store/Helpers.h"
#include "store/Vocabularies.h"

namespace tallymar {

namespace {

using Exchange = Form8824::Exchange;
using L = FormLineOf;

constexpr std::array<std::string_view, 1> kPages = {"288241"};
constexpr int kValueReceived = 16;
constexpr int kBasisGivenUp = 18;

// Slots of ExchangeText. Those that the program does not fill are the preparer's, at the places that the page keeps for them.
enum TextSlot {
    kName = 0,
    kNumber = 1,
    kGivenUpFirst = 2,
    kReceivedFirst = 3,
    kRelatedParty = 5,  // "1", "2" or "3"
    kPartyNumber = 9,
    kPartyName = 10,
    kPartyAddress = 11,
    kPartyCity = 12,
    kPartyRelation = 13,
    kPartyDisposed = 14,  // "Y" or "N"
    kYouDisposed = 15,
    kDateAcquired = 16,
    kDateTransferred = 17,
    kDateIdentified = 18,
    kDateReceived = 19,
    kExceptionA = 20,  // "Y"
    kExceptionB = 21,
    kExceptionC = 22,
    kGivenUp = 26,
    kReceived = 27
};

template <int Slot>
std::string TextOf(const Exchange& exchange) {
    return exchange.Text(Slot);
}
template <int Slot, char Answer>
std::string MarkOf(const Exchange& exchange) {
    return std::string(CheckMark(exchange.Text(Slot) == std::string(1, Answer)));
}

ShownAmount Shown(const Exchange& exchange, CurrencyAmount amount) {
    return {amount, exchange.InDollars ? "###,###,###." : "#,###,###.##"};
}

constexpr auto kPage = std::to_array<PageField<Exchange>>({
    {10, 5, TextOf<kName>, 54},
    {10, 63, TextOf<kNumber>},
    {13, 31, TextOf<kGivenUpFirst>},
    {14, 8, TextOf<kGivenUp>},
    {15, 31, TextOf<kReceivedFirst>},
    {16, 8, TextOf<kReceived>},
    {17, 66, TextOf<kDateAcquired>},
    {18, 66, TextOf<kDateTransferred>},
    {19, 66, TextOf<kDateIdentified>},
    {20, 66, TextOf<kDateReceived>},
    {22, 8, MarkOf<kRelatedParty, '1'>},
    {22, 25, MarkOf<kRelatedParty, '2'>},
    {22, 43, MarkOf<kRelatedParty, '3'>},
    {25, 8, TextOf<kPartyName>, 54},
    {26, 63, TextOf<kPartyNumber>, 15},
    {28, 8, TextOf<kPartyAddress>, 54},
    {30, 8, TextOf<kPartyCity>, 54},
    {31, 63, TextOf<kPartyRelation>, 15},
    {33, 70, MarkOf<kPartyDisposed, 'Y'>},
    {33, 75, MarkOf<kPartyDisposed, 'N'>},
    {35, 70, MarkOf<kYouDisposed, 'Y'>},
    {35, 75, MarkOf<kYouDisposed, 'N'>},
    {39, 8, MarkOf<kExceptionA, 'Y'>},
    {40, 8, MarkOf<kExceptionB, 'Y'>},
    {41, 8, MarkOf<kExceptionC, 'Y'>},
    {46, 50, L{12}, Shown},
    {47, 50, L{13}, Shown},
    {49, 66, L{14}, Shown},
    {51, 66, L{15}, Shown},
    {52, 66, L{16}, Shown},
    {53, 66, L{17}, Shown},
    {55, 66, L{18}, Shown},
    {56, 66, L{19}, Shown},
    {57, 66, L{20}, Shown},
    {58, 66, L{21}, Shown},
    {60, 66, L{22}, Shown},
    {61, 66, L{23}, Shown},
    {62, 66, L{24}, Shown},
    {63, 66, L{25}, Shown},
});

}  // namespace

const FormInfo Form8824::kInfo = {.Name = "8824",
                                  .Title = "Form 8824",
                                  .Window = "frmCreate8824",
                                  .WindowTitle = "Create Form 8824",
                                  .CreateButton = "cmdCreate8824",
                                  .CreateCaption = "Create 8824",
                                  .EditButton = "cmdEdit8824",
                                  .EditCaption = "Edit Form 8824",
                                  .TypeCaption = {},
                                  .Pages = kPages,
                                  .PageForEachAsset = true};

Form8824::Form8824() : IrsForm(25) {}

std::string Form8824::Message() const {
    return std::to_string(AssetsRead) + " Assets processed and " + std::to_string(exchangeCount_) +
           " Asset(s) Like-Kind exchanged";
}

void Form8824::FillExchange(const AssetRecord& asset, const AssetRecord* received, FormScan& scan, Exchange& exchange) {
    const int book = scan.Settings.Options.Book;
    boxes_.push_back("Processing Asset - " + std::string(Trim(asset.Description)) + " - Sold on " +
                     FormatShortDate(asset.DateSold));
    scan.Tell(boxes_.back());
    exchange.ExchangeLine[kBasisGivenUp] =
        asset.Basis[book] - asset.PrevDepr[book] - asset.CurrDepr[book] - asset.AddlDepr[book] - asset.Section179[book];
    totals_.Basis += asset.Basis[book];
    totals_.PrevDepr += asset.PrevDepr[book];
    totals_.CurrDepr += asset.CurrDepr[book];
    totals_.BasisAgain += asset.Basis[book];
    exchange.ExchangeText[kGivenUp] = asset.Description;
    exchange.ExchangeText[kDateAcquired] = FormDate(asset.Purchased);
    exchange.ExchangeText[kDateTransferred] = FormDate(asset.DateSold);
    if (received != nullptr && received->AssetNum == asset.AssocAsset) {
        exchange.Received = received->AssetNum.Trimmed();
        exchange.ExchangeText[kReceived] = received->Description;
        exchange.ExchangeText[kDateIdentified] = FormDate(received->Purchased);
        exchange.ExchangeText[kDateReceived] = FormDate(received->InService);
        exchange.ExchangeLine[kValueReceived] = received->FairMktValue;
    }
    lines_[kBasisGivenUp] += exchange.ExchangeLine[kBasisGivenUp];
    lines_[kValueReceived] += exchange.ExchangeLine[kValueReceived];
    ++exchangeCount_;
}

void Form8824::Take(const AssetRecord& asset, FormScan& scan) {
    const int type = asset.DeprType[scan.Settings.Options.Book];
    if (type == kStck || type == kColl || type == kXxxx || !asset.LikeKind) return;
    AssetRecord received;
    const bool found = scan.Find(asset.AssocAsset, received);
    if (!found) {
        boxes_.push_back("Asset - " + std::string(asset.AssocAsset.Trimmed()) + " - Not Found ");
        scan.Tell(boxes_.back());
    }

    Exchange exchange;
    exchange.AssetNum = asset.AssetNum.Trimmed();
    exchange.InDollars = FormRounding(scan.Settings.RoundText).IsOn();
    const bool exchanged = !asset.DateSold.IsNone();
    if (exchanged) FillExchange(asset, found ? &received : nullptr, scan, exchange);
    exchange.ExchangeText[kName] = Company();
    exchange.ExchangeText[kNumber] = Id();
    const std::string count = PageSequenceText(exchangeCount_);
    exchange.File = std::string(kPages.front()) + count;
    // COMPAT: an exchange without a date is written under the count as it stands, over the page of the exchange before it.
    std::string reason = exchanged ? "" : "no date sold: its page " + exchange.File + " is empty";
    const auto before =
        std::find_if(exchanges_.rbegin(), exchanges_.rend(), [&](const Exchange& other) { return other.File == exchange.File; });
    if (before != exchanges_.rend()) {
        reason += (exchanged ? "its page " + exchange.File : " and") + " has taken the place of that of " + before->AssetNum;
    }
    if (!reason.empty()) LeaveOut(asset, std::move(reason));

    PageSheet page(kPages.front());
    page.Lay(kPage, exchange);
    scan.Output.WritePage(exchange.File, page);
    exchanges_.push_back(std::move(exchange));
    scan.Output.WriteWorkFile("F88241." + count, WorkFileText());
}

void Form8824::ExchangeWorkFile(WorkFile& file) {
    if (file.Reads()) exchanges_.emplace_back();
    Exchange& exchange = exchanges_.back();
    file.Item(exchange.ExchangeText[kName]);
    file.Item(exchange.ExchangeLine[kValueReceived]);
    file.Line(exchange.ExchangeLine[kBasisGivenUp]);
    for (std::size_t line = 1; line < exchange.ExchangeLine.size(); ++line) file.Line(exchange.ExchangeLine[line]);
    for (std::string& text : exchange.ExchangeText) file.Line(text);
}

void Form8824::WriteTables(JsonWriter& json) const {
    json.BeginArray("exchanges");
    for (const Exchange& exchange : exchanges_) {
        json.BeginObject();
        json.Text("AssetNum", exchange.AssetNum);
        json.Text("file", exchange.File);
        json.Text("received", exchange.Received);
        json.BeginObject("ExchangeLine");
        for (std::size_t line = 0; line < exchange.ExchangeLine.size(); ++line) {
            if (!exchange.ExchangeLine[line].IsZero()) json.Text(std::to_string(line), DecimalText(exchange.ExchangeLine[line]));
        }
        json.End();
        json.BeginObject("ExchangeText");
        for (std::size_t slot = 0; slot < exchange.ExchangeText.size(); ++slot) {
            if (!exchange.ExchangeText[slot].empty()) json.Text(std::to_string(slot), exchange.ExchangeText[slot]);
        }
        json.End();
        json.End();
    }
    json.End();
    json.BeginArray("boxes");
    for (const std::string& box : boxes_) json.Text({}, box);
    json.End();
}

}  // namespace tallymar
