// SPDX-License-Identifier: Apache-2.0
#include "admin/QorAdminLogger.h"
#include "admin/internalErrors.h"
#include "admin/logFiles.h"
#include "admin/messages.h"
#include "admin/paths.h"
#include "platform/InstalledService.h"
#include "platform/QorErrorBox.h"
#include "platform/QorGuard.h"
#include "platform/QorMessage.h"
#include "platform/QorWindows.h"

using namespace qor::admin;

namespace {

bool writeFile(const SV::String& name, std::string_view text) {
    OpenFile file(name, QorFileOpenMode::Replace);
    if (!file.isOpen()) return false;
    const bool isWritten = file.write(text);
    return file.close() && isWritten;
}

}  // namespace

void QorAdminLogger::ExportLog() noexcept {
    Qor_Guarded(kLogSource, [this] {
        SV::Window* const top = SV::Application::GetTopWindow();
        SV::String path;
        const QorFileFilter filter{"*.csv", Qor_Message(message::csvFiles)};
        if (!qor::platform::installed(&QorHost::windows).saveFileDialog(top, filter, path)) return;

        const SV::String target = withExtension(path, "csv");
        const auto show = [&](unsigned long style, std::uint16_t message) {
            (void)QorErrorBox(top, style, Qor_Message(message, {{"%f", target.view()}}))
                .Execute(QorErrorBoxType::Standard);
        };
        if (fileNamePart(target).empty()) return show(QorBoxStyle::Error, message::noFileName);
        if (!QorFileManager::isFolder(folderPart(target))) return show(QorBoxStyle::Error, message::targetNotWritable);
        if (!_ReadLogFromDB()) return show(QorBoxStyle::Error, message::logNotReadable);
        const bool isWritten = writeFile(target, _record);
        _record.Clear();
        if (!isWritten) return show(QorBoxStyle::Error, message::writeError);
        show(QorBoxStyle::Information, message::exported);
    });
}
