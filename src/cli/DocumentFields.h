// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "interchange/QorDocument.h"

namespace qor::cli {

/// Where the faults of a document go.
class DocumentFaults {
public:
    DocumentFaults(std::string file, std::vector<QorDiagnostic>& diagnostics)
        : _file(std::move(file)), _diagnostics(diagnostics) {}
    void add(const QorDocumentNode& node, std::string text);

private:
    std::string _file;
    std::vector<QorDiagnostic>& _diagnostics;
};

/// The values of a mapping with fixed keys.
class DocumentFields {
public:
    /// Reports what is no mapping, and keys that do not belong. `what` names the thing ("a rule").
    DocumentFields(const QorDocumentNode& mapping, std::string_view what, std::initializer_list<std::string_view> keys,
                   DocumentFaults& faults);

    /// Nothing when the key is absent.
    [[nodiscard]] QorDocumentNode operator[](std::string_view key) const;
    /// Empty when the key is absent or null; what is no text is reported.
    [[nodiscard]] std::string text(std::string_view key) const;
    /// The same, reported when it is empty.
    [[nodiscard]] std::string requiredText(std::string_view key) const;
    /// The entries of a list; what is no list is reported.
    [[nodiscard]] std::vector<QorDocumentNode> list(std::string_view key) const;
    /// A whole number that is not negative; 0, reported, when the value is none.
    [[nodiscard]] std::uint32_t number(std::string_view key) const;

private:
    QorDocumentNode _mapping;
    std::string _what;
    std::vector<QorDocumentNode> _keysAndValues;
    DocumentFaults& _faults;
};

}  // namespace qor::cli
