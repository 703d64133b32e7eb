#include "windows/forms/HelpIndex.h"

#include <QDir>
#include <QFile>
#include <QTextBlock>
#include <QTextDocument>
#include <algorithm>

namespace kelvora {

HelpIndex::HelpIndex(const QString& folder)
{
    const QDir pages(folder);
    for (const QString& name : pages.entryList({QStringLiteral("*.html")}, QDir::Files, QDir::Name))
        ReadPage(pages.filePath(name));
}

void HelpIndex::ReadPage(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    QTextDocument document;
    document.setHtml(QString::fromUtf8(file.readAll()));
    const QString page = QFileInfo(path).fileName();
    const QString title = document.metaInformation(QTextDocument::DocumentTitle);
    HelpSection section{page, title, title, 0, {}};
    const auto add = [&] {
        if (!section.text.isEmpty())
            sections_.append(section);
    };
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0) {
            add();
            section = {page, title, block.text(), block.position(), {}};
        }
        section.text += Folded(block.text()) + ' ';
    }
    add();
}

QList<const HelpSection*> HelpIndex::Find(const QString& words) const
{
    const QStringList wanted = Words(words);
    const auto hasAll = [&](const QString& text) {
        return std::ranges::all_of(wanted, [&](const QString& word) { return text.contains(word); });
    };
    QList<const HelpSection*> found;
    for (const HelpSection& section : sections_)
        if (!wanted.isEmpty() && hasAll(section.text))
            found.append(&section);
    std::stable_partition(found.begin(), found.end(),
                          [&](const HelpSection* section) { return hasAll(Folded(section->heading)); });
    return found.isEmpty() && !wanted.isEmpty() ? BestOfPages(wanted) : found;
}

QList<const HelpSection*> HelpIndex::BestOfPages(const QStringList& words) const
{
    QList<const HelpSection*> found;
    for (auto first = sections_.cbegin(); first != sections_.cend();) {
        const auto last = std::find_if(
            first, sections_.cend(), [&](const HelpSection& section) { return section.page != first->page; });
        const auto has = [](const QString& word) {
            return [&word](const HelpSection& section) { return section.text.contains(word); };
        };
        const auto count = [&](const HelpSection& section) {
            return std::ranges::count_if(words, [&](const QString& word) { return has(word)(section); });
        };
        if (std::ranges::all_of(words,
                                [&](const QString& word) { return std::any_of(first, last, has(word)); }))
            found.append(&*std::max_element(first, last, [&](const HelpSection& a, const HelpSection& b) {
                return count(a) < count(b);
            }));
        first = last;
    }
    return found;
}

QString HelpIndex::Folded(const QString& text)
{
    QString folded;
    for (const QChar c : text.normalized(QString::NormalizationForm_KD))
        if (c.category() != QChar::Mark_NonSpacing)
            folded += c.toLower();
    return folded;
}

QStringList HelpIndex::Words(const QString& text)
{
    QStringList words;
    for (QString word : Folded(text).split(' ', Qt::SkipEmptyParts)) {
        while (word.size() > 1 && word.back().isPunct())
            word.chop(1);
        words.append(word);
    }
    return words;
}

QList<HelpIndex::Place> HelpIndex::PlacesOf(const QString& word, const QString& text)
{
    // Folding may make more or fewer characters of one: each remembers where it comes from.
    QString folded;
    QList<int> origin;
    for (int i = 0; i < text.size(); ++i)
        for (const QChar c : Folded(text.mid(i, 1))) {
            folded += c;
            origin.append(i);
        }
    QList<Place> places;
    for (auto at = folded.indexOf(word); at >= 0; at = folded.indexOf(word, at + word.size()))
        places.append({origin[at], origin[at + word.size() - 1] - origin[at] + 1});
    return places;
}

}  // namespace kelvora
