#include "platform/recordset/LibraryVersion.h"

#include <sqlite3.h>

namespace tallymar::recordset {

std::string_view LibraryVersion() {
    return sqlite3_libversion();
}

}  // namespace tallymar::recordset
