// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string>

#include "modeltools/NamingGround.h"
#include "modeltools/NamingRule.h"
#include "modeltools/NumberSearch.h"
#include "modeltools/QorNamePlan.h"
#include "modeltools/internalErrors.h"

namespace qor::modeltools {

/// What somebody is told of a run.
class NamingReport {
public:
    virtual ~NamingReport();
    virtual void faulty(NamingRuleFault fault, const QorKexParser& parser, const NamingRule& rule) = 0;
    virtual void failed(NamingLine line, long cls, long object) = 0;
    virtual void changed(QorNameChange change) = 0;
    virtual void kept(QorNameKept why, long object) = 0;
};

/// Gives the objects of one class, and of its subclasses, their names.
class NamingRun {
public:
    NamingRun(long model, long cls, NamingGround& ground, NamingReport& report);
    NamingRun(const NamingRun&) = delete;
    NamingRun& operator=(const NamingRun&) = delete;

    /// `attribute` is the class's attribute with the rule, `objects` those to be named, in this order.
    void run(long attribute, const ISortedSet<long>& objects);

private:
    enum class Outcome { Read, LeaveObject, EndRun };
    struct Object {
        QorIdentifier id = QorNoIdentifier;
        SV::String name;
        SV::String last;
        std::string base;
        bool cut = false;
    };

    Outcome visit(Object& object);
    void name(const Object& object);
    void giveName(const Object& object, const NumberSearch::Found& found);
    [[nodiscard]] Outcome readBase(Object& object);
    [[nodiscard]] Outcome readReferences(Object& object);
    [[nodiscard]] Outcome readProfile(Object& object);
    [[nodiscard]] Outcome readValue(Object& object, long owner, long attribute);
    Outcome fail(NamingLine line, const Object& object, Outcome outcome);

    long _model;
    NamingGround& _ground;
    NamingReport& _report;
    ISortedSet<long> _classes;
    NumberSearch _numbers;
    NamingRule _rule;
    long _attribute = QorNoIdentifier;
    QorCoreAttributeType _sourceType = QorCoreAttributeType::None;
};

}  // namespace qor::modeltools
