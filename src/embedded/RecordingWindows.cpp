// SPDX-License-Identifier: Apache-2.0
#include "embedded/RecordingWindows.h"

#include <optional>
#include <utility>

#include "embedded/CheckBoxes.h"

namespace qor::embedded {

namespace {

template <class Answer>
std::optional<Answer> next(std::deque<Answer>& answers) {
    if (answers.empty()) return std::nullopt;
    std::optional<Answer> answer(std::move(answers.front()));
    answers.pop_front();
    return answer;
}

}  // namespace

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
    return next(_answers.questions).value_or(false);
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

bool RecordingWindows::checkBoxDialog(SV::Window*, const SV::String& title, std::span<QorCheckBox> boxes) {
    note(QorShownKind::CheckBoxDialog, 0, title.str());
    const auto answer = next(_answers.checkBoxes);
    if (!answer) return false;
    for (std::size_t at = 0; at < boxes.size() && at < answer->size(); ++at)
        if (isEnabled(boxes, at)) boxes[at].checked = (*answer)[at];
    return true;
}

bool RecordingWindows::saveFileDialog(SV::Window*, const QorFileFilter& filter, SV::String& path) {
    note(QorShownKind::SaveFileDialog, 0, filter.pattern.str());
    const auto answer = next(_answers.files);
    path = SV::String(answer.value_or(std::string()));
    return answer.has_value();
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
