#include "keymap/forms/frmKeyb.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <algorithm>

#include "keymap/forms/KeyGridView.h"
#include "keymap/forms/KeyPicture.h"
#include "platform/qt/Announcement.h"
#include "platform/qt/ProgramStyle.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"

namespace kelvora {

namespace {

/// What differs between the three windows to the eye.
struct Window {
    ModuleKind kind;
    const char* name;
    MessageId title;
};

constexpr std::array Windows{
    Window{ModuleKind::KM096, "frmKeyb96", Message::Keyb96Title},
    Window{ModuleKind::KM064, "frmKeyb64", Message::Keyb64Title},
    Window{ModuleKind::ICCR, "frmKeybICCR", Message::KeybICCRTitle},
};

/// How long the form waits for the focus that it had before a question, in milliseconds.
constexpr int ActivationTimeoutMs = 300;

constexpr std::array TypeCaptions{Message::KeyTypeSingle, Message::KeyTypeVertical,
                                  Message::KeyTypeHorizontal, Message::KeyTypeQuadruple};

/// The cells that a key of each type takes.
constexpr std::array TypeCells{QSize(1, 1), QSize(1, 2), QSize(2, 1), QSize(2, 2)};

/// An option with this tag is being set by the program: its click is nobody's.
constexpr const char* Tag = "tag";
const QString BusyTag = QStringLiteral("X");

QString WithoutMnemonic(QString caption)
{
    return caption.remove(QLatin1Char('&'));
}

}  // namespace

frmKeyb::frmKeyb(ModuleKind kind, const Texts& texts, std::string& xchange, const std::string& setupName,
                 QWidget* parent)
    : QDialog(parent), session_(kind), kind_(kind), texts_(texts), xchange_(xchange)
{
    for (const Window& window : Windows)
        if (window.kind == kind) {
            setObjectName(QLatin1String(window.name));
            setWindowTitle(ToQString(texts.Caption(window.title)));
        }
    grid_ = new KeyGridView(session_, texts.Catalogue(), this);
    connect(grid_, &KeyGridView::keysChosen, this, &frmKeyb::ShowSession);
    grid_->setAccessibleName(windowTitle());
    if (!setupName.empty())
        setWindowTitle(windowTitle() + QStringLiteral(" - ") + ToQString(setupName));

    hint_ = new QLabel(this);
    hint_->setObjectName(QStringLiteral("Hint"));
    hint_->setWordWrap(true);

    auto* const across = new QHBoxLayout;
    across->addWidget(grid_, 1);
    across->addWidget(MakeControls());
    across->setSpacing(12);
    auto* const down = new QVBoxLayout(this);
    down->addLayout(across, 1);
    down->addWidget(hint_);
    down->setSpacing(10);
    down->setContentsMargins(12, 12, 12, 10);
    setSizeGripEnabled(true);

    discardWait_.setSingleShot(true);
    connect(&discardWait_, &QTimer::timeout, this, [this] { QDialog::reject(); });
}

QWidget* frmKeyb::MakeControls()
{
    auto* const panel = new QWidget(this);
    // Made in the order in which the Tab key visits them.
    QLayout* const find = MakeFind();
    QWidget* const choices = MakeChoices();
    undo_ = MakeButton(Message::KeyUndo, "Undo");
    redo_ = MakeButton(Message::KeyRedo, "Redo");
    auto* const defaults = MakeButton(Message::DefaultMapping, "DefaultMapping");
    auto* const back = MakeButton(Message::Quit, "Back");
    undo_->setToolTip(QKeySequence(QKeySequence::Undo).toString(QKeySequence::NativeText));
    redo_->setToolTip(QKeySequence(QKeySequence::Redo).toString(QKeySequence::NativeText));
    connect(defaults, &QPushButton::clicked, this, &frmKeyb::DefaultMapping_Click);
    connect(back, &QPushButton::clicked, this, &frmKeyb::Back_Click);
    connect(undo_, &QPushButton::clicked, this, &frmKeyb::Undo);
    connect(redo_, &QPushButton::clicked, this, &frmKeyb::Redo);

    auto* const steps = new QHBoxLayout;
    steps->addWidget(undo_);
    steps->addWidget(redo_);
    auto* const layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(find);
    layout->addWidget(choices);
    layout->addLayout(steps);
    layout->addWidget(defaults);
    layout->addStretch(1);
    layout->addWidget(back);
    return panel;
}

QLayout* frmKeyb::MakeFind()
{
    auto* const label = new QLabel(ToQString(texts_.Caption(Message::KeyFind)), this);
    find_ = new QLineEdit(this);
    find_->setObjectName(QStringLiteral("FindKey"));
    find_->setAccessibleName(WithoutMnemonic(label->text()));
    find_->setToolTip(QKeySequence(QKeySequence::Find).toString(QKeySequence::NativeText));
    find_->setValidator(new QIntValidator(0, 999, find_));
    find_->setMaximumWidth(find_->fontMetrics().averageCharWidth() * 10);
    label->setBuddy(find_);
    connect(find_, &QLineEdit::returnPressed, this, &frmKeyb::FindKey);
    // What was said of another number.
    connect(find_, &QLineEdit::textEdited, this, &frmKeyb::ShowHint);
    auto* const across = new QHBoxLayout;
    across->addWidget(label, 1);
    across->addWidget(find_);
    return across;
}

QPushButton* frmKeyb::MakeButton(const MessageId& caption, const char* name)
{
    auto* const button = NamedButton(name, *this, ToQString(texts_.Caption(caption)));
    button->setAccessibleName(WithoutMnemonic(button->text()));
    return button;
}

QWidget* frmKeyb::MakeChoices()
{
    keyControls_ = new QGroupBox(this);
    keyControls_->setObjectName(QStringLiteral("KeyControls"));
    auto* const layout = new QVBoxLayout(keyControls_);
    keyTypes_ = new QButtonGroup(keyControls_);
    for (std::size_t i = 0; i < keyTypeOption_.size(); ++i) {
        auto* const option = new QRadioButton(ToQString(texts_.Caption(TypeCaptions.at(i))), keyControls_);
        option->setObjectName(QStringLiteral("KeyTypeOption%1").arg(i));
        option->setAccessibleName(WithoutMnemonic(option->text()));
        // Not clicked: a screen reader sets it.
        connect(option, &QRadioButton::toggled, this, [this, i](bool isChosen) {
            if (isChosen)
                KeyTypeOption_Click(static_cast<int>(i));
        });
        keyTypes_->addButton(option);
        layout->addWidget(option);
        keyTypeOption_.at(i) = option;
    }
    unusedCheck_ = new QCheckBox(ToQString(texts_.Caption(Message::UnusedCheck)), keyControls_);
    unusedCheck_->setObjectName(QStringLiteral("UnusedCheck"));
    unusedCheck_->setAccessibleName(WithoutMnemonic(unusedCheck_->text()));
    connect(unusedCheck_, &QCheckBox::stateChanged, this, &frmKeyb::UnusedCheck_Click);
    layout->addSpacing(6);
    layout->addWidget(unusedCheck_);
    ShowPictures();
    return keyControls_;
}

void frmKeyb::ShowPictures()
{
    for (std::size_t i = 0; i < keyTypeOption_.size(); ++i)
        keyTypeOption_.at(i)->setIcon(KeyPicture(TypeCells.at(i), false, palette()));
    unusedCheck_->setIcon(KeyPicture(TypeCells.front(), true, palette()));
    for (QAbstractButton* const each : keyControls_->findChildren<QAbstractButton*>()) {
        each->setIconSize({KeyPictureSide, KeyPictureSide});
        each->setMinimumHeight(ProgramStyle::LeastTarget(*each, 0));
    }
}

void frmKeyb::showEvent(QShowEvent* event)
{
    // Once per showing: a message box that gives the focus back must not undo what was edited.
    if (!event->spontaneous()) {
        Activate();
        if (!testAttribute(Qt::WA_Resized))
            resize(InitialSize());
    }
    QDialog::showEvent(event);
}

QSize frmKeyb::InitialSize() const
{
    const QSize room = screen()->availableSize() * 9 / 10;
    const int width = std::max(std::min(sizeHint().width(), room.width()), minimumSizeHint().width());
    // The narrower, the more lines the hint takes.
    return {width,
            std::min(std::max(sizeHint().height(), layout()->totalHeightForWidth(width)), room.height())};
}

void frmKeyb::Activate()
{
    session_.Load(xchange_);
    ShowSession();
    grid_->FocusKeys();
}

void frmKeyb::ReloadEmptyMap()
{
    if (!session_.Map().empty())
        return;
    constexpr BoxStyle style{BoxIcon::Question, BoxButtons::OkCancel, Answer::Ok};
    if (texts_.Tell(texts_.Caption(Message::ReloadKeyMap), style) == Answer::Ok)
        Activate();
}

void frmKeyb::ShowSession()
{
    grid_->LayoutKeyGrid();
    ShowChoices(session_.Choices());
    ShowHint();
    undo_->setEnabled(session_.CanUndo());
    redo_->setEnabled(session_.CanRedo());
    emit sessionShown();
}

void frmKeyb::ShowHint()
{
    hint_->setText(ToQString(session_.IsEditable() ? texts_.Caption(Message::KeyHint) + " " +
                                                         texts_.Caption(Message::KeyHintMore)
                                                   : texts_.Caption(Message::KeyMapUnfit)));
}

// What a key, a button or a step back has just changed.
void frmKeyb::ShowChange()
{
    ShowSession();
    const KeyChoices choices = session_.Choices();
    if (choices.count > 1)
        Announce(*grid_, keyControls_->title() + QStringLiteral(", ") + grid_->KeyName(session_.Selected()));
    else if (session_.Selected() > 0)
        Announce(*grid_, grid_->KeyName(session_.Selected()));
}

void frmKeyb::ShowChoices(const KeyChoices& choices)
{
    QString caption = ToQString(texts_.Word(Message::KeyWord)) + QLatin1Char('?');
    if (choices.count > 1)
        caption = QString::number(choices.count) + ToQString(texts_.Caption(Message::KeysSelected));
    else if (choices.keyNumber > 0)
        caption = ToQString(texts_.Word(Message::KeyWord)) + QString::number(choices.keyNumber);
    keyControls_->setTitle(caption);

    const QSignalBlocker quiet(unusedCheck_);
    unusedCheck_->setEnabled(choices.unusedEnabled);
    unusedCheck_->setTristate(choices.unusedMixed);
    unusedCheck_->setCheckState(choices.unusedMixed     ? Qt::PartiallyChecked
                                : choices.unusedChecked ? Qt::Checked
                                                        : Qt::Unchecked);
    keyTypes_->setExclusive(false);
    for (std::size_t i = 0; i < keyTypeOption_.size(); ++i) {
        QRadioButton* const option = keyTypeOption_.at(i);
        option->setProperty(Tag, BusyTag);
        option->setChecked(choices.selected.at(i));
        option->setEnabled(choices.enabled.at(i));
        option->setProperty(Tag, QString());
    }
    keyTypes_->setExclusive(true);

    // The Tab key stops at one option alone: the checked one, or the first that can be.
    const auto find = [this](auto isIt) { return std::ranges::find_if(keyTypeOption_, isIt); };
    const auto checked = find([](const QRadioButton* option) { return option->isChecked(); });
    const auto enabled = find([](const QRadioButton* option) { return option->isEnabled(); });
    for (auto option = keyTypeOption_.begin(); option != keyTypeOption_.end(); ++option)
        (*option)->setFocusPolicy(option == (checked != keyTypeOption_.end() ? checked : enabled)
                                      ? Qt::StrongFocus
                                      : Qt::ClickFocus);
}

void frmKeyb::KeyTypeOption_Click(int index)
{
    if (keyTypeOption_.at(static_cast<std::size_t>(index))->property(Tag).toString() == BusyTag)
        return;
    session_.SetType(index);
    ShowChange();
}

void frmKeyb::UnusedCheck_Click()
{
    session_.ToggleUnused();
    ShowChange();
}

void frmKeyb::DefaultMapping_Click()
{
    ShowChoices({});
    constexpr BoxStyle style{BoxIcon::Exclamation, BoxButtons::OkCancel, Answer::Ok};
    const bool isWanted = texts_.Tell(texts_.Caption(Message::ConfirmDefaults), style) == Answer::Ok;
    session_.ShowDefaults(isWanted ? std::string(FindModel(kind_)->defaultMap) : session_.Map());
    ShowSession();
}

void frmKeyb::Back_Click()
{
    xchange_ = session_.Map();
    accept();
}

void frmKeyb::FindKey()
{
    if (session_.ChooseNumber(find_->text().toInt())) {
        ShowSession();
        grid_->FocusKeys();
    } else {
        hint_->setText(ToQString(texts_.Word(Message::KeyFindNone)) + find_->text());
        Announce(*hint_, hint_->text());
        find_->selectAll();
    }
}

void frmKeyb::Undo()
{
    session_.Undo();
    ShowChange();
}

void frmKeyb::Redo()
{
    session_.Redo();
    ShowChange();
}

void frmKeyb::reject()
{
    if (!session_.IsChanged())
        return QDialog::reject();
    if (texts_.Tell(texts_.Caption(Message::DiscardKeyMap), YesNoStyle) != Answer::Yes)
        return;
    // A window manager that is just giving the focus back from the question must find this form still there,
    // or nobody gets it. Where none tells, the wait has an end.
    discardWait_.start(isActiveWindow() ? 0 : ActivationTimeoutMs);
}

void frmKeyb::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && discardWait_.isActive() && isActiveWindow())
        discardWait_.start(0);
    const bool isOfLook = event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange;
    if (isOfLook && unusedCheck_)
        ShowPictures();
}

void frmKeyb::keyPressEvent(QKeyEvent* event)
{
    const bool bare = (event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) == 0;
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (auto* const button = qobject_cast<QPushButton*>(focusWidget()))
            button->click();
        return;
    }
    if (event->matches(QKeySequence::Find)) {
        find_->setFocus(Qt::ShortcutFocusReason);
        return find_->selectAll();
    }
    if (event->key() == Qt::Key_Escape && focusWidget() == find_) {
        find_->clear();
        ShowHint();
        return grid_->FocusKeys();
    }
    if (event->matches(QKeySequence::Undo))
        return Undo();
    if (event->matches(QKeySequence::Redo))
        return Redo();
    const bool isDigit = event->key() >= Qt::Key_1 && event->key() <= Qt::Key_4;
    if (!bare || (!isDigit && event->key() != Qt::Key_U))
        return QDialog::keyPressEvent(event);
    session_.ChooseRing();
    if (isDigit)
        KeyTypeOption_Click(event->key() - Qt::Key_1);
    else
        UnusedCheck_Click();
}

}  // namespace kelvora
