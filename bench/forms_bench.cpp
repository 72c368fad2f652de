// Form 4562 over a large company, against the reading of the same assets, which it may not exceed by more than 1.3.
// Usage: forms_bench [assets] [folder]

#include <cstdlib>
#include <filesystem>
#include <string>

#include "BenchCompany.h"
#include "Floor.h"
#include "irsforms/IrsForm.h"
#include "store/AssetPass.h"

using namespace tallymar;
using namespace tallymar::bench;

int main(int argc, char** argv) {
    const int assets = argc > 1 ? std::atoi(argv[1]) : 100'000;
    const std::filesystem::path folder = argc > 2 ? argv[2] : std::filesystem::temp_directory_path() / "tallymar-forms-bench";
    UserProfile profile;
    SilentPrompts prompts;
    CompanySession session(AppPath::At(folder, folder), profile);
    BuildCompany(session, folder / "company.mdb", assets, RegisterAsset);

    PrintHead(assets);
    const auto read = [&](int) {
        AssetRecord asset;
        double sum = 0;
        AssetPass(session, prompts).ForEach(asset, [&] { sum += asset.CurrDepr[1].ToDouble(); });
        return sum;
    };
    for (const char* name : {"4562", "4255"}) {
        Pair((std::string("Form ") + name + " against the read pass").c_str(), assets, read, [&](int) {
            std::unique_ptr<IrsForm> form = MakeForm(name);
            CreateForm(form, session, {}, folder, prompts);
            return static_cast<double>(form->AssetsRead);
        });
    }
}
