// SPDX-License-Identifier: Apache-2.0
#include "modeltools/QorClassConversion.h"

#include <utility>

QorClassConversion::QorClassConversion(QorGrObjPattern pattern) : _pattern(std::move(pattern)) {}
QorClassConversion::QorClassConversion(const QorClassConversion&) = default;
QorClassConversion::QorClassConversion(QorClassConversion&&) noexcept = default;
QorClassConversion& QorClassConversion::operator=(const QorClassConversion&) = default;
QorClassConversion& QorClassConversion::operator=(QorClassConversion&&) noexcept = default;
QorClassConversion::~QorClassConversion() = default;
