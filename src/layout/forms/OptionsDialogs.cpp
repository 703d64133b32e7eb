#include "layout/forms/OptionsDialogs.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "platform/qt/Announcement.h"
#include "platform/qt/Text.h"
#include "setup/DeviceCode.h"
#include "setup/Options.h"
#include "setup/SetupTexts.h"

namespace kelvora {

namespace {

constexpr std::array<std::uint8_t, 3> TrackCodes{DeviceCode::MCR123, DeviceCode::MCR12, DeviceCode::MCR23};
constexpr std::array<const char*, 3> TrackTexts{"1, 2, 3", "1, 2", "2, 3"};

QString OptionsTitle(const MessageCatalogue& catalogue, ModuleKind kind)
{
    return ToQString(ModuleName(catalogue, kind) + ": " + catalogue.Caption(Message::OptionsTitle));
}

QDialogButtonBox* AddButtons(QDialog& dialog, QVBoxLayout& layout)
{
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    layout.addWidget(buttons);
    return buttons;
}

// The separator that a field holds. A character that Windows-1252 lacks cannot be carried either, and "^"
// would mean none, which an empty field says.
char SeparatorOf(const QString& text)
{
    if (text.isEmpty())
        return Options::NoSeparator;
    if (text == QChar(Options::NoSeparator))
        return '\0';
    const std::string bytes = FromQString(text);
    return ToQString(bytes) == text ? bytes.front() : '\0';
}

}  // namespace

McrOptionsDialog::McrOptionsDialog(const MessageCatalogue& catalogue, const McrOptions& options,
                                   QWidget* parent)
    : QDialog(parent)
{
    const auto text = [&](const MessageId& id) { return ToQString(catalogue.Caption(id)); };
    setObjectName(QStringLiteral("McrOptionsDialog"));
    setWindowTitle(OptionsTitle(catalogue, ModuleKind::MCR));
    auto* layout = new QVBoxLayout(this);
    auto* tracksFrame = new QGroupBox(text(Message::OptionTracks), this);
    auto* tracksLayout = new QHBoxLayout(tracksFrame);
    for (std::size_t i = 0; i < tracks_.size(); ++i) {
        tracks_.at(i) = new QRadioButton(QString::fromLatin1(TrackTexts.at(i)), tracksFrame);
        tracks_.at(i)->setObjectName(QStringLiteral("TracksOption%1").arg(i));
        tracks_.at(i)->setChecked(TrackCodes.at(i) == options.tracks);
        tracksLayout->addWidget(tracks_.at(i));
    }
    layout->addWidget(tracksFrame);
    auto* form = new QFormLayout;
    const std::array captions{Message::OptionSeparator1, Message::OptionSeparator2,
                              Message::OptionSeparator3};
    for (std::size_t i = 0; i < separators_.size(); ++i) {
        auto* field = new QLineEdit(this);
        field->setObjectName(QStringLiteral("SeparatorText%1").arg(i + 1));
        field->setMaxLength(1);
        field->setPlaceholderText(text(Message::OptionNone));
        if (options.separators.at(i) != Options::NoSeparator)
            field->setText(ToQString(std::string(1, options.separators.at(i))));
        connect(field, &QLineEdit::textChanged, this, [this] { CheckSeparators(); });
        form->addRow(text(captions.at(i)), field);
        separators_.at(i) = field;
    }
    layout->addLayout(form);
    autoread_ = new QCheckBox(text(Message::OptionAutoread), this);
    autoread_->setObjectName(QStringLiteral("AutoreadCheck"));
    autoread_->setChecked(options.autoread);
    layout->addWidget(autoread_);
    reason_ = new QLabel(text(Message::SeparatorRefused) + ' ' + text(Message::SeparatorRefusedMore), this);
    reason_->setObjectName(QStringLiteral("RefusedReason"));
    reason_->setWordWrap(true);
    QFont strong = reason_->font();
    strong.setBold(true);
    reason_->setFont(strong);
    // Its room stays, so that nothing moves or shrinks when it shows.
    QSizePolicy kept = reason_->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    reason_->setSizePolicy(kept);
    layout->addWidget(reason_);
    buttons_ = AddButtons(*this, *layout);
    CheckSeparators();
}

void McrOptionsDialog::CheckSeparators()
{
    bool carried = true;
    for (const QLineEdit* field : separators_)
        carried = carried && kelvora::Options::IsSeparatorCarried(SeparatorOf(field->text()));
    if (!carried && reason_->isHidden() && isVisible())
        Announce(*reason_, reason_->text());
    reason_->setVisible(!carried);
    buttons_->button(QDialogButtonBox::Ok)->setEnabled(carried);
}

McrOptions McrOptionsDialog::Options() const
{
    McrOptions options;
    options.autoread = autoread_->isChecked();
    for (std::size_t i = 0; i < separators_.size(); ++i) {
        options.separators.at(i) = SeparatorOf(separators_.at(i)->text());
        if (tracks_.at(i)->isChecked())
            options.tracks = TrackCodes.at(i);
    }
    return options;
}

MasterOptionsDialog::MasterOptionsDialog(const MessageCatalogue& catalogue, const MasterOptions& options,
                                         QWidget* parent)
    : QDialog(parent),
      fiscal_(new QCheckBox(ToQString(catalogue.Caption(Message::OptionFiscal)), this)),
      backlight_(new QCheckBox(ToQString(catalogue.Caption(Message::OptionBacklight)), this)),
      hasBacklight_(options.backlight.has_value())
{
    setObjectName(QStringLiteral("MasterOptionsDialog"));
    setWindowTitle(OptionsTitle(catalogue, ModuleKind::KM096));
    fiscal_->setObjectName(QStringLiteral("FiscalCheck"));
    fiscal_->setChecked(options.fiscal);
    backlight_->setObjectName(QStringLiteral("BacklightCheck"));
    backlight_->setChecked(options.backlight.value_or(false));
    backlight_->setEnabled(hasBacklight_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fiscal_);
    layout->addWidget(backlight_);
    layout->addStretch();
    AddButtons(*this, *layout);
}

MasterOptions MasterOptionsDialog::Options() const
{
    MasterOptions options;
    options.fiscal = fiscal_->isChecked();
    if (hasBacklight_)
        options.backlight = backlight_->isChecked();
    return options;
}

}  // namespace kelvora
