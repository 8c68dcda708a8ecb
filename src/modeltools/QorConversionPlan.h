// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "modeltools/QorConversionHandler.h"
#include "platform/ISortedSet.h"
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/SvString.h"

namespace qor::modeltools {
enum class ConvertedPart;
class ObjectConversion;
class UnmovedRelationClasses;
}  // namespace qor::modeltools

/// What becomes of an attribute of the old objects.
enum class QorConversionFate : std::int32_t {
    Carried,  ///< the value goes over as it is
    Cast,     ///< the result of an expression goes over, not the expression
    Dropped   ///< nothing is said about it
};

/// What becomes of an attribute of a source class.
struct QorConversionAttribute {
    long cls = -1;
    long source = -1;
    long target = -1;  ///< -1 when dropped
    QorConversionFate fate = QorConversionFate::Dropped;
    std::uint32_t objects = 0;  ///< how many of the objects have a value; for a dropped one: lose it
};

/// Why a conversion cannot be carried out.
enum class QorConversionProblemKind : std::int32_t {
    NoUnitsOfWork,  ///< the host offers none, or one is open already: nothing could be taken back
    UnknownObject,  ///< the model has no such object (any more)
    NoConversions,  ///< the object's class has no attribute "__Conversion__"
    WrongText,      ///< what stands in that attribute has an error, which `text` tells
    NotIntoClass,   ///< it says nothing of the target class
    NotMade,        ///< no object of the target class and the name: the name is taken, or the model shows no such class
    ValueRefused,   ///< the target attribute does not take the value; `text` is the message
    RelationRefused,  ///< the relation class has no such ends
    Failed            ///< the repository failed
};

struct QorConversionProblem {
    QorConversionProblemKind kind = QorConversionProblemKind::Failed;
    long object = -1;
    long source = -1;  ///< attributes, for a value
    long target = -1;
    long relation = -1;
    QorErrorCode code = QorErrorCode::Ok;  ///< the repository's
    SV::String text;
};

/// A relation that is deleted with the old object, because its relation class stays behind.
struct QorLostRelation {
    long relation = -1;
    long object = -1;
};

/// A reference to an old object, which names its class and so leads nowhere, or elsewhere, afterwards.
struct QorLostReference {
    long object = -1;
    long model = -1;      ///< that the reference leaves
    long attribute = -1;  ///< that it is made through
};

struct QorPlannedConversion {
    long object = -1;
    long cls = -1;
    long newObject = -1;  ///< once it is carried out
};

/// A conversion of many objects that is looked at before it is carried out, and is carried out as a whole or not at
/// all. Needs a host with units of work.
class QOR_API QorConversionPlan {
public:
    QorConversionPlan() noexcept;
    QorConversionPlan(const QorConversionPlan&) = delete;
    QorConversionPlan& operator=(const QorConversionPlan&) = delete;
    ~QorConversionPlan();

    /// Works out what converting the objects would do, by converting them and taking it back, without the values that
    /// the target's type takes in any case: nothing stays changed, but hosts announce changed references and what is
    /// taken back. True when the plan can be carried out. The cardinality rules in force are checked before and after.
    /// References to the objects are looked for in the model and in `others`. O(content of the model, references of the
    /// others).
    bool make(long model, const ISortedSet<long>& objects, long targetClass,
              const ISortedSet<long>& others = {}) noexcept;
    /// Carries the plan out, in one unit of work. False, and nothing is changed, when it has problems, or meets one:
    /// the model may have changed since. A problem met is added to the problems. Once only.
    bool carryOut() noexcept;

    /// Ascending by object.
    [[nodiscard]] const std::vector<QorPlannedConversion>& objects() const noexcept { return _objects; }
    /// By class; what its notebook shows, in that order.
    [[nodiscard]] const std::vector<QorConversionAttribute>& attributes() const noexcept { return _attributes; }
    [[nodiscard]] const std::vector<QorConversionProblem>& problems() const noexcept { return _problems; }
    [[nodiscard]] const std::vector<QorLostRelation>& lostRelations() const noexcept { return _lostRelations; }
    /// Each once, ascending by object, model and attribute. They do not keep the plan from being carried out.
    [[nodiscard]] const std::vector<QorLostReference>& lostReferences() const noexcept { return _lostReferences; }
    /// Cardinality rules that hold, or are broken by another rule's limit, now, and would be broken afterwards. The new
    /// objects stand under the identifiers of the old ones. They do not keep the plan from being carried out.
    [[nodiscard]] const std::vector<QorCardinalityBreach>& breaches() const noexcept { return _breaches; }

private:
    struct Kind;  // what holds for all objects of a class
    using Kinds = std::map<long, Kind>;

    void clear() noexcept;
    void survey(const ISortedSet<long>& objects);
    void surveyClass(long cls, long object);
    void countValues(long cls, long object);
    void noteLostRelations(long object, const qor::modeltools::UnmovedRelationClasses& staying);
    void noteLostReferences(const ISortedSet<long>& objects, ISortedSet<long> models);
    bool convertAll(qor::modeltools::ConvertedPart part);
    bool convertOne(QorPlannedConversion& planned, const qor::modeltools::ObjectConversion& conversion);
    void rehearse();
    void add(QorConversionProblemKind kind, long object, QorErrorCode code = QorErrorCode::Ok, SV::String text = {});

    long _model = -1;
    long _targetClass = -1;
    std::unique_ptr<Kinds> _kinds;
    std::vector<QorPlannedConversion> _objects;
    std::vector<QorConversionAttribute> _attributes;
    std::vector<QorConversionProblem> _problems;
    std::vector<QorLostRelation> _lostRelations;
    std::vector<QorLostReference> _lostReferences;
    std::vector<QorCardinalityBreach> _breaches;
    bool _isReady = false;
};
