// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorCoreModelingManager.h"
#include "platform/QorErrorCode.h"
#include "platform/displayErrorMessage.h"

namespace qor::cardinality {

/// Source name of this folder's internal errors.
inline constexpr const char* kSource = "acard";

/// Which request to the repository failed. The numbers stand as line numbers in reports of internal errors, so they
/// stay what they are.
enum class Request : long {
    LibraryKind = 1,
    RuleText = 2,
    ClassName = 3,
    AttributeName = 4,
    LibraryName = 5,
    RelationClassName = 6,
    ObjectName = 7,
    InstantiableClasses = 8,
    LeavingRelationClasses = 9,
    ArrivingRelationClasses = 10,
    AutomaticChecks = 11,
    ObjectsOfModel = 20,
    ModelTypeOfModel = 21,
    VisibleClasses = 22,
    ObjectsOfClass = 23,
    ClassOfObject = 24,
    OutgoingRelations = 25,
    IncomingRelations = 26,
    ClassOfRelation = 27,
    TargetOfRelation = 28,
    EndsOfRelation = 29,
    Subclasses = 30,
    ReportName = 31,
};

inline QorCoreModelingManager& repository() noexcept { return *QorCoreModelingManager::GetGlobal(); }

inline void reportInternalError(Request request) noexcept { displayErrorMessage(kSource, static_cast<long>(request)); }

/// Whether the request succeeded; reports an internal error when it did not.
[[nodiscard]] inline bool succeeded(Request request, QorErrorCode code) noexcept {
    if (code == QorErrorCode::Ok) return true;
    reportInternalError(request);
    return false;
}

/// The same for the value of an attribute, which may be missing.
[[nodiscard]] inline bool readOrMissing(Request request, QorErrorCode code) noexcept {
    return code == QorErrorCode::NoValue || succeeded(request, code);
}

}  // namespace qor::cardinality
