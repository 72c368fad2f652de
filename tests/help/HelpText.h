#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include <QHelpEngineCore>

namespace tallymar::test {

inline const std::filesystem::path kProgramFolder = std::filesystem::path(TALLYMAR_BINARY_DIR) / "bin";

inline const std::filesystem::path kShareFolder = std::filesystem::path(TALLYMAR_BINARY_DIR) / "share/tallymar";

// The books as the build has made them.
std::unique_ptr<QHelpEngineCore> OpenBooks();

// The words of all pages whose names begin so, without markup and with single blanks.
std::string TextOfPages(QHelpEngineCore& books, const QString& beginning);

}  // namespace tallymar::test
