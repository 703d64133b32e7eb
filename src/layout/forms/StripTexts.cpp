#include "layout/forms/StripTexts.h"

#include <QStringList>
#include <array>

#include "keymap/Models.h"
#include "platform/qt/Text.h"
#include "setup/DeviceCode.h"
#include "setup/Options.h"
#include "setup/SetupTexts.h"

namespace kelvora {

namespace {

// In the order of StripButton.
constexpr std::array Captions{Message::MasterCaption, Message::MasterCaption, Message::BacklightCaption,
                              Message::Code4Caption,  Message::SlaveCaption,  Message::McrCaption,
                              Message::IccrCaption,   Message::KeypadCaption};
static_assert(Captions.size() == StripButtonCount);

}  // namespace

const ModuleRecord* StripRecord(StripButton button, const ModuleList& modules)
{
    const auto index = FindModule(modules, KindOfButton(button));
    return index ? &modules[*index] : nullptr;
}

QString StripCaption(const MessageCatalogue& catalogue, StripButton button)
{
    return ToQString(catalogue.Caption(Captions.at(static_cast<std::size_t>(button))));
}

QString StripName(const MessageCatalogue& catalogue, StripButton button, const ModuleList& modules)
{
    int count = 0;
    int place = 0;
    for (const PlacedButton& placed : LayOutStrip(modules)) {
        count += IsMainButton(placed.button) ? 1 : 0;
        if (placed.button == button && IsMainButton(button))
            place = count;
    }
    const QString caption = StripCaption(catalogue, button);
    if (place == 0)
        return caption;
    return caption + QStringLiteral(", ") + ToQString(catalogue.Word(Message::StripDevice)) +
           QString::number(place) + QLatin1Char(' ') + ToQString(catalogue.Word(Message::StripDeviceOf)) +
           QString::number(count);
}

QString StripSummary(const MessageCatalogue& catalogue, StripButton button, const ModuleList& modules)
{
    const ModuleRecord* record = StripRecord(button, modules);
    if (!record)
        return {};
    QStringList parts;
    if (record->Kind == ModuleKind::KM096 && record->Options == Options::Yes)
        parts << ToQString(catalogue.Caption(Message::FiscalSummary));
    if (record->Kind == ModuleKind::MCR)
        parts << ToQString(record->Options.substr(0, Options::TracksLength)).trimmed();
    if (FindModel(record->Kind))
        parts << ToQString(catalogue.Word(Message::FirstKeySummary)) +
                     QString::number(FirstKeyNumber(record->Kind, modules));
    return parts.join(QStringLiteral(" · "));
}

QString StripDetails(const MessageCatalogue& catalogue, StripButton button, const ModuleList& modules)
{
    QString details = StripSummary(catalogue, button, modules);
    const ModuleRecord* record = StripRecord(button, modules);
    if (record && button == StripButton::Backlight)
        return ToQString(catalogue.Caption(
            record->DeviceCode == DeviceCode::BacklightOn ? Message::ChangeYes : Message::ChangeNo));
    if (!record || record->Kind != ModuleKind::MCR || record->Options.size() < Options::McrLength)
        return details;
    details.prepend(ToQString(catalogue.Caption(Message::OptionTracks) + ": ").remove('&'));
    const std::array captions{Message::OptionSeparator1, Message::OptionSeparator2,
                              Message::OptionSeparator3};
    for (std::size_t track = 0; track < captions.size(); ++track) {
        const char separator = record->Options[Options::SeparatorAt + track];
        if (separator != Options::NoSeparator)
            details += '\n' + ToQString(catalogue.Caption(captions.at(track)) + ": " + separator).remove('&');
    }
    if (record->Options.substr(Options::AutoreadAt) == Options::On)
        details += '\n' + ToQString(catalogue.Caption(Message::OptionAutoread)).remove('&');
    return details;
}

QString StripTip(const MessageCatalogue& catalogue, StripButton button, const ModuleList& modules)
{
    QStringList lines{StripCaption(catalogue, button)};
    if (IsMainButton(button))
        lines << ToQString(ModuleName(catalogue, KindOfButton(button)));
    if (const QString details = StripDetails(catalogue, button, modules); !details.isEmpty())
        lines << details;
    if (OpensKeyMap(button))
        lines << ToQString(catalogue.Caption(Message::ClickToEdit));
    return lines.join('\n');
}

}  // namespace kelvora
