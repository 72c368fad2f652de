// Assets by a definition of the user's own. An input is how the import is asked for (a byte), the definition file, a zero byte,
// the comma-delimited file.

#include "interchange/UserImport.h"

#include "fuzz/FuzzCompany.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tallymar;
    if (size == 0) return 0;
    const fuzz::ImportWish wish(data[0]);
    const fuzz::TwoFiles files({reinterpret_cast<const char*>(data) + 1, size - 1});
    const test::TempFolder& folder = fuzz::Company().Folder;
    test::WriteAll(folder / "ImpDef1.Dat", files.First);
    test::WriteAll(folder / "aascii.txt", files.Second);
    fuzz::RunImportOnce(wish, [&](CompanySession& session) {
        UserImport(session,
                   {.Definition = FieldDefinition::Load(folder / "ImpDef1.Dat"),
                    .Book = wish.Book,
                    .AddNew = wish.AddNew,
                    .Ending = wish.Ending},
                   folder / "aascii.txt");
    });
    return 0;
}
