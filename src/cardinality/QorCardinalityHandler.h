// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <memory>
#include <vector>

#include "cardinality/QorCardinalityDefinitionError.h"
#include "cardinality/QorCardinalityMap.h"
#include "cardinality/QorClassCardinality.h"
#include "platform/ISortedSet.h"
#include "platform/QorExport.h"
#include "platform/SvString.h"

namespace qor::cardinality {
class ClassPlans;
struct CheckedMarks;
class FirstBreachRun;
}  // namespace qor::cardinality

/// The cardinality rules of the loaded method library, and the checks against them.
///
/// Rules are read from one keyword text per class. A maximum of 65535 or more limits nothing, a minimum of 0 neither;
/// all counts are unsigned, so that -1 in a text is a very large number. Relations count as relation instances: two
/// between the same objects are two, one of an object with itself is one outgoing and one incoming.
///
/// A check answers 1 when all is well and 0 when a rule is broken or the repository failed, which is then shown as an
/// internal error. It ends at the first breach and leaves the objects and relations concerned (`getBadObjects`,
/// `getBadRelations`) and a message (`getErrorText`). QorCardinalityCompleteCheck finds all breaches.
///
/// An identifier beyond 32 bits is an unknown identifier. No operation throws.
class QOR_API QorCardinalityHandler {
public:
    /// The process-wide handler.
    static QorCardinalityHandler& Instance() noexcept;

    /// Copies everything, rule records included; a copy is independent of the original. When memory runs out, the copy
    /// stays empty, the assigned handler unchanged, and an internal error is shown.
    QorCardinalityHandler(const QorCardinalityHandler& other) noexcept;
    QorCardinalityHandler& operator=(const QorCardinalityHandler& other) noexcept;
    ~QorCardinalityHandler();

    // ---- Rules ----

    /// Reads the rules of both libraries and, from the first, when checks run by themselves. Rules read earlier stay
    /// and are added to; `Reset` before for a fresh start. The second library is read only when the first had no
    /// errors. 1 when neither had any. O(length of the texts + classes).
    int init(long firstLibrary, long secondLibrary) noexcept;
    /// Reads the rules of one more library beside what is there, and appends its errors; for the library that `init`
    /// left unread. 1 when it had no errors.
    int readFurtherLibrary(long library) noexcept;
    /// Deletes all rules, results and errors, and switches the checks on. When checks run by themselves stays.
    void Reset() noexcept;
    /// Empties the results of the last check, what it has checked, and all error texts.
    void resetCheck() noexcept;
    /// Validates a rule text that is being edited; null: the class's stored one. 1 when it has no errors. What it says
    /// enters the rules in force, so read the library again afterwards (`Reset`, `init`).
    int checkCardinalityDefinition(long library, long cls, const char* text) noexcept;

    /// There is an error text.
    [[nodiscard]] bool isError() const noexcept;
    /// Errors of the last reading, one after the other, or the message of the last check. Empty when all went well.
    [[nodiscard]] const SV::String& getErrorText() const noexcept;
    /// The errors of the last reading with their places.
    [[nodiscard]] const std::vector<QorCardinalityDefinitionError>& getDefinitionErrors() const noexcept;

    /// Switches the checks on (any value but 0) or off. Off, every check answers that all is well.
    void setActivation(int on) noexcept;
    [[nodiscard]] int getActivation() const noexcept;

    /// Whether the library wants models checked before they are saved, or what a modelling action touched after it.
    [[nodiscard]] bool isCheckCardinalitiesBeforeSave() const noexcept;
    [[nodiscard]] bool isCheckCardinalitiesAfterModelingAction() const noexcept;

    /// Rules of one class; null when it has none. Holds until the next reading or Reset.
    [[nodiscard]] const QorClassCardinality* getClassCardinality(long cls) const noexcept;
    /// The rules of all classes that have any, ascending by class.
    [[nodiscard]] const QorCardinalityMap<QorClassCardinality>& getClassCardinalities() const noexcept;

    // ---- Checks ----

    /// Every object of the model, then every class of its model type. With `keep` not 0 the results and what has been
    /// checked stay, so that several models can be gathered. O(objects + relations).
    int checkModel(long model, int keep) noexcept;
    /// One object. `minima` and `maxima`, here and below, choose what is tested; with both, an object that breaks a
    /// maximum is not tested against its minima.
    int checkObject(long object, bool minima, bool maxima) noexcept;
    /// Both ends of a relation instance. 0 only when a breach concerns this relation, or its ends cannot be found.
    int checkRelation(long relation, bool minima, bool maxima) noexcept;
    /// The number of the class's objects in the model, subclasses included.
    bool checkClass(long model, long cls, bool minima, bool maxima) noexcept;
    /// Whether a relation of the class may be drawn between objects of two classes at all.
    int checkRelateClasses(long relationClass, long sourceClass, long targetClass) noexcept;

    /// Objects and relation instances that the last check found in breach.
    [[nodiscard]] const ISortedSet<long>& getBadObjects() const noexcept;
    [[nodiscard]] const ISortedSet<long>& getBadRelations() const noexcept;

