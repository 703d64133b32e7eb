// The flash commands of one setup window: each runs its operation, and shows what came of it when the line
// is free again.
#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <string>

#include "flash/ImageComparison.h"
#include "layout/FlashTools.h"

class QWidget;

namespace kelvora {

class ComparisonDialog;

class FlashForms final : public QObject {
    Q_OBJECT

public:
    /// The session's window; both outlive the object.
    FlashForms(SetupSession& session, QWidget& window);
    ~FlashForms() override;

    void ToolsMenuFlashDownload_Click();
    void ToolsMenuFlashVerify_Click();
    void ToolsMenuFlashDumpSetup_Click();
    void ToolsMenuFlashDumpUpload_Click();
    /// Writes a dump, which is asked for, into the device as it is.
    void RestoreDump();
    /// Writes the dump of that file, which people know by that name, into the device as it is.
    void RestoreLater(const FlashDump& dump, const std::string& name, const std::string& path);
    /// Lists the backups, from where one can be restored.
    void ShowBackups();

    void Retranslate();

signals:
    /// The folders of the file dialogs may have changed.
    void fileChanged();

private:
    void Later(std::function<void()> work);
    /// `dumpName` is what people know a dump by; empty for the setup.
    void Transfer(const WantedContent& wanted, const std::string& dumpName, const std::string& path);
    void Restore(FlashDump dump, const std::string& name, const std::string& path);
    TransferAnswer Ask(const WantedContent& wanted, const TransferPlan& plan, const std::string& dumpName,
                       const std::string& backup);
    void Verify();
    void ShowVerified(const VerifyResult& result);
    void ShowComparison(ImageComparison images);
    std::string LineName() const;
    std::string Status(const MessageId& text) const;

    SetupSession& session_;
    QWidget& window_;
    QPointer<ComparisonDialog> comparison_;
};

}  // namespace kelvora
