// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"
#include "platform/SvString.h"
#include "platform/SvWindow.h"

/// A modeless window that tells what is being done; it closes when the object ends. How it looks is the host's choice:
/// style and position are taken for the callers' sake and not handed on.
class QOR_API QorMessWin {
public:
    QorMessWin(SV::Window* parent, SV::String text, unsigned long style, bool centred);
    QorMessWin(const QorMessWin&) = delete;
    QorMessWin& operator=(const QorMessWin&) = delete;
    ~QorMessWin();
    void Show() noexcept;

private:
    SV::Window* _parent;
    SV::String _text;
    long _window = -1;
    bool _shown = false;
};
