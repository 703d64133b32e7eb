#include "layout/forms/frmConfig.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QUndoCommand>
#include <QVBoxLayout>
#include <utility>

#include "keymap/forms/frmKeyb.h"
#include "layout/forms/StripView.h"
#include "platform/qt/Text.h"

namespace kelvora {

// Every edit is one of these: the document before it and after it.
class frmConfig::DocumentChange final : public QUndoCommand {
public:
    DocumentChange(frmConfig& form, const QString& text, SetupDocument after)
        : QUndoCommand(text), form_(form), before_(form.session_.document), after_(std::move(after))
    {
    }

    void undo() override { form_.ShowDocument(before_); }
    void redo() override { form_.ShowDocument(after_); }

private:
    frmConfig& form_;
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
    strip_->onClick = [this](StripButton button) { cbModule_Click(button); };
    connect(undoStack_, &QUndoStack::cleanChanged, this, [this] { ShowTitle(); });
    connect(undoStack_, &QUndoStack::indexChanged, this, [this] {
        if (onChange)
            onChange();
    });
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

void frmConfig::Push(const MessageId& name, SetupDocument after)
{
    undoStack_->push(
        new DocumentChange(*this, ToQString(session_.Shared().catalogue.Caption(name)), std::move(after)));
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
    ShowTitle();
}

void frmConfig::FileMenuSaveAs_Click()
{
    if (session_.SaveAs())
        undoStack_->setClean();
    ShowTitle();
}

bool frmConfig::MayClose()
{
    return session_.MayClose(IsChanged());
}

CommandState frmConfig::Commands(bool canScan) const
{
    return EnabledCommands({&session_.document.Modules, session_.Shared().busy, canScan,
                            undoStack_->canUndo(), undoStack_->canRedo()});
}

void frmConfig::FocusStrip()
{
    if (!strip_->FocusedButton())
        strip_->FocusButton(std::nullopt);
}

void frmConfig::Retranslate()
{
    strip_->Retranslate();
}

void frmConfig::ShowTitle()
{
    setWindowTitle(ToQString(session_.settings.Name) + QStringLiteral("[*]"));
    setWindowModified(IsChanged());
    setToolTip(PathToQString(session_.File().path));
    if (onChange)
        onChange();
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
