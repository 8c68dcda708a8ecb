// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string>
#include <vector>

/// What kind of thing was shown.
enum class QorShownKind : std::int32_t {
    Box,  ///< a modal box, with its style
    Question,
    ProgressOpened,
    ProgressClosed,  ///< with the text that it was opened with
    WaitCursorOn,
    WaitCursorOff,
    InternalError,  ///< text "source:line: what"
    CheckBoxDialog,
    SaveFileDialog,
    BoxesForgotten,  ///< the shown error boxes were forgotten
    LibraryListRefreshed,
};

/// One thing that a platform without a console showed.
struct QorShownWindow {
    QorShownKind kind = QorShownKind::Box;
    unsigned long style = 0;
    std::string text;
};

/// Everything that was shown, in order.
using QorShownWindows = std::vector<QorShownWindow>;
