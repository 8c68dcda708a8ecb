// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "cardinality/QorCardinalityLimit.h"
#include "cardinality/QorCardinalityStorageElement.h"
#include "platform/SvString.h"

/// Limits on the relations of one relation class between an object and the objects of one other class. One record
/// serves both directions.
class QOR_API QorRelationTargetCardinality final : public QorCardinalityStorageElement {
public:
    explicit QorRelationTargetCardinality(QorIdentifier cls);
    ~QorRelationTargetCardinality() override;

    [[nodiscard]] const QorIdentifier& key() const override;
    /// Appends the limits as text and returns the text.
    SV::String& toReportText(SV::String& text) const;

    QorCardinalityLimit maxToTarget{QorNoCardinalityLimit, {}};    ///< most relations to objects of the class
    QorCardinalityLimit minToTarget;                               ///< fewest
    QorCardinalityLimit maxFromSource{QorNoCardinalityLimit, {}};  ///< most relations from objects of the class
    QorCardinalityLimit minFromSource;                             ///< fewest

private:
    QorIdentifier _cls;
};
