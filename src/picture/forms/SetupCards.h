// Setup files as cards: each with its picture, its name and its modules. The names are there at once; what
// the files hold is read one after the other, from the first picture of the view on.
#pragma once

#include <QListView>
#include <QStandardItemModel>
#include <QTimer>
#include <vector>

#include "picture/SetupCard.h"

namespace kelvora {

/// A file, and what its card says beside what is in it.
struct CardFile {
    QString path;
    QString name;
    QString origin;  ///< a line of its own: its folder, say; may be empty
};

class SetupCards final : public QListView {
    Q_OBJECT

public:
    /// What the cards are for.
    enum class Use {
        Open,    ///< one click opens a card, and it can be taken from the list; the files' times are told
        Choose,  ///< a click chooses a card, two open it
    };

    /// `files` and `catalogue` outlive the view.
    SetupCards(Use use, const Files& files, const MessageCatalogue& catalogue, QWidget* parent = nullptr);

    /// Shows these files from now on, with the first one chosen.
    void ShowFiles(const std::vector<CardFile>& files);

    /// The path of the chosen file; empty without one.
    QString Chosen() const;

    /// The texts of the catalogue's language, in the font of now.
    void Retranslate();

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;
    /// Whether no card stands to the left of the one that has the focus.
    bool IsAtLeft() const
    {
        return visualRect(currentIndex()).left() <= visualRect(model()->index(0, 0)).left();
    }

signals:
    void opened(const QString& path);

    /// The card was taken from the list, and its file stays; where cards are chosen, the file is to go, and
    /// the card stays.
    void taken(const QString& path);

    /// Another card is the chosen one, or none is.
    void chosen();

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void ReadNext();
    void Open(const QModelIndex& index);
    void Take(const QModelIndex& index);

    Use use_;
    const Files& files_;
    const MessageCatalogue& catalogue_;
    QStandardItemModel model_;
    QTimer reader_;
    int read_ = 0;  ///< cards whose files have been looked at
};

}  // namespace kelvora
