// One lane of the series window: its line, the verdict, the till, and a way to try it once more.
#pragma once

#include <QFrame>

#include "catalogue/MessageCatalogue.h"
#include "series/Lane.h"

class QLabel;
class QPushButton;

namespace kelvora {

class VerdictSign;

class LaneView final : public QFrame {
    Q_OBJECT

public:
    /// `catalogue` outlives the view, which has its texts with the first Retranslate.
    explicit LaneView(const MessageCatalogue& catalogue, QWidget* parent = nullptr);

    /// `isStopping`: the series ends after the till at hand.
    void ShowLane(const Lane& lane, bool isStopping);
    /// `title` is what people know the line by.
    void Retranslate(const QString& title);

signals:
    /// The user wants the till at hand tried once more.
    void retryRequested();

private:
    QString Words(Lane::State state) const;
    QString Hint() const;
    QString BelowSign() const;
    void Paint();

    const MessageCatalogue& catalogue_;
    QString title_;
    Lane lane_;
    bool isStopping_ = false;
    QLabel* name_;
    VerdictSign* sign_;
    QLabel* terminal_;
    QLabel* hint_;
    QLabel* last_;
    QPushButton* retry_;
};

}  // namespace kelvora
