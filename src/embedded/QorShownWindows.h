// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <deque>
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

/// What a platform without a console answers when it is asked, the first one next; each is used once. Without one it
/// answers no, or Cancel.
struct QorScriptedAnswers {
    std::deque<bool> questions;
    std::deque<std::vector<bool>> checkBoxes;  ///< of one dialog each, from the first on; the others stay as they are
    std::deque<std::string> files;             ///< to save into
};
