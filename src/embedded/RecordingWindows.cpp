// SPDX-License-Identifier: Apache-2.0
#include "embedded/RecordingWindows.h"

namespace qor::embedded {

RecordingWindows::~RecordingWindows() = default;

void RecordingWindows::setWaitCursor(bool on) {
    if (on != _waitCursor) _shown.push_back({on ? QorShownKind::WaitCursorOn : QorShownKind::WaitCursorOff, 0, {}});
    _waitCursor = on;
}

int RecordingWindows::box(SV::Window*, unsigned long style, const SV::String& text) {
    _shown.push_back({QorShownKind::Box, style, text.str()});
    return 0;
}

bool RecordingWindows::query(SV::Window*, const SV::String& text) {
    _shown.push_back({QorShownKind::Question, QorBoxStyle::Query, text.str()});
    return false;
}

void RecordingWindows::clearShownBoxes() { _shown.push_back({QorShownKind::BoxesForgotten, 0, {}}); }

long RecordingWindows::openProgress(SV::Window*, const SV::String& text) {
    _progress[++_lastProgress] = text.str();
    _shown.push_back({QorShownKind::ProgressOpened, 0, text.str()});
    return _lastProgress;
}

void RecordingWindows::closeProgress(long window) {
    const auto open = _progress.find(window);
    if (open == _progress.end()) return;
    _shown.push_back({QorShownKind::ProgressClosed, 0, std::move(open->second)});
    _progress.erase(open);
}

bool RecordingWindows::checkBoxDialog(SV::Window*, const SV::String& title, std::span<QorCheckBox>) {
    _shown.push_back({QorShownKind::CheckBoxDialog, 0, title.str()});
    return false;
}

bool RecordingWindows::saveFileDialog(SV::Window*, const QorFileFilter& filter, SV::String& path) {
    path.Clear();
    _shown.push_back({QorShownKind::SaveFileDialog, 0, filter.pattern.str()});
    return false;
}

void RecordingWindows::internalError(const char* source, long line, const char* text) {
    std::string what = std::string(source) + ":" + std::to_string(line);
    if (*text != '\0') what += std::string(": ") + text;
    _shown.push_back({QorShownKind::InternalError, 0, std::move(what)});
}

QorErrorCode RecordingWindows::refreshLibraryList() {
    _shown.push_back({QorShownKind::LibraryListRefreshed, 0, {}});
    return QorErrorCode::Ok;
}

}  // namespace qor::embedded
