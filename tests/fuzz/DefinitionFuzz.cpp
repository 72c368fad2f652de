// A definition file, as the import and export windows read it, and everything that is asked of one.

#include <cstdint>
#include <cstdlib>

#include "interchange/FieldDefinition.h"
#include "platform/runtime/PlatformError.h"
#include "support/Files.h"
#include "support/TempFolder.h"

namespace {

using namespace tallymar;

template <typename Question>
void Ask(Question&& question) {
    try {
        question();
    } catch (const PlatformError&) {
        // A number beyond 16 bits.
    }
}

// What the windows show and save again must be what the file said, text by text.
void SaveAgain(const FieldDefinition& definition, const std::filesystem::path& file) {
    definition.Save(file);
    const FieldDefinition again = FieldDefinition::Load(file);
    // A text at either end of the file can look like the mark of UTF-8 or the end of a DOS file.
    for (int field = 1; field < FieldDefinition::kFields; ++field) {
        if (again.Box(field) != definition.Box(field) && !definition.FieldCountText.starts_with("\xEF\xBB\xBF")) std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TempFolder folder;
    static const std::filesystem::path file = folder / "ImpDef1.Dat";
    test::WriteAll(file, {reinterpret_cast<const char*>(data), size});
    const FieldDefinition definition = FieldDefinition::Load(file);
    Ask([&] { definition.FieldCount(); });
    Ask([&] { definition.HighestPosition(); });
    Ask([&] { definition.Unclaimed(); });
    // A box that the window lets stand holds a position.
    for (int field = 1; field <= FieldDefinition::kFields; ++field) {
        if (!FieldDefinition::IsValidPosition(definition.Box(field))) continue;
        if (definition.Position(field) < 0 || definition.Position(field) > FieldDefinition::kFields) std::abort();
    }
    if (size > 0 && data[0] % 16 == 0) SaveAgain(definition, file);
    return 0;
}
