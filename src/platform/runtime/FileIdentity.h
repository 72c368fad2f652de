#pragma once

#include <filesystem>

namespace tallymar {

// Whether both name one file: under another spelling, a link, hard or symbolic, or a name at which nothing is yet. An empty name
// is no file's. No file is opened for it: closing a database's file again would drop the locks that this process holds on it.
bool IsSameFile(const std::filesystem::path& a, const std::filesystem::path& b);
bool IsSameFile(int descriptor, const std::filesystem::path& path);

// Refuse what a command is to write before it has begun, each with one line that names the file (Failure::PathAccess).
//
// An output that is the database itself, or what stands beside it while it is written.
void RequireApart(const std::filesystem::path& output, const std::filesystem::path& database);
void RequireStandardOutputApart(const std::filesystem::path& database);
// An output that is there and no ordinary file: a folder, a pipe, a device.
void RequireOrdinaryOutput(const std::filesystem::path& output);

}  // namespace tallymar
