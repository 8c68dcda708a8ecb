// SPDX-License-Identifier: Apache-2.0
#include "platform/QorGrObjAttrHandler.h"

#include "platform/InstalledService.h"
#include "platform/QorGuard.h"

namespace {
constinit QorGrObjAttrHandler* g_current = nullptr;
constinit bool g_toolkitMode = false;
}  // namespace

QorGrObjService::~QorGrObjService() = default;

QorErrorCode QorGrObjService::findPattern(const SV::String&, bool, QorGrObjPattern& pattern) {
    pattern = {};
    return Qor_NotInstalled("QorGrObjService::findPattern");
}

QorErrorCode QorGrObjService::patterns(bool, std::vector<QorGrObjPattern>& patterns) {
    patterns.clear();
    return Qor_NotInstalled("QorGrObjService::patterns");
}

QorGrObjAttrHandler::QorGrObjAttrHandler(bool, bool) {}
QorGrObjAttrHandler::~QorGrObjAttrHandler() = default;

QorGrObjAttrHandler* QorGrObjAttrHandler::GetGlobal() noexcept { return g_current; }
void QorGrObjAttrHandler::SetGlobal(QorGrObjAttrHandler* handler) noexcept { g_current = handler; }
bool QorGrObjAttrHandler::IsToolkitMode() noexcept { return g_toolkitMode; }
void QorGrObjAttrHandler::SetToolkitMode(bool on) noexcept { g_toolkitMode = on; }

QorErrorCode QorGrObjAttrHandler::FindPattern(const SV::String& name, bool businessProcess,
                                              QorGrObjPattern& pattern) const {
    return Qor_Guarded("grobj", QorErrorCode::Broken, [&] {
        return qor::platform::installed(&QorHost::graphics).findPattern(name, businessProcess, pattern);
    });
}

QorErrorCode QorGrObjAttrHandler::GetPatterns(bool businessProcess, std::vector<QorGrObjPattern>& patterns) const {
    return Qor_Guarded("grobj", QorErrorCode::Broken, [&] {
        return qor::platform::installed(&QorHost::graphics).patterns(businessProcess, patterns);
    });
}
