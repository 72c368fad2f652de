#include "platform/controls/ScreenText.h"

#include <algorithm>

#include <QFile>
#include <QStringDecoder>

#include "platform/runtime/Windows1252.h"

namespace tallymar {

QString ToQString(std::string_view windows1252) {
    const std::string utf8 = ToUtf8(windows1252);
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string ToWindows1252(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    return FromUtf8({utf8.constData(), static_cast<std::size_t>(utf8.size())});
}

bool FitsWindows1252(QChar character) {
    return character.isPrint() && !character.isSurrogate() && IsInWindows1252(character.unicode());
}

bool FitsWindows1252(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return FitsWindows1252(c); });
}

QString PathToQString(const std::filesystem::path& path) {
    return QFile::decodeName(path.c_str());
}

std::filesystem::path QStringToPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

QString FailureToQString(std::string_view text) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString asUtf8 = decoder(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
    return decoder.hasError() ? ToQString(text) : asUtf8;
}

}  // namespace tallymar
