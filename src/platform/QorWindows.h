// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <span>

#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/SvString.h"
#include "platform/SvWindow.h"

/// Looks of a message box.
namespace QorBoxStyle {
inline constexpr unsigned long Error = 16;
inline constexpr unsigned long Query = 32;
inline constexpr unsigned long Information = 64;
}  // namespace QorBoxStyle

/// Which error box is executed; the system uses Standard only.
enum class QorErrorBoxType : std::int32_t { Standard = 0 };

/// A check box of a modal dialog. `enabledBy` is the index of the check box that must be checked for this one to be
/// enabled, -1 when it always is; with the index of no box it never is.
struct QOR_API QorCheckBox {
    SV::String label;
    bool checked = false;
    int enabledBy = -1;
};

/// A file type that a save dialog offers.
struct QOR_API QorFileFilter {
    SV::String pattern;  ///< "*.csv"
    SV::String displayName;
};

/// What a host shows. The defaults show nothing: boxes answer 0, dialogs count as cancelled, the wait cursor is off.
/// All texts are complete.
class QOR_API QorWindows {
public:
    virtual ~QorWindows();

    // Owned by the host and alive as long as it shows them; null where there is none.
    virtual SV::Window* appWindow();
    virtual SV::Window* topWindow();
    virtual bool isWaitCursor();
    virtual void setWaitCursor(bool on);

    /// A modal box; returns the chosen button, 0 for OK.
    virtual int box(SV::Window* parent, unsigned long style, const SV::String& text);
    /// A question; true for yes.
    virtual bool query(SV::Window* parent, const SV::String& text);
    /// Forgets which error boxes were already shown.
    virtual void clearShownBoxes();

    /// Opens a progress window; the result identifies it for `closeProgress`.
    virtual long openProgress(SV::Window* parent, const SV::String& text);
    virtual void closeProgress(long window);

    /// A modal dialog of check boxes; true for OK, with their states taken over.
    virtual bool checkBoxDialog(SV::Window* parent, const SV::String& title, std::span<QorCheckBox> boxes);
    /// A dialog for the name of a file to write; false when cancelled, and then `path` is empty.
    virtual bool saveFileDialog(SV::Window* parent, const QorFileFilter& filter, SV::String& path);

    /// An internal error: which source file and line, and possibly what. The default writes one line to standard error.
    virtual void internalError(const char* source, long line, const char* text);
    /// The application's list of application libraries is to be made anew.
    virtual QorErrorCode refreshLibraryList();
};
