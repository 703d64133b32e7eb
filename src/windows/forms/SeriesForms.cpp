#include "windows/forms/SeriesForms.h"

#include "layout/forms/frmConfig.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"

namespace kelvora {

SeriesForms::SeriesForms(const SetupDesk& desk, SetupWindows& setups) : desk_(desk), setups_(setups) {}

SeriesForms::~SeriesForms()
{
    blockSignals(true);
    delete window_;
}

void SeriesForms::Show()
{
    if (!window_) {
        window_ = new SeriesWindow(desk_.files, desk_.lines, desk_.defaults, desk_.eventLoop,
                                   [] { return std::make_unique<SeriesProcess>(); });
        connect(window_, &SeriesWindow::judged, this, [this](bool passed) { sounds_.Play(passed); });
        const frmConfig* const setup = setups_.Active();
        // Changes that are not saved are in no file.
        if (setup && !setup->IsChanged())
            window_->Offer(PathToQString(setup->Session().File().path), setup->Session().settings.CommsPort);
        else
            window_->Offer({}, setup ? setup->Session().settings.CommsPort : desk_.defaults.CommsPort);
    }
    BringToFront(*window_);
}

bool SeriesForms::MayClose()
{
    if (!window_)
        return true;
    const bool wasClosing = window_->IsClosing();
    if (window_->MayClose())
        return true;
    if (window_->IsClosing() && !wasClosing)
        connect(window_, &QObject::destroyed, this, &SeriesForms::ended);
    return false;
}

void SeriesForms::Retranslate()
{
    if (window_)
        window_->Retranslate();
}

}  // namespace kelvora