    // ---- Questions of an editor; they leave the results of checks alone ----

    /// How many relations of the class an object of the source class may have with objects of the target class; 65535
    /// when nothing limits them.
    [[nodiscard]] unsigned long getRelationSlotCount(long relationClass, long sourceClass,
                                                     long targetClass) const noexcept;
    /// Whether the maxima still hold with one more object of the class in the model, connected by a relation of the
    /// class with an object that is there. A relation class or object below 1: the new object stands alone. True while
    /// the checks are off, false when the repository fails.
    [[nodiscard]] bool isNewObjectAllowed(long model, long cls, long relationClass, long object,
                                          bool objectIsSource) const noexcept;
    /// The same for a new object in the middle of a relation from source to target, which is replaced by two of its
    /// class.
    [[nodiscard]] bool isNewObjectInBetweenAllowed(long model, long cls, long relationClass, long source,
                                                   long target) const noexcept;

protected:
    QorCardinalityHandler() noexcept;

    // ---- Reading ----

    void initAutoChecks(long library) noexcept;
    int initFromLibrary(long library) noexcept;
    /// `text` null: the class's stored text.
    int decryptKex(long library, long cls, const char* text) noexcept;
    /// The class's record, made with its defaults when there is none; null for an identifier beyond 32 bits. To be
    /// written to before the next check, which lays out the rules for its own use.
    QorClassCardinality* createClassItem(long cls) noexcept;

    // Names; empty after an internal error.
    [[nodiscard]] SV::String getClassName(long cls) const noexcept;
    [[nodiscard]] SV::String getAttributeName(long attribute) const noexcept;
    [[nodiscard]] SV::String getRelationClassName(long relationClass) const noexcept;
    [[nodiscard]] SV::String getInstanceName(long object) const noexcept;

    // ---- Steps of the checks ----

    bool checkOneClass(long model, long cls, bool minima, bool maxima) noexcept;
    /// 1 for an object that has been checked already. Minima are tested only when the maxima hold.
    int checkOneObject(long object, bool minima, bool maxima) noexcept;
    int checkOneObjectMax(long object) noexcept;
    int checkOneObjectMin(long object) noexcept;

    /// Puts a message in place of the error text. `other` and `relationClass` below 1: none. A message or direction
    /// beyond 16 bits is unknown and reads "#0"; a number beyond 32 bits counts as the largest within.
    void makeErrorText(unsigned long message, long subject, long other, long relationClass, unsigned long number,
                       unsigned long direction) noexcept;

    /// An object joins the bad objects; anything else is taken as a relation instance and joins the bad relations,
    /// with its source and target among the bad objects where asked for.
    void setBadInstance(long identifier, bool markSource, bool markTarget) noexcept;
    void setBadInstances(const ISortedSet<long>& identifiers, bool markSource, bool markTarget) noexcept;
    void setChecked(long identifier) noexcept;
    void setChecked(const ISortedSet<long>& identifiers) noexcept;
    [[nodiscard]] bool isAlreadyChecked(long identifier) const noexcept;
    /// Of all of them.
    [[nodiscard]] bool areAlreadyChecked(const ISortedSet<long>& identifiers) const noexcept;

    // Relation instances of an object: all, of one relation class, of one with objects of one class. The set is emptied
    // first; the result is its size, 0 after an internal error.
    unsigned long getCurrentOutRelations(long object, ISortedSet<long>& relations) const noexcept;
    unsigned long getCurrentOutRelations(long object, long relationClass, ISortedSet<long>& relations) const noexcept;
    unsigned long getCurrentOutRelations(long object, long relationClass, long otherClass,
                                         ISortedSet<long>& relations) const noexcept;
    unsigned long getCurrentInRelations(long object, ISortedSet<long>& relations) const noexcept;
    unsigned long getCurrentInRelations(long object, long relationClass, ISortedSet<long>& relations) const noexcept;
    unsigned long getCurrentInRelations(long object, long relationClass, long otherClass,
                                        ISortedSet<long>& relations) const noexcept;

private:
    friend class QorCardinalityCompleteCheck;
    [[nodiscard]] qor::cardinality::CheckedMarks& checked();
    [[nodiscard]] qor::cardinality::ClassPlans& plans() const;
    template <class Check>
    bool run(const Check& check) noexcept;
    void takeCopy(const QorCardinalityHandler& other);

    SV::String _errorText;
    bool _isActive = true;
    std::unique_ptr<qor::cardinality::CheckedMarks> _checked;  ///< null: nothing has been checked
    ISortedSet<long> _badObjects;
    ISortedSet<long> _badRelations;
    bool _checkBeforeSave = false;
    bool _checkAfterModelingAction = false;
    QorCardinalityMap<QorClassCardinality> _classes;
    std::vector<QorCardinalityDefinitionError> _definitionErrors;
    mutable std::unique_ptr<qor::cardinality::ClassPlans> _plans;  ///< null: the rules have changed
};
