// SPDX-License-Identifier: Apache-2.0
#include "platform/SvWindow.h"

#include "platform/InstalledService.h"
#include "platform/QorGuard.h"
#include "platform/QorWindows.h"

using qor::platform::installed;

namespace SV {

Window::~Window() = default;

Window* Application::GetAppWindow() noexcept {
    return Qor_Guarded<Window*>("window", nullptr, [] { return installed(&QorHost::windows).appWindow(); });
}

Window* Application::GetTopWindow() noexcept {
    return Qor_Guarded<Window*>("window", nullptr, [] { return installed(&QorHost::windows).topWindow(); });
}

bool Application::IsWaitCursor() noexcept {
    return Qor_Guarded("window", false, [] { return installed(&QorHost::windows).isWaitCursor(); });
}

void Application::SetWaitCursor(bool on) noexcept {
    Qor_Guarded("window", [on] { installed(&QorHost::windows).setWaitCursor(on); });
}

}  // namespace SV

QorWaitCursor::QorWaitCursor() noexcept : _before(SV::Application::IsWaitCursor()) {
    if (!_before) SV::Application::SetWaitCursor(true);
}

QorWaitCursor::~QorWaitCursor() {
    if (SV::Application::IsWaitCursor() != _before) SV::Application::SetWaitCursor(_before);
}
