// What the help pages say, section by section, to be searched for words.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace kelvora {

/// A heading of a page with the text below it, up to the next heading.
struct HelpSection {
    QString page;      ///< file name
    QString title;     ///< of the page
    QString heading;   ///< the page's title for what stands above its first heading
    int position = 0;  ///< of the heading in the page's document, in characters
    QString text;      ///< as HelpIndex::Folded
};

class HelpIndex {
public:
    /// Reads all pages of a folder. A folder that is not there has none.
    explicit HelpIndex(const QString& folder);

    /// The sections that have all of the words, in any order, also as parts of words; those that have them in
    /// their headings first. Where no section has all, of each page that has them the section with the most.
    /// None for a text of blanks.
    QList<const HelpSection*> Find(const QString& words) const;

    /// The text as it is compared: without capitals and accents.
    static QString Folded(const QString& text);

    /// The words of a search, folded.
    static QStringList Words(const QString& text);

    /// Where a folded word stands in a text as it is shown.
    struct Place {
        int first;
        int length;
    };
    static QList<Place> PlacesOf(const QString& word, const QString& text);

private:
    void ReadPage(const QString& path);
    QList<const HelpSection*> BestOfPages(const QStringList& words) const;

    QList<HelpSection> sections_;
};

}  // namespace kelvora
