// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "cardinality/QorCardinalityLimit.h"
#include "cardinality/QorCardinalityMap.h"
#include "cardinality/QorCardinalityStorageElement.h"
#include "cardinality/QorRelationTargetCardinality.h"
#include "platform/SvString.h"

/// Limits on an object's relations of one relation class. The defaults hold for each other class without a record in
/// `targets`.
class QOR_API QorRelationCardinality final : public QorCardinalityStorageElement {
public:
    explicit QorRelationCardinality(QorIdentifier relationClass);
    QorRelationCardinality(const QorRelationCardinality& other);
    QorRelationCardinality& operator=(const QorRelationCardinality& other);
    ~QorRelationCardinality() override;

    [[nodiscard]] const QorIdentifier& key() const override;
    /// Appends the limits and those of the targets as text and returns the text.
    SV::String& toReportText(SV::String& text) const;

    QorCardinalityLimit maxIn{QorNoCardinalityLimit, {}};
    QorCardinalityLimit minIn;
    QorCardinalityLimit maxOut{QorNoCardinalityLimit, {}};
    QorCardinalityLimit minOut;
    QorCardinalityLimit defaultMaxIn{QorNoCardinalityLimit, {}};  ///< most from any one source class
    QorCardinalityLimit defaultMinIn;
    QorCardinalityLimit defaultMaxOut{QorNoCardinalityLimit, {}};  ///< most to any one target class
    QorCardinalityLimit defaultMinOut;
    QorCardinalityMap<QorRelationTargetCardinality> targets;  ///< by the other end's class

private:
    QorIdentifier _relationClass;
};
