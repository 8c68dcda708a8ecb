// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/SvString.h"

/// A class pattern of the graphical-object attribute service: the name under which a class is offered to the user.
struct QOR_API QorGrObjPattern {
    SV::String name;
    long cls = -1;
    bool unusable = false;  ///< set when objects of the class cannot be made through the pattern
};

/// What a host offers behind QorGrObjAttrHandler.
class QOR_API QorGrObjService {
public:
    virtual ~QorGrObjService();
    /// The pattern of that name in the business-process (else working-environment) part of the loaded library; NotFound
    /// when there is none. The default refuses.
    virtual QorErrorCode findPattern(const SV::String& name, bool businessProcess, QorGrObjPattern& pattern);
    /// All patterns of that part, in the order in which they are offered; unusable ones are among them. NotFound, and
    /// no patterns, while no library is loaded. The default refuses.
    virtual QorErrorCode patterns(bool businessProcess, std::vector<QorGrObjPattern>& patterns);
};

/// Handler of the graphical attributes of objects. One is current at a time; whoever creates it owns it.
class QOR_API QorGrObjAttrHandler {
public:
    QorGrObjAttrHandler(bool businessProcess, bool workingEnvironment);
    QorGrObjAttrHandler(const QorGrObjAttrHandler&) = delete;
    QorGrObjAttrHandler& operator=(const QorGrObjAttrHandler&) = delete;
    virtual ~QorGrObjAttrHandler();

    /// Null while there is none.
    static QorGrObjAttrHandler* GetGlobal() noexcept;
    /// Does not take ownership; null takes the current one away.
    static void SetGlobal(QorGrObjAttrHandler* handler) noexcept;
    /// Whether the platform runs in its toolkit mode, in which the platform makes the handler itself. False by default.
    [[nodiscard]] static bool IsToolkitMode() noexcept;
    static void SetToolkitMode(bool on) noexcept;

    // As QorGrObjService::findPattern and patterns.
    QorErrorCode FindPattern(const SV::String& name, bool businessProcess, QorGrObjPattern& pattern) const;
    QorErrorCode GetPatterns(bool businessProcess, std::vector<QorGrObjPattern>& patterns) const;
};
