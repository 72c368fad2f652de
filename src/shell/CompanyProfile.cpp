#include "shell/CompanyProfile.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/runtime/DateText.h"
#include "platform/runtime/PlatformError.h"
#include "store/Books.h"
#include "store/Helpers.h"

namespace tallymar {

namespace {

constexpr std::array<std::string_view, kLastBook + 1> kYearEnds = {"", "FYEFederal", "FYEState", "FYEBook", "FYEAMT"};

Date DateOf(const recordset::Value& value) {
    return value.IsDate() ? value.AsDate() : Date();
}

void GoToRow(recordset::Recordset& company) {
    if (!company.HasCurrentRow()) company.MoveFirst();
}

}  // namespace

CompanyProfile CompanyProfile::LoadEdit(recordset::Recordset& company) {
    if (company.RecordCount() < 1) {
        company.AddNew();
        company.Update();
    }
    GoToRow(company);
    CompanyProfile profile;
    profile.Company = company.Get("Company").ToText();
    profile.LastName = company.Get("LastName").ToText();
    profile.FirstName = company.Get("FirstName").ToText();
    profile.Address1 = company.Get("Address1").ToText();
    profile.Address2 = company.Get("Address2").ToText();
    profile.City = company.Get("City").ToText();
    profile.State = company.Get("State").ToText();
    profile.ZipCode = company.Get("ZipCode").ToText();
    profile.Id = company.Get("Id").ToText();
    profile.Telephone = company.Get("Telephone").ToText();
    profile.BeginDate = DateOf(company.Get("BeginDate"));
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        profile.FiscalYearEnd[book] = DateOf(company.Get(kYearEnds[static_cast<std::size_t>(book)]));
    }
    const recordset::Value round = company.Get("Round");
    profile.Round = !round.IsNull() && round.Boolean();
    SplitCityState(profile.City, profile.State);
    return profile;
}

void CompanyProfile::Save(recordset::Recordset& company) const {
    GoToRow(company);
    company.Edit();
    try {
        company.Set("Company", Company);
        company.Set("LastName", LastName);
        company.Set("FirstName", FirstName);
        company.Set("Address1", Address1);
        company.Set("Address2", Address2);
        company.Set("ZipCode", ZipCode);
        company.Set("State", State);
        company.Set("City", City);
        company.Set("Id", Id);
        company.Set("Telephone", Telephone);
        company.Set("BeginDate", BeginDate);
        for (int book = kFirstBook; book <= kLastBook; ++book) {
            company.Set(kYearEnds[static_cast<std::size_t>(book)], FiscalYearEnd[book]);
        }
        company.Set("Round", Round);
        company.Update();
    } catch (const PlatformError&) {
        if (company.EditPending()) company.CancelUpdate();
        throw;
    }
}

bool TakesFederalYearEnd(bool newCompanyPending, std::string_view text) {
    return newCompanyPending && TextToDate(text).IsNone();
}

std::string YearEndsText(const PerBook<Date>& yearEnds) {
    struct Day {
        Date End;
        std::string Books;
    };
    std::vector<Day> days;
    for (int book = kFirstBook; book <= kLastBook; ++book) {
        const Date end = yearEnds[book];
        const auto same = std::find_if(days.begin(), days.end(), [end](const Day& day) { return day.End == end; });
        const std::string name(BookOf(book).ShortName);
        if (same != days.end()) {
            same->Books += ", " + name;
        } else {
            days.push_back({end, name});
        }
    }
    if (days.size() == 1) return days[0].End.IsNone() ? std::string() : "Year ends " + FormatShortDate(days[0].End);
    std::string text = "Year ends ";
    for (const Day& day : days) {
        text += &day == &days.front() ? "" : "; ";
        text += day.Books + " " + (day.End.IsNone() ? "not set" : FormatShortDate(day.End));
    }
    return text;
}

}  // namespace tallymar
