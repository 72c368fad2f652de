#pragma once

#include <filesystem>
#include <span>
#include <string_view>

#include "platform/mdb/JetFile.h"

// The reading itself, in this process: what ReadJetTables does in a process of its own. libmdb writes to standard error, and
// keeps what it allocates when it is left by an exception of `rows`.
namespace tallymar::mdb {

// The header has been looked at (RefusalOf). Failures as ReadJetTables, their texts without the file's name.
void ReadTables(const std::filesystem::path& path, std::span<const std::string_view> tables, JetRows& rows);
// The same from the bytes of a file. libmdb takes them as writable and does not write to them.
void ReadTables(std::span<char> bytes, std::span<const std::string_view> tables, JetRows& rows);

}  // namespace tallymar::mdb
