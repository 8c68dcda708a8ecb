// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "platform/QorExport.h"

class QorCardinalityHandler;

/// Which rules ever had anything to count in some models, and which objects no rule is about.
class QOR_API QorCardinalityUsage {
public:
    /// Objects of one class without rules.
    struct Untouched {
        long cls = -1;
        std::uint64_t objects = 0;
        std::uint64_t models = 0;
    };

    /// The handler must outlive this object, its rules must stay, and their library must stay loaded.
    explicit QorCardinalityUsage(const QorCardinalityHandler& handler);
    QorCardinalityUsage(const QorCardinalityUsage&) = delete;
    QorCardinalityUsage& operator=(const QorCardinalityUsage&) = delete;
    ~QorCardinalityUsage();

    /// Takes a model into account. False, after an internal error was shown, when the repository failed.
    /// O(objects + relations).
    bool addModel(long model);

    /// Rules that never applied: minima and bans (maxima of 0) of which there was no object, other maxima of which
    /// there was no relation (for numbers of objects: no object). Ascending by class.
    [[nodiscard]] std::vector<QorCardinalityRule> unapplied() const;
    /// Ascending by class.
    [[nodiscard]] std::vector<Untouched> untouched() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
