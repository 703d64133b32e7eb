#include "layout/forms/frmConfig.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QUndoCommand>
#include <QVBoxLayout>
#include <utility>

#include "app/ShowMessage.h"
#include "keymap/forms/frmKeyb.h"
#include "layout/Connection.h"
#include "layout/LayoutCommands.h"
#include "layout/ModuleOptions.h"
#include "layout/forms/PlacingMode.h"
#include "layout/forms/StripView.h"
#include "layout/forms/frmOptions.h"
#include "platform/qt/Text.h"

namespace kelvora {

// Every edit is one of these: the document before it and after it.
class frmConfig::DocumentChange final : public QUndoCommand {
public:
    DocumentChange(frmConfig& form, const MessageId& name, SetupDocument after)
        : form_(form), name_(name), before_(form.session_.document), after_(std::move(after))
    {
    }

    const MessageId& Name() const { return name_; }

    void undo() override { form_.ShowDocument(before_); }
    void redo() override { form_.ShowDocument(after_); }

private:
    frmConfig& form_;
    MessageId name_;
    SetupDocument before_;
    SetupDocument after_;
};

frmConfig::frmConfig(Program& program, QWidget* parent)
    : QWidget(parent),
      strip_(new StripView(program.catalogue, this)),
      session_(program, strip_),
      undoStack_(new QUndoStack(this))
{
    setObjectName(QStringLiteral("frmConfig"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(strip_);
    setFocusProxy(strip_);
    ConnectStrip();
    connect(undoStack_, &QUndoStack::cleanChanged, this, [this] { ShowTitle(); });
    connect(undoStack_, &QUndoStack::indexChanged, this, [this] { Changed(); });
}

void frmConfig::ConnectStrip()
{
    strip_->onClick = [this](StripButton button) { cbModule_Click(button); };
    strip_->onDoubleClick = [this](StripButton button) {
        if (button == StripButton::MCR)
            EditOptions(ModuleKind::MCR);
        else if (button == StripButton::Backlight)
            EditOptions(ModuleKind::KM096);
    };
    strip_->onContextMenu = [this](StripButton /*button*/, const QPoint& place) {
        if (onLayoutMenu)
            onLayoutMenu(place);
    };
    strip_->onAddMaster = [this] { LayoutMenuAdd_Click(ModuleKind::KM096); };
    strip_->onFocusChange = [this] { Changed(); };
}

void frmConfig::Changed()
{
    if (onChange)
        onChange();
}

frmConfig::~frmConfig()
{
    // The stack tells of its end like of any change, when nobody listens any more.
    undoStack_->disconnect(this);
}

bool frmConfig::Form_Load(const std::optional<std::string>& path)
{
    if (!session_.Load(path))
        return false;
    strip_->ShowModules(session_.document.Modules);
    ShowTitle();
    return true;
}

void frmConfig::cbModule_Click(StripButton button)
{
    if (session_.Shared().busy)
        return;
    // The chip card unit's keys are on its keypad.
    if (button == StripButton::Master || button == StripButton::KM064 || button == StripButton::Keypad)
        EditKeyMap(KindOfButton(button));
}

void frmConfig::EditKeyMap(ModuleKind kind)
{
    if (!session_.HandOver(kind))
        return;
    const Program& program = session_.Shared();
    frmKeyb form(kind, program.catalogue, program.world.prompt, session_.settings, window());
    form.exec();
    if (auto changed = session_.TakeBack(kind))
        Push(Message::UndoKeyMap, *std::move(changed));
}

void frmConfig::EditOptions(ModuleKind kind)
{
    const Program& program = session_.Shared();
    if (program.busy)
        return;
    std::optional<SetupDocument> changed;
    if (const auto mcr = ReadMcrOptions(session_.document); kind == ModuleKind::MCR && mcr) {
        frmMcrOptions form(program.catalogue, *mcr, window());
        if (form.exec() == QDialog::Accepted)
            changed = WithOptions(session_.document, form.Options());
    } else if (const auto master = ReadMasterOptions(session_.document);
               kind == ModuleKind::KM096 && master) {
        frmMasterOptions form(program.catalogue, *master, window());
        if (form.exec() == QDialog::Accepted)
            changed = WithOptions(session_.document, form.Options());
    }
    if (changed && *changed != session_.document)
        Push(Message::UndoOptions, *std::move(changed));
}

void frmConfig::LayoutMenuOptions_Click()
{
    if (const auto button = strip_->FocusedButton())
        EditOptions(KindOfButton(MainButtonOf(*button)));
}

void frmConfig::LayoutMenuAdd_Click(ModuleKind kind)
{
    const SetupDocument& document = session_.document;
    if (FindModule(document.Modules, kind))
        return;
    const PlaceRange range = PlacesFor(kind, document.Modules);
    if (range.first < range.last && MainChain(document.Modules).size() >= ModulesToPlaceAmong) {
        StartPlacing(kind, Message::UndoAdd);
        return;
    }
    Push(Message::UndoAdd, PlaceModule(document, kind, range.last));
    strip_->FocusButton(ButtonOf(kind));
}

void frmConfig::LayoutMenuMove_Click()
{
    const auto button = strip_->FocusedButton();
    if (!button)
        return;
    const ModuleKind kind = KindOfButton(MainButtonOf(*button));
    const PlaceRange range = PlacesFor(kind, session_.document.Modules);
    if (range.first < range.last)
        StartPlacing(kind, Message::UndoMove);
}

void frmConfig::StartPlacing(ModuleKind kind, const MessageId& undoName)
{
    placing_ = true;
    Changed();
    new PlacingMode(*strip_, session_.document, kind,
                    [this, kind, undoName](std::optional<std::size_t> place) {
                        placing_ = false;
                        if (place) {
                            SetupDocument placed = PlaceModule(session_.document, kind, *place);
                            if (placed != session_.document)
                                Push(undoName, std::move(placed));
                        }
                        strip_->FocusButton(ButtonOf(kind));
                        Changed();
                    });
}

void frmConfig::LayoutMenuDel_Click()
{
    const auto button = strip_->FocusedButton();
    if (!button)
        return;
    const Deletion deletion = PlanDeletion(session_.document.Modules, *button);
    if (deletion == Deletion::Nothing)
        return;
    if (deletion == Deletion::WholeChain &&
        session_.Shared().Show(Message::DeleteMaster, YesNoStyle) != Answer::Yes)
        return;
    Push(Message::UndoDelete, Delete(session_.document, *button));
    strip_->FocusButton(std::nullopt);
}

void frmConfig::SelectPort(std::int16_t port)
{
    if (kelvora::SelectPort(session_.settings, port))
        Changed();
}

void frmConfig::Push(const MessageId& name, SetupDocument after)
{
    undoStack_->push(new DocumentChange(*this, name, std::move(after)));
}

std::optional<MessageId> frmConfig::NameOf(int step) const
{
    const auto* change = dynamic_cast<const DocumentChange*>(undoStack_->command(step));
    return change ? std::optional(change->Name()) : std::nullopt;
}

void frmConfig::ShowDocument(const SetupDocument& document)
{
    session_.document = document;
    SetStripPlaces(session_.document.Modules);
    strip_->ShowModules(session_.document.Modules);
}

void frmConfig::FileMenuSave_Click()
{
    if (session_.Save())
        undoStack_->setClean();
    if (onFile)
        onFile();
    ShowTitle();
}

void frmConfig::FileMenuSaveAs_Click()
{
    if (session_.SaveAs())
        undoStack_->setClean();
    if (onFile)
        onFile();
    ShowTitle();
}

bool frmConfig::MayClose()
{
    const bool may = session_.MayClose(IsChanged());
    if (onFile)
        onFile();
    return may;
}

CommandState frmConfig::State(bool canScan) const
{
    CommandState state = EnabledCommands(CommandSituation{.modules = &session_.document.Modules,
                                                          .busy = session_.Shared().busy,
                                                          .canScan = canScan,
                                                          .placing = placing_,
                                                          .canUndo = undoStack_->canUndo(),
                                                          .canRedo = undoStack_->canRedo()});
    const auto focused = strip_->FocusedButton();
    const auto main = focused ? std::optional(MainButtonOf(*focused)) : std::nullopt;
    state.options = state.fileSave && (main == StripButton::Master || main == StripButton::MCR);
    return state;
}

void frmConfig::FocusStrip()
{
    if (!placing_ && !strip_->isAncestorOf(QApplication::focusWidget()))
        strip_->FocusButton(strip_->FocusedButton());
}

void frmConfig::Retranslate()
{
    strip_->Retranslate();
}

void frmConfig::ShowTitle()
{
    setWindowTitle(PathToQString(session_.settings.Name) + QStringLiteral("[*]"));
    setWindowModified(IsChanged());
    Changed();
}

void frmConfig::closeEvent(QCloseEvent* event)
{
    if (mayCloseUnasked_ || MayClose())
        event->accept();
    else
        event->ignore();
}

void frmConfig::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && onInterrupt)
        onInterrupt();
    else
        QWidget::keyPressEvent(event);
}

}  // namespace kelvora
