// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "platform/QorWindows.h"

namespace qor::embedded {

// Boxes and progress on standard error. Colour and progress come only on a terminal; NO_COLOR and TERM=dumb take colour
// away, CLICOLOR_FORCE brings it without a terminal. Control characters in texts come out escaped, so that a name
// cannot steer the terminal. Questions and dialogs are asked line by line when somebody sits at a terminal; else they
// are answered with no, or cancelled.
class ConsoleWindows final : public QorWindows {
public:
    ConsoleWindows();
    ~ConsoleWindows() override;

    bool isWaitCursor() override { return _waitCursor; }
    void setWaitCursor(bool on) override { _waitCursor = on; }
    int box(SV::Window* parent, unsigned long style, const SV::String& text) override;
    bool query(SV::Window* parent, const SV::String& text) override;
    void clearShownBoxes() override {}
    long openProgress(SV::Window* parent, const SV::String& text) override;
    void closeProgress(long window) override;
    bool checkBoxDialog(SV::Window* parent, const SV::String& title, std::span<QorCheckBox> boxes) override;
    bool saveFileDialog(SV::Window* parent, const QorFileFilter& filter, SV::String& path) override;
    void internalError(const char* source, long line, const char* text) override;
    QorErrorCode refreshLibraryList() override { return QorErrorCode::Ok; }

private:
    struct Progress {
        long window;
        std::string text;
    };

    // The line that was typed, without its end; nothing where nobody can be asked, or the input has ended.
    [[nodiscard]] std::optional<std::string> ask(const std::string& prompt);
    // The answer to a yes or no; what is neither, or empty, is `usual`.
    [[nodiscard]] std::optional<bool> askWhether(const std::string& question, bool usual);
    void writeLine(const char* colour, const char* label, const std::string& text);
    void clearProgressLine();
    void showProgressLine();

    bool _terminal;
    bool _colour;
    bool _waitCursor = false;
    std::vector<Progress> _open;
    long _lastWindow = 0;
};

}  // namespace qor::embedded
