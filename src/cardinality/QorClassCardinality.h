// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "cardinality/QorCardinalityLimit.h"
#include "cardinality/QorCardinalityMap.h"
#include "cardinality/QorCardinalityStorageElement.h"
#include "cardinality/QorRelationCardinality.h"
#include "platform/SvString.h"

/// The rules of one class: limits on its objects in a model and on the relations of each object.
class QOR_API QorClassCardinality final : public QorCardinalityStorageElement {
public:
    explicit QorClassCardinality(QorIdentifier cls);
    QorClassCardinality(const QorClassCardinality& other);
    QorClassCardinality& operator=(const QorClassCardinality& other);
    ~QorClassCardinality() override;

    [[nodiscard]] const QorIdentifier& key() const override;
    /// Appends all rules of the class as text and returns the text. Asks the repository for names.
    SV::String& toReportText(SV::String& text) const;

    QorCardinalityLimit maxObjects{QorNoCardinalityLimit, {}};  ///< most objects of the class in one model
    QorCardinalityLimit minObjects;
    QorCardinalityLimit maxTotal{QorNoCardinalityLimit, {}};  ///< most relations of one object, both directions
    QorCardinalityLimit minTotal;
    QorCardinalityLimit maxIn{QorNoCardinalityLimit, {}};
    QorCardinalityLimit maxOut{QorNoCardinalityLimit, {}};
    QorCardinalityLimit minIn;
    QorCardinalityLimit minOut;
    QorCardinalityMap<QorRelationCardinality> relations;  ///< by relation class

private:
    QorIdentifier _cls;
};
