// SPDX-License-Identifier: Apache-2.0
#include "platform/QorMessWin.h"

#include <utility>

#include "platform/InstalledService.h"
#include "platform/QorGuard.h"
#include "platform/QorWindows.h"

using qor::platform::installed;

QorMessWin::QorMessWin(SV::Window* parent, SV::String text, unsigned long, bool)
    : _parent(parent), _text(std::move(text)) {}

void QorMessWin::Show() noexcept {
    if (_shown) return;
    _shown = true;
    _window = Qor_Guarded("messwin", -1L, [this] { return installed(&QorHost::windows).openProgress(_parent, _text); });
}

QorMessWin::~QorMessWin() {
    if (!_shown) return;
    Qor_Guarded("messwin", [this] { installed(&QorHost::windows).closeProgress(_window); });
}
