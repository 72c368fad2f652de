// The fields of a form page, as the viewer reads them from a firm's own .FPF file.

#include <cstdint>
#include <cstdlib>

#include "formoutput/FormFields.h"
#include "platform/runtime/PlatformError.h"

using namespace tallymar;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const auto fields = ParseFormFields({reinterpret_cast<const char*>(data), size}, "page.FPF");
        for (const FormField& field : fields) {
            const bool isOnPage = field.Line >= 1 && field.Line <= kPageLines && field.Column >= 0 && field.Width >= 1 &&
                                  field.Column + field.Width <= kPageColumns;
            // A click on a field's first cell hits it, or one that the file has later.
            const auto place = static_cast<int>(&field - fields.data());
            if (!isOnPage || FieldAt(fields, field.Column, field.Line) < place) std::abort();
        }
    } catch (const PlatformError&) {
    }
    return 0;
}
