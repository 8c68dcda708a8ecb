// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"

namespace SV {

/// A window of the host's toolkit; the system only passes it on as a parent.
class QOR_API Window {
public:
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window();
};

/// The host's application object.
class QOR_API Application {
public:
    /// The application window, and the window that a modal dialog should stand on. Null where the host has no windows.
    static Window* GetAppWindow() noexcept;
    static Window* GetTopWindow() noexcept;

    [[nodiscard]] static bool IsWaitCursor() noexcept;
    static void SetWaitCursor(bool on) noexcept;
};

}  // namespace SV

/// Shows the wait cursor while it lives and restores what was shown before.
class QOR_API QorWaitCursor {
public:
    QorWaitCursor() noexcept;
    QorWaitCursor(const QorWaitCursor&) = delete;
    QorWaitCursor& operator=(const QorWaitCursor&) = delete;
    ~QorWaitCursor();

private:
    bool _before;
};
