// SPDX-License-Identifier: Apache-2.0
#include "platform/QorCoreVar.h"

#include "platform/InstalledService.h"
#include "platform/QorGuard.h"
#include "platform/QorSyntaxChecks.h"

QorCoreVarService::~QorCoreVarService() = default;
long QorCoreVarService::coreVar(QorCoreVarType) { return -1; }
const char* QorCoreVarService::syntaxChecksLevel() { return QorDefaultSyntaxChecksLevel; }

long Qor_GetCoreVarConst(QorCoreVarType variable) noexcept {
    return Qor_Guarded("corevar", -1L,
                       [variable] { return qor::platform::installed(&QorHost::coreVars).coreVar(variable); });
}

long Qor_GetCoreVar(QorCoreVarType variable) noexcept { return Qor_GetCoreVarConst(variable); }

SV::String Qor_GetSyntaxChecksLevel() { return qor::platform::installed(&QorHost::coreVars).syntaxChecksLevel(); }
