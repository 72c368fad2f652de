#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "interchange/AssetLoad.h"
#include "irsforms/IrsForm.h"
#include "support/Files.h"
#include "support/TestCompany.h"

namespace tallymar::test {

// A company with the assets of a CSV and a folder that its forms are created in.
struct FormCompany : TestCompany {
    explicit FormCompany(const std::filesystem::path& assets, Date yearEnd = Date::FromYmd(2002, 12, 31)) {
        SetYearEnds(yearEnd);
        recordset::Recordset& company = Session.CompanyRecordset();
        company.Edit();
        company.Set("Company", "Quillfeather & Sons Boatyard, Dry Dock");
        company.Set("ID", "00-1234567");
        company.Update();
        LoadAssets(Session.Database(), Session.AssetsRecordset(), assets);
        std::filesystem::create_directory(Out());
    }

    std::filesystem::path Out() const { return Folder / "forms"; }

    FormResult Create(std::unique_ptr<IrsForm>& form, const FormOptions& options = {}) {
        return CreateForm(form, Session, options, Out(), Prompts);
    }

    AssetRecord Read(std::string_view number) {
        Session.AssetsRecordset().Seek(number);
        AssetRecord record;
        Session.ReadAssetRecord(record);
        return record;
    }
};

inline const std::filesystem::path kEveryKind = TALLYMAR_SOURCE_DIR "/tests/irsforms/assets.csv";

// The lines of a page that hold anything, by their numbers and up to a bar; so that what stands where can be read and compared.
inline std::string ReadablePage(const std::filesystem::path& file) {
    std::string text = "===== " + file.filename().string() + "\n";
    const std::string contents = ReadAll(file);
    std::size_t begin = 0;
    for (int number = 1;; ++number) {
        const std::size_t end = contents.find(" \r\n", begin);
        if (end == std::string::npos) break;
        const std::string line = contents.substr(begin, end - begin);
        if (!line.empty()) text += (number < 10 ? " " : "") + std::to_string(number) + ":" + line + "|\n";
        begin = end + 3;
    }
    return text + (contents.substr(begin) == "\x1A" ? "" : "no end-of-file mark\n");
}

inline std::string ReadablePages(const std::filesystem::path& folder, const FormResult& result) {
    std::string text = result.Message + "\n";
    for (const std::string& code : result.Pages) text += ReadablePage(folder / (code + ".LDT"));
    return text;
}

}  // namespace tallymar::test
