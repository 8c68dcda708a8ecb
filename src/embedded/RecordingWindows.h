// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>

#include "embedded/QorShownWindows.h"
#include "platform/QorWindows.h"

namespace qor::embedded {

// Shows nothing and remembers what it would have shown, the last 10,000 things at least. Questions and dialogs are
// answered as it was told before.
class RecordingWindows final : public QorWindows {
public:
    ~RecordingWindows() override;

    [[nodiscard]] QorShownWindows& shown() { return _shown; }
    [[nodiscard]] QorScriptedAnswers& answers() { return _answers; }

    bool isWaitCursor() override { return _waitCursor; }
    void setWaitCursor(bool on) override;
    int box(SV::Window* parent, unsigned long style, const SV::String& text) override;
    bool query(SV::Window* parent, const SV::String& text) override;
    void clearShownBoxes() override;
    long openProgress(SV::Window* parent, const SV::String& text) override;
    void closeProgress(long window) override;
    bool checkBoxDialog(SV::Window* parent, const SV::String& title, std::span<QorCheckBox> boxes) override;
    bool saveFileDialog(SV::Window* parent, const QorFileFilter& filter, SV::String& path) override;
    void internalError(const char* source, long line, const char* text) override;
    QorErrorCode refreshLibraryList() override;

private:
    static constexpr std::size_t kKept = 10000;

    void note(QorShownKind kind, unsigned long style = 0, std::string text = {});

    QorShownWindows _shown;
    QorScriptedAnswers _answers;
    std::map<long, std::string> _progress;
    long _lastProgress = 0;
    bool _waitCursor = false;
};

}  // namespace qor::embedded
