// SPDX-License-Identifier: Apache-2.0
#include "frame/LoadContext.h"

#include "platform/QorErrorBox.h"

namespace qor::frame {

LoadContext::LoadContext(SV::Window* parent, bool silent)
    : _parent(parent != nullptr ? parent : SV::Application::GetAppWindow()), _silent(silent) {}

std::unique_ptr<QorMessWin> LoadContext::showProgress(const SV::String& text) const {
    if (_silent) return nullptr;
    auto window = std::make_unique<QorMessWin>(_parent, text, 0, true);
    window->Show();
    return window;
}

void LoadContext::showError(const SV::String& text) const {
    if (!_silent) QorErrorBox(_parent, QorBoxStyle::Error, text).Execute(QorErrorBoxType::Standard);
}

}  // namespace qor::frame
