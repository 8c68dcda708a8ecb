// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <vector>

#include "platform/ISortedSet.h"
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"

/// What a transfer does with one attribute of one object.
enum class QorTransferOutcome : std::int32_t {
    Changes,         ///< the value is replaced
    Same,            ///< the object has the value already; nothing is written
    IsSource,        ///< the object is the source itself
    NotOfClass,      ///< the object is of another class than the source, or unknown
    NotInModel,      ///< the object lies in another model
    NoAttribute,     ///< the source's class has no such attribute
    NoPlaceForSize,  ///< the object's position text has no place for the source's size, or the source's is unreadable
    Failed           ///< the repository failed
};

struct QorTransferEntry {
    long object = -1;
    long attribute = -1;  ///< negative: the size
    QorTransferOutcome outcome = QorTransferOutcome::Failed;
};

/// Whether a transfer is carried out when some attribute of some object cannot take part.
enum class QorTransferMode : std::int32_t { WhatFits, AllOrNothing };

/// Copies attributes of one object onto many others, as QorTransferAttributesClipboard does for one, with a report on
/// every attribute of every object before anything is written. What is written is written as a whole or not at all,
/// which needs a host with units of work.
class QOR_API QorAttributeTransfer {
public:
    QorAttributeTransfer() noexcept;
    QorAttributeTransfer(const QorAttributeTransfer&) = delete;
    QorAttributeTransfer& operator=(const QorAttributeTransfer&) = delete;
    ~QorAttributeTransfer();

    /// Works out what a transfer onto objects of the model would do. A negative attribute is the size. False, and no
    /// entries, when memory ran out. Nothing is changed. O(objects * attributes).
    bool plan(long model, long source, const ISortedSet<long>& attributes, const ISortedSet<long>& objects) noexcept;
    /// By object and attribute, ascending.
    [[nodiscard]] const std::vector<QorTransferEntry>& entries() const noexcept { return _entries; }
    /// Entries that neither change anything nor are the same already.
    [[nodiscard]] std::size_t impossibleCount() const noexcept;

    /// Writes what changes, in one unit of work. False, and nothing is written, when a value cannot be written (its
    /// entry is then Failed), when the host offers no unit of work, or, all or nothing, when some entry is impossible.
    bool carryOut(QorTransferMode mode) noexcept;

private:
    long _model = -1;
    long _source = -1;
    std::vector<QorTransferEntry> _entries;
};
