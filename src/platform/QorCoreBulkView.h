// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"

/// One end of a relation instance as seen from an object: the relation instance, its relation class, the object at the
/// other end and that object's class. 16 bytes.
struct QorRelationEnd {
    std::int32_t relation = -1;
    std::int32_t relationClass = -1;
    std::int32_t other = -1;
    std::int32_t otherClass = -1;
};

/// An object's class and its outgoing and incoming relations, each ascending by relation identifier.
struct QorObjectView {
    long cls = -1;
    std::span<const QorRelationEnd> outgoing;
    std::span<const QorRelationEnd> incoming;
};

/// Optional speed: the same answers as the plain repository operations, without a copy. Spans hold until the repository
/// next changes; viewing is no change.
class QOR_API QorCoreBulkView {
public:
    virtual ~QorCoreBulkView();
    /// One object. After a failure `cls` is -1 and both spans are empty; the caller then asks the plain operations,
    /// which say what is wrong. O(1).
    virtual QorErrorCode viewObject(long object, long& cls, std::span<const QorRelationEnd>& outgoing,
                                    std::span<const QorRelationEnd>& incoming) = 0;
    /// Several objects, in their order, up to the first that viewObject would fail for or until `views` is full.
    /// Answers how many were viewed; what stands in later places of `views` means nothing. O(1) each. A host overrides
    /// it to save the calls; by default each object is viewed by itself.
    virtual std::size_t viewObjects(std::span<const long> objects, std::span<QorObjectView> views);
};
