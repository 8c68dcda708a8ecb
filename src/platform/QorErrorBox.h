// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"
#include "platform/QorWindows.h"
#include "platform/SvString.h"
#include "platform/SvWindow.h"

/// A modal box with a message for the user.
class QOR_API QorErrorBox {
public:
    QorErrorBox(SV::Window* parent, unsigned long style, SV::String text);
    ~QorErrorBox();
    /// Shows the box; the chosen button, 0 for OK.
    int Execute(QorErrorBoxType type) noexcept;
    /// Forgets which error boxes were already shown.
    static void ClearShownErrorBoxesTable() noexcept;

private:
    SV::Window* _parent;
    unsigned long _style;
    SV::String _text;
};
