// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/ISortedSet.h"
#include "platform/QorExport.h"
#include "platform/QorIdentifier.h"
#include "platform/QorObject.h"

/// Remembers attributes of an object, and copies their values onto other objects of its class (docs/conversion.md). A
/// negative attribute stands for the object's size. Nothing is shown; a failing copy leaves what was written before it.
/// QorAttributeTransfer copies onto many objects as a whole and reports on every attribute.
class QOR_API QorTransferAttributesClipboard : public QorObject {
public:
    /// The process-wide clipboard.
    static QorTransferAttributesClipboard& Instance() noexcept;
    ~QorTransferAttributesClipboard() override;

    /// In place of what was remembered. The model is not needed: objects have identifiers of their own. An identifier
    /// beyond 32 bits is an unknown object. Without memory the clipboard is empty afterwards.
    void setAttributes(long model, long object, const ISortedSet<long>& attributes) noexcept;
    /// Without memory `attributes` is empty.
    void getAttributes(ISortedSet<long>& attributes) const noexcept;
    /// The source; -1 when the clipboard is empty.
    [[nodiscard]] long getObject() const noexcept { return _object; }
    [[nodiscard]] bool empty() const noexcept { return _attributes.isEmpty(); }
    void clear() noexcept;

    /// Whether the object is another one of the source's class.
    [[nodiscard]] bool isProperTarget(long object) const noexcept;
    [[nodiscard]] bool isSizeTransferred() const noexcept;

    /// Copies the attributes in ascending order, ending at the first failure. `skipSize` leaves the size alone;
    /// `refuseInterReferences` makes inter-model references a failure. False for the source itself, before anything
    /// else; true for an empty clipboard. `changed`: something other than references was written, and nothing failed.
    bool copyAttributes(long model, long target, bool skipSize, bool refuseInterReferences,
                        bool& changed) const noexcept;
    /// Replaces the rows of the target's table by copies of the source's, with the columns that the table's notebook
    /// shows. After a failure the old rows are gone and those copied so far stay. False for the source itself, before
    /// anything is deleted.
    bool copyRecordAttributes(long model, long target, long recordAttribute, bool refuseInterReferences) const noexcept;

protected:
    QorTransferAttributesClipboard() noexcept;

private:
    QorIdentifier _object = QorNoIdentifier;
    ISortedSet<long> _attributes;
};
