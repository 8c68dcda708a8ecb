// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <memory>
#include <optional>

#include "platform/QorMessWin.h"
#include "platform/SvString.h"
#include "platform/SvWindow.h"

namespace qor::frame {

/// What one load shows, and where: nothing at all when it is silent.
class LoadContext {
public:
    /// A null parent stands for the application window.
    LoadContext(SV::Window* parent, bool silent);

    [[nodiscard]] bool isSilent() const { return _silent; }
    /// Open until the result ends.
    [[nodiscard]] std::unique_ptr<QorMessWin> showProgress(const SV::String& text) const;
    void showError(const SV::String& text) const;

private:
    SV::Window* _parent;
    bool _silent;
};

/// The wait cursor of a step, on unless the load is silent.
class StepCursor {
public:
    explicit StepCursor(const LoadContext& context) {
        if (!context.isSilent()) _cursor.emplace();
    }

private:
    std::optional<QorWaitCursor> _cursor;
};

}  // namespace qor::frame
