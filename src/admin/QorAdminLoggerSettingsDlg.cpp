// SPDX-License-Identifier: Apache-2.0
#include "admin/QorAdminLoggerSettingsDlg.h"

#include <array>

#include "admin/internalErrors.h"
#include "admin/messages.h"
#include "platform/InstalledService.h"
#include "platform/QorGuard.h"
#include "platform/QorMessage.h"
#include "platform/QorWindows.h"

using namespace qor::admin;

QorAdminLoggerSettingsDlg::QorAdminLoggerSettingsDlg(SV::Window* parent) noexcept : _parent(parent) {}
QorAdminLoggerSettingsDlg::~QorAdminLoggerSettingsDlg() = default;

void QorAdminLoggerSettingsDlg::SetLogging(bool logging) noexcept {
    _logging = logging;
    _LogCBHdl();
}

bool QorAdminLoggerSettingsDlg::Execute() noexcept {
    return Qor_Guarded(kLogSource, false, [this] {
        constexpr int kLoggingBox = 0;
        std::array<QorCheckBox, 2> boxes{QorCheckBox{Qor_Message(message::loggingBox), _logging, -1},
                                         QorCheckBox{Qor_Message(message::adminNameBox), _adminName, kLoggingBox}};
        auto& windows = qor::platform::installed(&QorHost::windows);
        if (!windows.checkBoxDialog(_parent, Qor_Message(message::settingsTitle), boxes)) return false;
        SetAdminName(boxes[1].checked);
        SetLogging(boxes[0].checked);
        return true;
    });
}
