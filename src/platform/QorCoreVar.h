// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/QorExport.h"

/// The platform's numbered settings. The enumerators name those that the system reads.
enum class QorCoreVarType : std::int32_t {
    ApplicationLibrary = 2,          ///< the current application library, below 1 when none is loaded
    BusinessProcessLibrary = 4,      ///< its first attached library
    WorkingEnvironmentLibrary = 6,   ///< its second attached library
    UnmovedRelationClass = 33,       ///< a relation class that a conversion leaves at the old object
    OtherUnmovedRelationClass = 40,  ///< another one
    HierarchyAttribute = 47,         ///< attribute with a business-process class's hierarchy attribute name
    CardinalityAttribute = 48,       ///< attribute with a business-process class's cardinality text
    GraphicAttribute = 49,           ///< attribute with the graphical representation of a business-process object
    WorkingEnvironmentHierarchyAttribute = 194,
    WorkingEnvironmentCardinalityAttribute = 195,
    WorkingEnvironmentGraphicAttribute = 196,
};

/// The setting's value; -1 when the host does not know the setting or no host is installed.
QOR_API long Qor_GetCoreVarConst(QorCoreVarType variable) noexcept;
/// As Qor_GetCoreVarConst; the platform offers both names.
QOR_API long Qor_GetCoreVar(QorCoreVarType variable) noexcept;

/// What a host offers behind them.
class QOR_API QorCoreVarService {
public:
    virtual ~QorCoreVarService();
    /// -1 for an unknown setting, which is also the default's answer.
    virtual long coreVar(QorCoreVarType variable);
    /// Version text of the syntax that method libraries are checked against; QorDefaultSyntaxChecksLevel by default.
    virtual const char* syntaxChecksLevel();
};
