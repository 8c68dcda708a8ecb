// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <utility>
#include <vector>

#include "embedded/QorRepositoryReader.h"

namespace qor::cli {

/// The rows in the tables of objects, and in the tables of those rows.
class HierarchyRows {
public:
    explicit HierarchyRows(const QorRepositoryReader& reader) : _reader(reader) {}

    [[nodiscard]] std::vector<QorIdentifier> of(QorIdentifier object);

private:
    struct Table {
        QorIdentifier attribute;
        QorIdentifier recordClass;
    };

    void collect(QorIdentifier holder, QorIdentifier cls, std::vector<QorIdentifier>& rows);
    const std::vector<Table>& tablesOf(QorIdentifier cls);

    const QorRepositoryReader& _reader;
    std::map<QorIdentifier, std::vector<Table>> _tables;  ///< by class
};

}  // namespace qor::cli
