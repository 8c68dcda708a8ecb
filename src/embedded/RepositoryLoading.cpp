// SPDX-License-Identifier: Apache-2.0
// From a repository file into memory.
#include "embedded/Repository.h"

namespace qor::embedded {

class Repository::Loading final : public StoredRowSink {
public:
    explicit Loading(Content& content) : _content(content) {}
    ~Loading() override;

    void expect(QorIdentifier next) override;
    QorIdentifier take(const StoredRow& row) override;
    // What can be done only when all rows are there.
    void finish(QorRepositoryResult& result);

private:
    [[nodiscard]] bool makeKnown(QorIdentifier id);
    [[nodiscard]] bool takeValue(const StoredRow& row);
    [[nodiscard]] QorIdentifier scopeOf(const StoredRow& row) const;
    [[nodiscard]] QorIdentifier scopeOfThing(QorIdentifier id) const;

    Content& _content;
    QorIdentifier _next = 0;  // 0: not known
    std::vector<StoredRow> _recordRows;
};

Repository::Loading::~Loading() = default;

void Repository::Loading::expect(QorIdentifier next) {
    _next = next;
    if (next > _content.store.things.next()) _content.store.things.skipTo(next);
}

// No identifier stands for two things, and none for a thing before it was handed out.
bool Repository::Loading::makeKnown(QorIdentifier id) {
    ThingTable& things = _content.store.things;
    if (id < ThingTable::kFirstDynamic || id == std::numeric_limits<QorIdentifier>::max()) return false;
    if (id < things.next()) return !things.exists(id);
    if (_next != 0) return false;
    things.skipTo(id + 1);
    return true;
}

void Repository::Loading::finish(QorRepositoryResult& result) {
    _content.models.orderRows(_recordRows);
    const auto demand = [&](bool isSound, const char* finding) {
        if (isSound) return;
        result.status = QorRepositoryStatus::Damaged;
        result.findings.emplace_back(finding);
    };
    demand(_content.groups.areSound(), "the model groups are no tree with names of their own");
    demand(_content.users.areSound(), "the user groups lie in a circle, or users or groups share a name");
}

QorIdentifier Repository::Loading::take(const StoredRow& row) {
    switch (row.table) {
        case StoredTable::Values:
            if (!takeValue(row)) return QorNoIdentifier;
            break;
        case StoredTable::EnumerationValues:
        case StoredTable::VisibleClasses:
            if (!_content.meta.adopt(row)) return QorNoIdentifier;
            break;
        case StoredTable::ModelGroups:
            if (!makeKnown(row.numbers[0]) || !_content.groups.adopt(row)) return QorNoIdentifier;
            break;
        case StoredTable::UserGroups:
        case StoredTable::Users:
            if (!makeKnown(row.numbers[0]) || !_content.users.adopt(row)) return QorNoIdentifier;
            break;
        case StoredTable::Memberships:
        case StoredTable::Permissions:
        case StoredTable::ProfileEntries:
        case StoredTable::UserSettings:
            if (!_content.users.adopt(row)) return QorNoIdentifier;
            break;
        case StoredTable::Threads:
        case StoredTable::Models:
        case StoredTable::Objects:
        case StoredTable::Relations:
            if (!makeKnown(row.numbers[0]) || !_content.models.adopt(row)) return QorNoIdentifier;
            break;
        case StoredTable::RecordRows:
            if (!makeKnown(row.numbers[0]) || !_content.models.adopt(row)) return QorNoIdentifier;
            _recordRows.push_back(row);
            break;
        default:
            if (!makeKnown(row.numbers[0]) || !_content.meta.adopt(row)) return QorNoIdentifier;
            break;
    }
    return scopeOf(row);
}

bool Repository::Loading::takeValue(const StoredRow& row) {
    const AttributeRow* const attribute = _content.meta.attribute(row.numbers[1]);
    const QorIdentifier instanceOf = _content.models.classOfInstance(row.numbers[0]);
    const QorIdentifier owner = instanceOf == QorNoIdentifier ? row.numbers[0] : instanceOf;
    return attribute != nullptr && _content.meta.hasAttribute(owner, *attribute) &&
           _content.values.adopt(row.numbers[0], *attribute, row.texts[0]);
}

QorIdentifier Repository::Loading::scopeOf(const StoredRow& row) const {
    switch (row.table) {
        case StoredTable::Objects:
            return row.numbers[2];
        case StoredTable::UserGroups:
        case StoredTable::Users:
        case StoredTable::Memberships:
        case StoredTable::Permissions:
        case StoredTable::ProfileEntries:
        case StoredTable::UserSettings:
            return UserDirectory::kScope;
        default:
            return scopeOfThing(row.numbers[0]);
    }
}

QorIdentifier Repository::Loading::scopeOfThing(QorIdentifier id) const {
    const QorThingKind kind = _content.store.things.kindOf(id);
    if (kind == QorThingKind::ModelThread || kind == QorThingKind::Model)
        return _content.meta.libraryOf(_content.models.modelTypeOf(id));
    if (kind == QorThingKind::ModelGroup) return _content.groups.group(id)->library;
    return isOfModels(kind) ? _content.models.modelOf(id) : _content.meta.scopeOf(id);
}

bool Repository::isEmpty() const { return !_isUnitOpen && meta().libraries().empty() && users().isEmpty(); }

QorRepositoryResult Repository::attach(std::unique_ptr<RepositoryStore> file) {
    auto content = std::make_unique<Content>();
    Loading loading(*content);
    QorRepositoryResult result = file->load(loading);
    if (!result.ok() && result.status != QorRepositoryStatus::Damaged) return result;
    loading.finish(result);
    if (!result.ok()) file->refuseWriting();
    ++_changes;
    _content = std::move(content);
    _file = std::move(file);
    return result;
}

void Repository::detach() {
    auto content = std::make_unique<Content>();
    rollBackUnit();
    ++_changes;
    _file.reset();
    _content = std::move(content);
}

QorRepositoryResult Repository::verify(RepositoryStore& file) {
    Content content;
    Loading loading(content);
    QorRepositoryResult result = file.load(loading);
    if (!result.ok() && result.status != QorRepositoryStatus::Damaged) return result;
    loading.finish(result);
    QorRepositoryResult storage = file.checkStorage();
    if (result.ok())
        result = std::move(storage);
    else
        result.findings.insert(result.findings.end(), storage.findings.begin(), storage.findings.end());
    if (result.status == QorRepositoryStatus::Damaged) file.refuseWriting();
    return result;
}

}  // namespace qor::embedded
