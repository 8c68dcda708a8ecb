// SPDX-License-Identifier: Apache-2.0
#include "simmap/ClassesRecord.h"

#include <utility>
#include <vector>

#include "frame/RepositoryLookup.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreVar.h"
#include "simmap/KexValues.h"
#include "simmap/NumberedKey.h"
#include "simmap/internalErrors.h"

namespace qor::simmap {

struct ClassSide {
    QorCoreVarType part;
    std::string_view prefix;
    std::string_view noneKey;
    std::string_view allKey;
    std::string_view usage;
    MappingLine classesLine;
    MappingLine subclassesLine;
};

namespace {

constexpr ClassSide kBusinessProcess = {
    QorCoreVarType::BusinessProcessLibrary,
    "bp-",
    "bp-none",
    "bp-all",
    "SIMCLASSES bp-[all | none | 1..n]",
    MappingLine::BusinessProcessClasses,
    MappingLine::BusinessProcessSubclasses,
};
constexpr ClassSide kWorkingEnvironment = {
    QorCoreVarType::WorkingEnvironmentLibrary,
    "we-",
    "we-none",
    "we-all",
    "SIMCLASSES we-[all | none | 1..n]",
    MappingLine::WorkingEnvironmentClasses,
    MappingLine::WorkingEnvironmentSubclasses,
};

/// Collects the class and its subclasses, as far as they are among `possible`.
bool collectWithSubclasses(long cls, const ISortedSet<long>& possible, std::vector<long>& members) {
    ISortedSet<long> subclasses;
    if (QorCoreModelingManager::GetGlobal()->getAllSubClasses(cls, subclasses) != QorErrorCode::Ok) return false;
    if (possible.contains(cls)) members.push_back(cls);
    for (const long subclass : subclasses)
        if (possible.contains(subclass)) members.push_back(subclass);
    return true;
}

}  // namespace

int ClassesRecord::read(ISortedSet<long>& businessProcessClasses, ISortedSet<long>& workingEnvironmentClasses) {
    if (const int code = readSide(kBusinessProcess, businessProcessClasses); code != QorSimCode::Ok) return code;
    if (const int code = readSide(kWorkingEnvironment, workingEnvironmentClasses); code != QorSimCode::Ok) return code;
    return _tolerance.result();
}

/// What another record has put into the set stays there.
int ClassesRecord::readSide(const ClassSide& side, ISortedSet<long>& classes) {
    if (_parser.IsContained(side.noneKey)) return QorSimCode::Ok;

    const long part = Qor_GetCoreVarConst(side.part);
    ISortedSet<long> possible;
    if (!allClasses(part, possible)) {
        reportInternalError(side.classesLine);
        return QorSimCode::Failed;
    }

    std::vector<long> members;
    NumberedKey key(side.prefix);
    for (auto name = valueOf(_parser, key.view()); name; key.next(), name = valueOf(_parser, key.view())) {
        const auto cls = frame::findClass(part, *name);
        if (!cls) {
            const int code = _errors.unknown(_parser.GetKeyPosition(key.view()), name->view());
            if (_tolerance.isStoppedBy(code)) return code;
        } else if (!collectWithSubclasses(*cls, possible, members)) {
            reportInternalError(side.subclassesLine);
            return QorSimCode::Failed;
        }
    }

    if (_parser.IsContained(side.allKey)) {
        classes = std::move(possible);
        return QorSimCode::Ok;
    }
    if (key.number() == 1) {
        const int code = _errors.missing(_parser.GetCurElemPosition(), side.usage);
        return _tolerance.isStoppedBy(code) ? code : QorSimCode::Ok;
    }
    ISortedSet<long> listed;
    listed.assign(std::move(members));
    classes.addAllFrom(listed);
    return QorSimCode::Ok;
}

bool allClasses(long part, ISortedSet<long>& classes) {
    return QorCoreModelingManager::GetGlobal()->getAllInstantiableClasses(part, classes, false) == QorErrorCode::Ok;
}

}  // namespace qor::simmap
