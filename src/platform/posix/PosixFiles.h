// Files on a POSIX system. A write goes to a temporary file in the same folder, is synced and renamed over
// the old one, so that a kill, a full disk or a power cut at any moment leaves the old file or the new one.
// What a killed write leaves beside a file is taken away by the next one to that file.
#pragma once

#include "platform/Files.h"

namespace kelvora {

class PosixFiles final : public Files {
public:
    std::string Read(const std::string& path) const override;
    bool Exists(const std::string& path) const override;
    void Copy(const std::string& from, const std::string& to) override;
    void Write(const std::string& path, const std::string& text) override;
    std::vector<std::string> List(const std::string& folder) const override;
    void MakeFolder(const std::string& folder) override;
    void Remove(const std::string& path) override;
    std::unique_ptr<const Files> ForThread() const override { return std::make_unique<PosixFiles>(); }
};

/// Files::Read into `text`, whose memory is reused. Throws FileError.
void ReadWholeFile(const std::string& path, std::string& text);

}  // namespace kelvora
