#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include <QString>

// Text in memory is Windows-1252; the toolkit's is Unicode. These are the only places where one becomes the other on screen.
namespace tallymar {

QString ToQString(std::string_view windows1252);
// What Windows-1252 does not have becomes "?"; the entry controls let no such character in.
std::string ToWindows1252(const QString& text);

// A printable character that Windows-1252 has.
bool FitsWindows1252(QChar character);
bool FitsWindows1252(const QString& text);

QString PathToQString(const std::filesystem::path& path);
std::filesystem::path QStringToPath(const QString& path);

// The text of a failure may quote a path, whose bytes are UTF-8, as well as text of a company: whichever it reads as.
QString FailureToQString(std::string_view text);

}  // namespace tallymar
