#include "platform/page/QtPageFont.h"

#include <algorithm>

#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>

#include "platform/page/PageFontFile.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace {

std::array<quint32, 256> GlyphsOf(const QRawFont& font) {
    std::array<quint32, 256> glyphs{};
    for (std::size_t byte = 0; byte < glyphs.size(); ++byte) {
        const char drawn = DrawnAs(static_cast<char>(byte));
        const QList<quint32> found = font.glyphIndexesForString(QString::fromStdString(ToUtf8(std::string_view(&drawn, 1))));
        if (found.size() == 1) glyphs[byte] = found.front();
    }
    return glyphs;
}

// Does the font have every character, as wide as the metrics say?
bool Agrees(const QRawFont& font, const FontMetrics& metrics) {
    QRawFont atUnits = font;
    atUnits.setPixelSize(metrics.UnitsPerEm);
    const std::array<quint32, 256> glyphs = GlyphsOf(atUnits);
    QPointF advances[256];
    if (!atUnits.advancesForGlyphIndexes(glyphs.data(), advances, 256)) return false;
    for (std::size_t byte = 0; byte < glyphs.size(); ++byte) {
        if (glyphs[byte] == 0 || !IsWidthOf(metrics, byte, advances[byte].x())) return false;
    }
    return true;
}

}  // namespace

QtPageFont FindQtPageFont(const FontMetrics& metrics, double pixelSize) {
    const PageFontFamily* family = FindPageFontFamily(metrics.Name);
    if (family == nullptr || qGuiApp == nullptr) throw MissingPageFont(metrics.Name);
    for (const char* name : family->Candidates) {
        // Asked for by name first: Qt would put any other font in the place of one that it does not have.
        if (!QFontDatabase::hasFamily(QString::fromLatin1(name))) continue;
        QFont wanted(QString::fromLatin1(name));
        wanted.setWeight(family->Bold ? QFont::Bold : QFont::Normal);
        wanted.setPixelSize(std::max(1, static_cast<int>(pixelSize)));
        wanted.setHintingPreference(QFont::PreferNoHinting);
        wanted.setStyleStrategy(QFont::NoFontMerging);
        QRawFont font = QRawFont::fromFont(wanted);
        if (!font.isValid() || !Agrees(font, metrics)) continue;
        font.setPixelSize(pixelSize);
        return {font, GlyphsOf(font)};
    }
    throw MissingPageFont(metrics.Name);
}

}  // namespace tallymar
