// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "platform/QorCoreAttributeType.h"
#include "platform/QorExport.h"
#include "platform/QorGrObjAttrHandler.h"
#include "platform/SvString.h"

/// An attribute of the source class whose value a conversion carries over to an attribute of the target class.
struct QorAttributeMapping {
    SV::String sourceName;
    long source = -1;
    QorCoreAttributeType sourceType = QorCoreAttributeType::None;
    SV::String targetName;
    long target = -1;
    QorCoreAttributeType targetType = QorCoreAttributeType::None;
};

/// What a CLASS element of a conversion text says: into which class, and what is carried over.
class QOR_API QorClassConversion {
public:
    explicit QorClassConversion(QorGrObjPattern pattern);
    QorClassConversion(const QorClassConversion&);
    QorClassConversion(QorClassConversion&&) noexcept;
    QorClassConversion& operator=(const QorClassConversion&);
    QorClassConversion& operator=(QorClassConversion&&) noexcept;
    virtual ~QorClassConversion();

    /// The pattern of the target class.
    [[nodiscard]] const QorGrObjPattern& pattern() const noexcept { return _pattern; }
    [[nodiscard]] long targetClass() const noexcept { return _pattern.cls; }
    /// In the order of the text.
    [[nodiscard]] const std::vector<QorAttributeMapping>& mappings() const noexcept { return _mappings; }

    void add(QorAttributeMapping mapping) { _mappings.push_back(std::move(mapping)); }

private:
    QorGrObjPattern _pattern;
    std::vector<QorAttributeMapping> _mappings;
};
