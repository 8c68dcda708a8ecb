// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <utility>
#include <vector>

#include "platform/ISequence.h"
#include "platform/ISortedSet.h"
#include "platform/QorExport.h"
#include "platform/SvString.h"
#include "simmap/QorSimDefinitionError.h"
#include "simmap/QorSimResultAttributeType.h"

/// Values carried over from objects of a class into a result attribute.
struct QorSimResultSource {
    long cls = 0;
    long attribute = 0;
    long resultAttribute = 0;
};

/// A class whose objects take simulation results.
struct QorSimResultHolder {
    QorSimResultAttributeType kind = QorSimResultAttributeType::ProcessStart;
    SV::String className;  ///< as written in the text; empty when the text has no such holder
    long cls = 0;          ///< 0 when there is no holder, or its class is unknown
    ISequence<long> attributes;
    ISortedSet<std::pair<long, long>> mapping;  ///< both as QorSimResultAttributes has them
    std::vector<QorSimResultSource> sources;    ///< in the order of the text
};

/// The result texts of the loaded library, read anew by each object and with all their errors. What is free of errors
/// is taken over.
class QOR_API QorSimResultDefinitions {
public:
    QorSimResultDefinitions() noexcept;
    QorSimResultDefinitions(const QorSimResultDefinitions&) = delete;
    QorSimResultDefinitions& operator=(const QorSimResultDefinitions&) = delete;
    ~QorSimResultDefinitions();

    /// One for each kind, in the order of the kinds.
    [[nodiscard]] const std::vector<QorSimResultHolder>& holders() const { return _holders; }
    /// Errors, and remarks on records that are left out.
    [[nodiscard]] const std::vector<QorSimDefinitionError>& errors() const { return _errors; }
    /// No errors; remarks do not count.
    [[nodiscard]] bool isUsable() const { return _usable; }
    /// The keys of the kind's fixed attributes, in their order ("fixedinfo").
    [[nodiscard]] static ISequence<SV::String> fixedKeys(QorSimResultAttributeType kind);

private:
    std::vector<QorSimResultHolder> _holders;
    std::vector<QorSimDefinitionError> _errors;
    bool _usable = false;
};
