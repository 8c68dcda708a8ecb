// SPDX-License-Identifier: Apache-2.0
// The steps that turn one object into another.
#pragma once
#include <functional>
#include <vector>

#include "modeltools/AttributeConversion.h"
#include "modeltools/QorConversionHandler.h"
#include "platform/QorErrorCode.h"

namespace qor::modeltools {

/// A value that a conversion carries over.
struct ConvertedValue {
    long source = -1;
    long target = -1;
    QorCoreAttributeType sourceType = QorCoreAttributeType::None;
    QorCoreAttributeType targetType = QorCoreAttributeType::None;
    bool isMapped = false;  ///< by the text; the others go to every target class

    /// The target may refuse what the source holds: the types differ, or each attribute has rules of its own beyond the
    /// type (the words of an enumeration, the kind of a reference, the columns of a record).
    [[nodiscard]] bool mayBeRefused() const;
};

/// What is carried over from objects of the handler's class to objects of the target class, in that order: the
/// graphical representation, the variants where both classes have them, and what the text maps. After a failure of the
/// repository nobody knows all of it.
[[nodiscard]] QorErrorCode findConvertedValues(const QorConversionHandler& handler, long targetClass,
                                               std::vector<ConvertedValue>& values);

/// The relation classes whose relations stay at the old object, and so go with it; looked up when made.
class UnmovedRelationClasses {
public:
    UnmovedRelationClasses();
    [[nodiscard]] bool any() const { return _first > 0 || _second > 0; }
    [[nodiscard]] bool contain(long relationClass) const {
        return relationClass > 0 && (relationClass == _first || relationClass == _second);
    }

private:
    long _first;
    long _second;
};

/// Which values a conversion writes.
enum class ConvertedPart {
    Everything,
    Trial  ///< what may be refused: enough to see whether the whole would go
};

/// Converts single objects.
class ObjectConversion {
public:
    /// Takes a value that did not come over.
    using Refused = std::function<void(const ConvertedValue&, const ConversionOutcome&)>;
    /// Takes a relation that could not be moved.
    using Unmoved = std::function<void(long relation, QorErrorCode code)>;

    ObjectConversion(long model, long targetClass, ConvertedPart part)
        : _model(model), _targetClass(targetClass), _part(part) {}

    /// All steps. The first code but Ok is returned; when the old object stays, `newObject` stays as well.
    QorErrorCode run(long object, const std::vector<ConvertedValue>& values, const Refused& refused,
                     const Unmoved& unmoved, long& newObject) const;

private:
    void carryOver(long object, long newObject, const std::vector<ConvertedValue>& values, bool mapped,
                   const Refused& refused) const;

    long _model;
    long _targetClass;
    ConvertedPart _part;
    UnmovedRelationClasses _staying;
};

}  // namespace qor::modeltools
