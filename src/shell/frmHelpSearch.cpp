#include "shell/frmHelpSearch.h"

#include <algorithm>

#include <QRegularExpression>

namespace tallymar {

namespace {

constexpr int kTitleWeight = 1000;  // a title outweighs any count of words in the text
constexpr int kExcerptBefore = 40;
constexpr int kExcerptLength = 160;

QList<QRegularExpression> Parts(const QString& request) {
    static const QRegularExpression kPart(QStringLiteral("\"([^\"]+)\"?|(\\S+)"));
    QList<QRegularExpression> parts;
    for (auto found = kPart.globalMatch(request); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const bool isPhrase = !match.captured(1).isEmpty();
        const QString text = QRegularExpression::escape(match.captured(isPhrase ? 1 : 2).simplified());
        if (text.isEmpty()) continue;
        // A sign such as "%" begins no word.
        const QString start = isPhrase || !match.captured(2).front().isLetterOrNumber() ? QString() : QStringLiteral("\\b");
        parts << QRegularExpression(start + text,
                                    QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    }
    return parts;
}

}  // namespace

std::vector<HelpHit> SearchHelp(const std::vector<HelpText>& pages, const QString& request) {
    const QList<QRegularExpression> parts = Parts(request);
    if (parts.isEmpty()) return {};
    struct Ranked {
        qsizetype Weight;
        HelpHit Hit;
    };
    std::vector<Ranked> ranked;
    for (const HelpText& page : pages) {
        qsizetype weight = 0;
        qsizetype first = page.Text.size();
        bool hasAll = true;
        for (const QRegularExpression& part : parts) {
            const qsizetype count = page.Text.count(part);
            const qsizetype inTitle = page.Title.count(part);
            hasAll = hasAll && count + inTitle > 0;
            weight += count + kTitleWeight * inTitle;
            if (count > 0) first = std::min(first, page.Text.indexOf(part));
        }
        if (!hasAll) continue;
        const qsizetype from = first == page.Text.size() ? 0 : std::max<qsizetype>(0, first - kExcerptBefore);
        ranked.push_back({weight, {page.Address, page.Title, page.Text.mid(from, kExcerptLength).simplified()}});
    }
    std::stable_sort(ranked.begin(), ranked.end(), [](const Ranked& a, const Ranked& b) { return a.Weight > b.Weight; });
    std::vector<HelpHit> hits;
    for (Ranked& each : ranked) hits.push_back(std::move(each.Hit));
    return hits;
}

std::optional<HelpPlace> FindMessage(const std::vector<HelpText>& pages, const QString& message) {
    constexpr qsizetype kFewest = 2;  // "Disk full"
    const QStringList words = message.simplified().split(u' ');
    std::optional<HelpPlace> place;
    for (qsizetype length = words.size(); length >= kFewest && !place; --length) {
        for (qsizetype from = 0; from + length <= words.size() && !place; ++from) {
            const QString run = words.mid(from, length).join(u' ');
            const auto page = std::find_if(pages.begin(), pages.end(), [&](const HelpText& each) {
                return each.Address.fileName().startsWith(QStringLiteral("messages-")) && each.Text.contains(run);
            });
            if (page != pages.end()) place = HelpPlace{page->Address, run};
        }
    }
    return place;
}

}  // namespace tallymar
