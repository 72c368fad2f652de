#pragma once

#include <optional>
#include <vector>

#include <QString>
#include <QUrl>

namespace tallymar {

struct HelpText {
    QUrl Address;
    QString Title;
    QString Text;  // of the whole page, without its markup
};

struct HelpHit {
    QUrl Address;
    QString Title;
    QString Excerpt;  // the words about the first place found
};

// The pages that hold every word of the request, in any case of their letters, a word also as the beginning of a longer one. What
// stands between quotation marks is looked for as it stands. First the pages that have the words in their titles, then those that
// have them most often; none for an empty request.
std::vector<HelpHit> SearchHelp(const std::vector<HelpText>& pages, const QString& request);

struct HelpPlace {
    QUrl Address;
    QString Words;  // as they stand on the page
};

// Where a message is told of: the page with the longest run of its words, two at least. The names and numbers that a message puts
// in stand on no page.
std::optional<HelpPlace> FindMessage(const std::vector<HelpText>& pages, const QString& message);

}  // namespace tallymar
