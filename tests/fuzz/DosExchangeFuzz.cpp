// The files of the DOS edition. An input is how the import is asked for (a byte), the company file, and, after a zero byte, the
// asset file beside it, which is missing otherwise. In the exchange of a book there is the asset file alone.

#include "fuzz/FuzzCompany.h"
#include "interchange/DosExchange.h"
#include "interchange/ExchangeBook.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tallymar;
    if (size == 0) return 0;
    const fuzz::ImportWish wish(data[0]);
    const fuzz::TwoFiles files({reinterpret_cast<const char*>(data) + 1, size - 1});
    test::TestCompany& company = fuzz::Company();
    const std::filesystem::path chosen = company.Folder / "assetctl.dat";
    const std::filesystem::path assets = company.Folder / "AASCII.DAT";
    test::WriteAll(chosen, files.First);
    if (files.IsBoth) {
        test::WriteAll(assets, files.Second);
    } else {
        std::filesystem::remove(assets);
    }
    fuzz::RunImportOnce(wish, [&](CompanySession& session) {
        DosImport(session, {.Type = wish.Book, .AddNew = wish.AddNew, .Ending = wish.Ending}, chosen, company.Prompts);
    });
    return 0;
}
