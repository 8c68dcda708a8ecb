// SPDX-License-Identifier: Apache-2.0
#include "cardinality/QorClassCardinality.h"

QorCardinalityStorageElement::~QorCardinalityStorageElement() = default;

QorRelationTargetCardinality::QorRelationTargetCardinality(QorIdentifier cls) : _cls(cls) {}
QorRelationTargetCardinality::~QorRelationTargetCardinality() = default;
const QorIdentifier& QorRelationTargetCardinality::key() const { return _cls; }

QorRelationCardinality::QorRelationCardinality(QorIdentifier relationClass) : _relationClass(relationClass) {}
QorRelationCardinality::QorRelationCardinality(const QorRelationCardinality& other) = default;
QorRelationCardinality& QorRelationCardinality::operator=(const QorRelationCardinality& other) = default;
QorRelationCardinality::~QorRelationCardinality() = default;
const QorIdentifier& QorRelationCardinality::key() const { return _relationClass; }

QorClassCardinality::QorClassCardinality(QorIdentifier cls) : _cls(cls) {}
QorClassCardinality::QorClassCardinality(const QorClassCardinality& other) = default;
QorClassCardinality& QorClassCardinality::operator=(const QorClassCardinality& other) = default;
QorClassCardinality::~QorClassCardinality() = default;
const QorIdentifier& QorClassCardinality::key() const { return _cls; }
