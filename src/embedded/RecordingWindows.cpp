// SPDX-License-Identifier: Apache-2.0
#include "embedded/RecordingWindows.h"

#include <utility>

namespace qor::embedded {

RecordingWindows::~RecordingWindows() = default;

void RecordingWindows::note(QorShownKind kind, unsigned long style, std::string text) {
    if (_shown.size() == 2 * kKept) _shown.erase(_shown.begin(), _shown.begin() + kKept);
    _shown.push_back({kind, style, std::move(text)});
}

void RecordingWindows::setWaitCursor(bool on) {
    if (on != _waitCursor) note(on ? QorShownKind::WaitCursorOn : QorShownKind::WaitCursorOff);
    _waitCursor = on;
}

int RecordingWindows::box(SV::Window*, unsigned long style, const SV::String& text) {
    note(QorShownKind::Box, style, text.str());
    return 0;
}

bool RecordingWindows::query(SV::Window*, const SV::String& text) {
    note(QorShownKind::Question, QorBoxStyle::Query, text.str());
    return false;
}

void RecordingWindows::clearShownBoxes() { note(QorShownKind::BoxesForgotten); }

long RecordingWindows::openProgress(SV::Window*, const SV::String& text) {
    _progress[++_lastProgress] = text.str();
    note(QorShownKind::ProgressOpened, 0, text.str());
    return _lastProgress;
}

void RecordingWindows::closeProgress(long window) {
    const auto open = _progress.find(window);
    if (open == _progress.end()) return;
    note(QorShownKind::ProgressClosed, 0, std::move(open->second));
    _progress.erase(open);
}

bool RecordingWindows::checkBoxDialog(SV::Window*, const SV::String& title, std::span<QorCheckBox>) {
    note(QorShownKind::CheckBoxDialog, 0, title.str());
    return false;
}

bool RecordingWindows::saveFileDialog(SV::Window*, const QorFileFilter& filter, SV::String& path) {
    path.Clear();
    note(QorShownKind::SaveFileDialog, 0, filter.pattern.str());
    return false;
}

void RecordingWindows::internalError(const char* source, long line, const char* text) {
    std::string what = std::string(source) + ":" + std::to_string(line);
    if (*text != '\0') what += std::string(": ") + text;
    note(QorShownKind::InternalError, 0, std::move(what));
}

QorErrorCode RecordingWindows::refreshLibraryList() {
    note(QorShownKind::LibraryListRefreshed);
    return QorErrorCode::Ok;
}

}  // namespace qor::embedded
