// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/QorExport.h"
#include "platform/SvWindow.h"

/// The modal dialog for the settings of the administrator log: two check boxes, OK, Cancel and Help. The host draws it;
/// Help is the host's affair.
class QOR_API QorAdminLoggerSettingsDlg {
public:
    /// Both boxes are empty at first. `parent` must outlive the dialog; null where the host has no windows.
    explicit QorAdminLoggerSettingsDlg(SV::Window* parent) noexcept;
    QorAdminLoggerSettingsDlg(const QorAdminLoggerSettingsDlg&) = delete;
    QorAdminLoggerSettingsDlg& operator=(const QorAdminLoggerSettingsDlg&) = delete;
    ~QorAdminLoggerSettingsDlg();

    void SetLogging(bool logging) noexcept;
    [[nodiscard]] bool GetLogging() const noexcept { return _logging; }
    void SetAdminName(bool adminName) noexcept { _adminName = adminName; }
    /// As checked, also while the box is disabled.
    [[nodiscard]] bool GetAdminName() const noexcept { return _adminName; }
    [[nodiscard]] bool IsAdminNameEnabled() const noexcept { return _isAdminNameEnabled; }

    /// Shows the dialog until it is answered; true for OK. After Cancel the boxes are as they were before.
    bool Execute() noexcept;

protected:
    /// The logging box was clicked or set: the box for the name is enabled only while it is checked.
    void _LogCBHdl() noexcept { _isAdminNameEnabled = _logging; }

private:
    SV::Window* _parent;
    bool _logging = false;
    bool _adminName = false;
    bool _isAdminNameEnabled = false;
};
