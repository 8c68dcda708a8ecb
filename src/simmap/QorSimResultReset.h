// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "platform/ISortedSet.h"
#include "platform/QorCoreAttributeType.h"
#include "platform/QorExport.h"
#include "platform/SvString.h"
#include "simmap/QorSimResultAttributeType.h"
#include "simmap/QorSimResultDefinitions.h"

/// A value that a reset takes away.
struct QorSimResultChange {
    long model = 0;
    long object = 0;
    long attribute = 0;
    QorSimResultAttributeType kind = QorSimResultAttributeType::ProcessStart;
    QorCoreAttributeType type = QorCoreAttributeType::None;
    SV::String before;  ///< as text
};

/// A reset of simulation results that can be looked at before it is carried out, and is carried out as a whole or not
/// at all. Values that a reset would leave as they are are no changes.
class QOR_API QorSimResultReset {
public:
    QorSimResultReset() noexcept;
    QorSimResultReset(const QorSimResultReset&) = delete;
    QorSimResultReset& operator=(const QorSimResultReset&) = delete;
    ~QorSimResultReset();

    /// Works out what a reset of the models would change. False, and no changes, when the definitions have errors or
    /// the repository fails. O(result holders in the models).
    bool plan(const QorSimResultDefinitions& definitions, const ISortedSet<long>& models) noexcept;
    /// In the order of models, kinds, attributes and objects.
    [[nodiscard]] const std::vector<QorSimResultChange>& changes() const { return _changes; }
    /// What a change leaves in the attribute, as text.
    [[nodiscard]] static const char* textAfter(const QorSimResultChange& change);

    /// Carries the changes out in one unit of work; on a host without units what was written is written back after a
    /// failure. False, and nothing is changed, when a value cannot be written.
    bool apply() noexcept;

private:
    bool planModel(long model, const QorSimResultHolder& holder);
    bool planAttribute(long model, const QorSimResultHolder& holder, long attribute, const ISortedSet<long>& objects);
    void writeBack(std::size_t count) noexcept;

    std::vector<QorSimResultChange> _changes;
};
