// SPDX-License-Identifier: Apache-2.0
#include "cli/HierarchyRows.h"

namespace qor::cli {

std::vector<QorIdentifier> HierarchyRows::of(QorIdentifier object) {
    std::vector<QorIdentifier> rows;
    collect(object, _reader.classOfObject(object), rows);
    return rows;
}

void HierarchyRows::collect(QorIdentifier holder, QorIdentifier cls, std::vector<QorIdentifier>& rows) {
    for (const Table& table : tablesOf(cls))
        for (const QorIdentifier row : _reader.recordRows(holder, table.attribute)) {
            rows.push_back(row);
            collect(row, table.recordClass, rows);
        }
}

const std::vector<HierarchyRows::Table>& HierarchyRows::tablesOf(QorIdentifier cls) {
    const auto [known, isNew] = _tables.try_emplace(cls);
    for (QorIdentifier owner = cls; isNew && owner > 0; owner = _reader.classInfo(owner).superclass)
        for (const QorAttributeInfo& attribute : _reader.attributesOf(owner))
            if (attribute.type == QorCoreAttributeType::Record)
                known->second.push_back({attribute.id, attribute.target});
    return known->second;
}

}  // namespace qor::cli
