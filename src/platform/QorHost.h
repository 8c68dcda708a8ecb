// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"

class QorAttributeProfileService;
class QorClockService;
class QorCoreModelingManager;
class QorCoreVarService;
class QorEditingService;
class QorEncryption;
class QorFileService;
class QorGrObjService;
class QorMessageTexts;
class QorModelGroupService;
class QorUserService;
class QorWindows;

/// Everything that a host provides. A null member is a service whose operations all refuse. Nothing is owned.
struct QorHost {
    QorCoreModelingManager* repository = nullptr;
    QorCoreVarService* coreVars = nullptr;
    QorUserService* users = nullptr;
    QorModelGroupService* modelGroups = nullptr;
    QorAttributeProfileService* attributeProfiles = nullptr;
    QorEditingService* editing = nullptr;
    QorGrObjService* graphics = nullptr;
    QorFileService* files = nullptr;
    QorEncryption* encryption = nullptr;
    QorMessageTexts* texts = nullptr;
    QorWindows* windows = nullptr;
    QorClockService* clock = nullptr;
};

/// Makes a host the installed one while it lives; then the one installed before returns. Last installed, first removed.
/// Without an installed host every operation refuses and no event is delivered.
class QOR_API QorHostInstallation {
public:
    explicit QorHostInstallation(const QorHost& host) noexcept;
    QorHostInstallation(const QorHostInstallation&) = delete;
    QorHostInstallation& operator=(const QorHostInstallation&) = delete;
    ~QorHostInstallation();

private:
    QorHost _host;
    const QorHost* _earlier;
};

/// The installed host; null while there is none.
QOR_API const QorHost* Qor_InstalledHost() noexcept;
