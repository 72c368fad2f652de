#include <gtest/gtest.h>

#include "FormCompany.h"
#include "batch/ComputeCurrent.h"

namespace tallymar::test {
namespace {

// Pages that have changed stand in full below the build folder, ready to be compared and, if they are right, to become the golden
// file.
void ExpectGolden(const std::string& name, const std::string& text) {
    if (text == ReadAll(TALLYMAR_SOURCE_DIR "/tests/irsforms/golden/" + name + ".txt")) return;
    const std::filesystem::path folder = TALLYMAR_BINARY_DIR "/golden";
    std::filesystem::create_directories(folder);
    WriteAll(folder / (name + ".txt"), text);
    FAIL() << "The pages of " << name << " are not as in tests/irsforms/golden; they stand in " << folder.string() << "\n"
           << text;
}

std::string WithNotes(FormCompany& company, const char* name, const FormOptions& options) {
    std::unique_ptr<IrsForm> form = MakeForm(name);
    const FormResult result = company.Create(form, options);
    std::string text = ReadablePages(company.Out(), result);
    text += "===== Notes\n";
    for (const std::string& note : FormNotes(*form, result)) text += note + "\n";
    return text + "===== For a tax package\n" + FormJson(*form, result, options);
}

class GoldenForms : public testing::TestWithParam<const char*> {};

// More of every kind than the pages have room for, so that every statement and continuation is written.
TEST_P(GoldenForms, EveryKind) {
    FormCompany company(kEveryKind);
    ExpectGolden("every-kind-" + std::string(GetParam()), WithNotes(company, GetParam(), {.Type = "1040"}));
}

// Few enough to stand on the pages themselves.
TEST_P(GoldenForms, OneDivision) {
    FormCompany company(kEveryKind);
    ExpectGolden("small-" + std::string(GetParam()), WithNotes(company, GetParam(), {.Type = "1065", .Division = "SMALL  "}));
}

TEST_P(GoldenForms, SampleCompany) {
    FormCompany company(TALLYMAR_SOURCE_DIR "/samples/assets.csv", Date::FromYmd(2003, 12, 31));
    ADepre engine(TALLYMAR_BINARY_DIR "/share/tallymar");
    PerBook<bool> federal;
    federal[1] = true;
    ComputeCurrentResult result;
    ComputeCurrent(company.Session, engine, {.Compute = federal, .UseMidQuarter = {}}, company.Prompts, result, {});
    ExpectGolden("sample-" + std::string(GetParam()), WithNotes(company, GetParam(), {.Type = "1120"}));
}

INSTANTIATE_TEST_SUITE_P(Forms, GoldenForms, testing::Values("4562", "4797", "D", "4255", "8824"),
                         [](const auto& form) { return "Form" + std::string(form.param); });

}  // namespace
}  // namespace tallymar::test
