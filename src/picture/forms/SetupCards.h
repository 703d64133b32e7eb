// Setup files as cards: each with its picture, its name and its modules. The names are there at once; what
// the files hold is read one after the other, from the first picture of the view on and on threads of their
// own: a drive that does not answer holds up neither the window nor, for long, the other cards.
#pragma once

#include <QHash>
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
    /// Chooses the card of that file, if there is one.
    void Choose(const QString& path);

    /// As a click, or two, on the chosen card do.
    void OpenChosen() { Open(currentIndex()); }

    /// Whether a file has still to be looked at.
    bool IsReading() const { return read_ < model_.rowCount() || !reading_.isEmpty(); }

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
    /// One whose file is still being read is opened once that has come, if the view still waits for it.
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
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Reading;

    void ReadNext();
    void Read(const QString& path);
    void TakeIn(const QString& path, const Reading& reading);
    void Show(QStandardItem& card, const Reading& reading);
    void Tell(QStandardItem& card, const QString& problem, const QStringList& lines);
    QStandardItem* CardOf(const QString& path) const;
    QString Caption(const MessageId& text) const;
    bool HitsTakeSign(const QMouseEvent& event) const;
    void Open(const QModelIndex& index);
    void Take(const QModelIndex& index);

    Use use_;
    const Files& files_;
    const MessageCatalogue& catalogue_;
    QStandardItemModel model_;
    QTimer reader_;
    int read_ = 0;                  ///< cards whose files are, or have been, looked at
    QHash<QString, bool> reading_;  ///< the paths that are out, and whether to look at them once more
    QString wanted_;                ///< the path to open once it has come
    bool hasTaken_ = false;         ///< by the mouse button that is down
};

}  // namespace kelvora
