#include "layout/forms/frmConfig.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QUndoCommand>
#include <QVBoxLayout>
#include <utility>

#include "keymap/forms/frmKeyb.h"
#include "layout/LayoutCommands.h"
#include "layout/ModuleOptions.h"
#include "layout/UndoStep.h"
#include "layout/forms/OptionsDialogs.h"
#include "layout/forms/PlacingMode.h"
#include "layout/forms/StripView.h"
#include "platform/qt/Announcement.h"
#include "platform/qt/Text.h"
#include "ports/Connection.h"

namespace kelvora {

// Every edit of the setup. It is made before the stack takes it.
class frmConfig::DocumentChange final : public QUndoCommand {
public:
    DocumentChange(frmConfig& form, const MessageId& name, UndoStep step)
        : form_(form), name_(name), step_(std::move(step))
    {
    }

    const MessageId& Name() const { return name_; }

    void undo() override
    {
        Turn();
        form_.ShowSession();
    }
    void redo() override
    {
        if (!std::exchange(isNew_, false))
            Turn();
        form_.ShowSession();
    }

private:
    void Turn()
    {
        // A setup that is in no file any more is unsaved.
        if (!step_.Turn(form_.session_))
            form_.undoStack_->resetClean();
    }

    frmConfig& form_;
    MessageId name_;
    UndoStep step_;
    bool isNew_ = true;
};

frmConfig::frmConfig(SetupDesk& desk, SetupMode mode, QWidget* parent)
    : QWidget(parent),
      strip_(new StripView(desk.Catalogue(), this)),
      session_(desk, mode, strip_),
      flash_(session_, *this),
      sheet_(session_, *this),
      undoStack_(new QUndoStack(this))
{
    setObjectName(QStringLiteral("frmConfig"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(strip_);
    setFocusProxy(strip_);
    ConnectStrip();
    sheet_.isChanged = [this] { return IsChanged(); };
    connect(&flash_, &FlashForms::fileChanged, this, &frmConfig::fileChanged);
    connect(undoStack_, &QUndoStack::cleanChanged, this, &frmConfig::ShowTitle);
    connect(undoStack_, &QUndoStack::indexChanged, this, &frmConfig::changed);
    connect(undoStack_, &QUndoStack::indexChanged, this, &frmConfig::edited);
}

void frmConfig::ConnectStrip()
{
    connect(strip_, &StripView::clicked, this, &frmConfig::cbModule_Click);
    connect(strip_, &StripView::doubleClicked, this, [this](StripButton button) {
        if (HasOptions(button))
            EditOptionsOf(KindOfButton(MainButtonOf(button)));
    });
    connect(strip_, &StripView::menuRequested, this, &frmConfig::moduleMenuRequested);
    connect(strip_, &StripView::masterRequested, this, [this] { LayoutMenuAdd_Click(ModuleKind::KM096); });
    connect(strip_, &StripView::stopRequested, this, &frmConfig::interruptRequested);
    connect(strip_, &StripView::focusChanged, this, &frmConfig::changed);
}

frmConfig::~frmConfig()
{
    // The stack tells of its end like of any change, when nobody listens any more.
    undoStack_->disconnect(this);
}

void frmConfig::Form_Load(std::optional<OpenedSetup> opened)
{
    session_.Load(std::move(opened));
    strip_->ShowModules(session_.document.Modules);
    ShowTitle();
}

void frmConfig::cbModule_Click(StripButton button)
{
    if (session_.Desk().operation.IsBusy())
        return;
    if (OpensKeyMap(button))
        EditKeyMap(KindOfButton(button));
}

void frmConfig::EditKeyMap(ModuleKind kind)
{
    if (!session_.HandOver(kind))
        return;
    frmKeyb form(kind, session_.Desk().Words(), session_.settings.Xchange, session_.settings.Name, window());
    connect(&form, &frmKeyb::sessionShown, this, [&, this] {
        keysDraft_ = session_.WithKeyMap(kind, form.Session().Map());
        emit edited();
    });
    const bool isTaken = form.exec() == QDialog::Accepted;
    keysDraft_.reset();
    emit edited();
    window()->activateWindow();
    if (!isTaken)
        return;
    if (auto changed = session_.WithKeyMap(kind, session_.settings.Xchange))
        Push(Message::UndoKeyMap, *std::move(changed));
}

void frmConfig::EditOptionsOf(ModuleKind kind)
{
    const SetupDesk& desk = session_.Desk();
    if (desk.operation.IsBusy())
        return;
    std::optional<SetupDocument> changed;
    if (const auto mcr = ReadMcrOptions(session_.document); kind == ModuleKind::MCR && mcr) {
        McrOptionsDialog form(desk.Catalogue(), *mcr, window());
        if (form.exec() == QDialog::Accepted)
            changed = WithOptions(session_.document, form.Options());
    } else if (const auto master = ReadMasterOptions(session_.document);
               kind == ModuleKind::KM096 && master) {
        MasterOptionsDialog form(desk.Catalogue(), *master, window());
        if (form.exec() == QDialog::Accepted)
            changed = WithOptions(session_.document, form.Options());
    }
    if (changed && *changed != session_.document)
        Push(Message::UndoOptions, *std::move(changed));
}

void frmConfig::EditOptions()
{
    if (const auto button = strip_->FocusedButton())
        EditOptionsOf(KindOfButton(MainButtonOf(*button)));
}

void frmConfig::LayoutMenuAdd_Click(ModuleKind kind)
{
    const SetupDocument& document = session_.document;
    if (session_.Desk().operation.IsBusy() || FindModule(document.Modules, kind))
        return;
    if (HasChoice(kind, document.Modules)) {
        StartPlacing(kind, Message::UndoAdd);
        return;
    }
    SetupDocument added = PlaceModule(document, kind, PlacesFor(kind, document.Modules).last);
    if (added != document)
        Push(Message::UndoAdd, std::move(added));
    strip_->FocusButton(ButtonOf(kind));
}

void frmConfig::LayoutMenuMove_Click()
{
    const auto button = strip_->FocusedButton();
    if (!button)
        return emit hinted(Message::ChooseModuleHint);
    const ModuleKind kind = KindOfButton(MainButtonOf(*button));
    if (!HasChoice(kind, session_.document.Modules))
        return emit hinted(Message::MasterStaysHint);
    StartPlacing(kind, Message::UndoMove);
}

void frmConfig::StartPlacing(ModuleKind kind, const MessageId& undoName)
{
    const auto focusedBefore = strip_->FocusedButton();
    auto* const placing = new PlacingMode(*strip_, session_.document, kind);
    connect(placing, &PlacingMode::ended, this, [=, this](std::optional<std::size_t> place) {
        placing_ = false;
        if (place) {
            SetupDocument placed = PlaceModule(session_.document, kind, *place);
            if (placed != session_.document)
                Push(undoName, std::move(placed));
        }
        strip_->FocusButton(place ? ButtonOf(kind) : focusedBefore);
        emit changed();
    });
    placing_ = true;
    emit changed();
}

void frmConfig::LayoutMenuDel_Click()
{
    const auto button = strip_->FocusedButton();
    if (!button)
        return emit hinted(Message::ChooseModuleHint);
    const Deletion deletion = PlanDeletion(session_.document.Modules, *button);
    if (deletion == Deletion::Nothing)
        return emit hinted(Message::KeypadStaysHint);
    if (deletion == Deletion::WholeChain &&
        session_.Desk().Words().Show(Message::DeleteMaster, YesNoStyle) != Answer::Yes)
        return;
    Push(Message::UndoDelete, Delete(session_.document, *button));
    strip_->FocusButton(std::nullopt);
}

void frmConfig::SelectPort(std::int16_t port)
{
    if (!kelvora::SelectPort(session_.settings, port))
        return;
    // The port chosen last is the next window's.
    session_.Desk().defaults.CommsPort = port;
    emit changed();
}

void frmConfig::TakeBackup(const std::string& name, SetupDocument document)
{
    session_.settings.Name = name;
    Push(Message::UndoBackup, std::move(document));
    ShowTitle();
}

void frmConfig::TakeUnsaved(SetupDocument document)
{
    Push(Message::UndoRecovery, std::move(document));
}

std::optional<SetupDocument> frmConfig::Unsaved() const
{
    return keysDraft_ || !IsChanged() ? keysDraft_ : session_.document;
}

void frmConfig::Push(const MessageId& name, SetupDocument after, std::optional<WindowFile> fileBefore)
{
    undoStack_->push(new DocumentChange(*this, name, {session_, std::move(after), std::move(fileBefore)}));
}

std::optional<MessageId> frmConfig::NameOf(int step) const
{
    const auto* change = dynamic_cast<const DocumentChange*>(undoStack_->command(step));
    return change ? std::optional(change->Name()) : std::nullopt;
}

void frmConfig::BeginWith(SetupDocument document)
{
    SetStripPlaces(document.Modules);
    session_.document = std::move(document);
    ShowSession();
}

void frmConfig::ShowSession()
{
    strip_->ShowModules(session_.document.Modules);
    ShowTitle();
}

void frmConfig::FileMenuSave_Click()
{
    AfterSaving(session_.Save());
}

void frmConfig::FileMenuSaveAs_Click()
{
    AfterSaving(session_.SaveAs());
}

bool frmConfig::MayClose()
{
    const Closing closing = session_.AskToClose(IsChanged());
    // Another window may keep the program open: what is saved is no longer changed then.
    AfterSaving(closing == Closing::Saved);
    return closing != Closing::Stay;
}

void frmConfig::AfterSaving(bool saved)
{
    if (saved)
        undoStack_->setClean();
    emit fileChanged();
    ShowTitle();
    if (saved)
        Announce(*this, ToQString(session_.Desk().Words().Caption(Message::SavedNote)));
}

CommandState frmConfig::State(bool canScan) const
{
    return CommandStateOf({.modules = &session_.document.Modules,
                           .focused = strip_->FocusedButton(),
                           .busy = session_.Desk().operation.IsBusy(),
                           .placing = placing_,
                           .canScan = canScan,
                           .canUndo = undoStack_->canUndo(),
                           .canRedo = undoStack_->canRedo()});
}

void frmConfig::FocusStrip()
{
    if (!placing_)
        strip_->FocusButton(strip_->FocusedButton());
}

void frmConfig::Retranslate()
{
    strip_->Retranslate();
    flash_.Retranslate();
}

void frmConfig::ShowTitle()
{
    // "[*]" is where the mark of a change stands; in a file's name it stands for itself.
    const QString name =
        PathToQString(session_.settings.Name).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
    setWindowTitle(name + QStringLiteral("[*]"));
    setWindowModified(IsChanged());
    emit changed();
}

void frmConfig::closeEvent(QCloseEvent* event)
{
    const bool closes = mayCloseUnasked_ || MayClose();
    event->setAccepted(closes);
    if (!closes && session_.Desk().operation.IsBusy())
        emit hinted(Message::NotClosedHint);
}

void frmConfig::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        emit interruptRequested();
    else
        QWidget::keyPressEvent(event);
}

}  // namespace kelvora
