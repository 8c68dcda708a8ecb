// SPDX-License-Identifier: Apache-2.0
#include "platform/QorErrorBox.h"

#include <utility>

#include "platform/InstalledService.h"
#include "platform/QorGuard.h"

using qor::platform::installed;

QorErrorBox::QorErrorBox(SV::Window* parent, unsigned long style, SV::String text)
    : _parent(parent), _style(style), _text(std::move(text)) {}

QorErrorBox::~QorErrorBox() = default;

int QorErrorBox::Execute(QorErrorBoxType) noexcept {
    return Qor_Guarded("errorbox", 0, [this] { return installed(&QorHost::windows).box(_parent, _style, _text); });
}

void QorErrorBox::ClearShownErrorBoxesTable() noexcept {
    Qor_Guarded("errorbox", [] { installed(&QorHost::windows).clearShownBoxes(); });
}
