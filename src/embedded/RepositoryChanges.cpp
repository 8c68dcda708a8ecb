// SPDX-License-Identifier: Apache-2.0
// Changes that are kept or taken back as a whole, and what of them is written behind.
#include <algorithm>
#include <map>
#include <tuple>

#include "embedded/Repository.h"

namespace qor::embedded {

// ---- A change by itself, or within a unit of work ----

bool Repository::mayChange() {
    if (_file == nullptr || !_file->isReadOnly()) return true;
    _lastProblem = failure(QorRepositoryStatus::ReadOnly);
    return false;
}

Repository::Change::Change(Repository& repository, bool ofManySteps)
    : _repository(repository),
      _standsAlone((repository._file != nullptr || ofManySteps) && !repository._isUnitOpen),
      _from(repository.journal().size()) {
    ++repository._changes;
    if (_standsAlone) repository.journal().start(repository.things().next());
}

Repository::Change::~Change() {
    if (!_isKept) _repository.takeBackTo(_from);
    if (_standsAlone) _repository.journal().stop();
}

bool Repository::Change::keep() {
    _isKept = !_standsAlone || _repository._file == nullptr || _repository.writeBehind();
    if (_isKept && _standsAlone) _repository.buryAll();
    return _isKept;
}

// ---- Units of work ----

bool Repository::beginUnit() {
    if (_isUnitOpen || !mayChange()) return false;
    journal().start(things().next());
    return _isUnitOpen = true;
}

bool Repository::commitUnit() {
    bool isKept = true;
    if (_file != nullptr) {
        isKept = false;
        try {
            isKept = writeBehind();
        } catch (...) {
            rollBackUnit();
            throw;
        }
    }
    if (!isKept) {
        rollBackUnit();
        return false;
    }
    buryAll();
    journal().stop();
    _isUnitOpen = false;
    return true;
}

void Repository::rollBackUnit() noexcept {
    if (!_isUnitOpen) return;
    ++_changes;
    takeBackTo(0);
    journal().stop();
    _isUnitOpen = false;
}

Repository::Touched Repository::touchedByUnit() const {
    Touched touched;
    for (const Step& step : journal().steps()) {
        if (step.thing == QorThingKind::Model || step.thing == QorThingKind::ModelThread) touched.models = true;
        if (step.kind != StepKind::ValueSet) continue;
        // An attribute that went is no reference any more, but then its instances went as well.
        const AttributeRow* const attribute = meta().attribute(step.other);
        if (attribute == nullptr || attribute->type != QorCoreAttributeType::InterReference) continue;
        touched.references.push_back(step.scope);
    }
    std::sort(touched.references.begin(), touched.references.end());
    touched.references.erase(std::unique(touched.references.begin(), touched.references.end()),
                             touched.references.end());
    return touched;
}

void Repository::takeBackTo(std::size_t steps) noexcept {
    while (journal().size() > steps) {
        const Step step = journal().takeLast();
        if (step.kind == StepKind::ValueSet)
            _content->values.takeBack(step);
        else if (step.thing == QorThingKind::ModelGroup)
            groups().takeBack(step);
        else if (isOfUsers(step.thing))
            users().takeBack(step);
        else if (isOfModels(step.thing))
            models().takeBack(step);
        else
            meta().takeBack(step);
    }
}

void Repository::buryAll() noexcept {
    bool libraryWent = false;
    bool groupWent = false;
    bool usersChanged = false;
    bool userWent = false;
    for (const Step& step : journal().steps()) {
        if (step.kind == StepKind::ValueSet) {
            _content->values.bury(step);
        } else if (step.thing == QorThingKind::ModelGroup) {
            groups().bury(step);
            groupWent = groupWent || step.kind == StepKind::Removed;
        } else if (isOfUsers(step.thing)) {
            usersChanged = true;
            userWent = userWent || step.kind == StepKind::Removed;
        } else if (isOfModels(step.thing)) {
            models().bury(step);
        } else {
            meta().bury(step);
            libraryWent = libraryWent || step.kind == StepKind::Removed;
        }
    }
    models().tidy(journal().steps());
    if (libraryWent) meta().sweep();
    if (groupWent) groups().sweep();
    if (usersChanged) users().bury(userWent);
}

// ---- Writing behind ----

// Steps are many, rows are few: each row that was touched is written once, as it is now.
bool Repository::writeBehind() {
    if (journal().size() == 0) return true;
    try {
        _file->begin();
        writeThings();
        writeRecordRows();
        writeValues();
        writeUsers();
        QorRepositoryResult result = _file->commit(things().next());
        if (result.ok()) return true;
        _lastProblem = std::move(result);
    } catch (...) {
        _file->rollBack();
        throw;
    }
    return false;
}

void Repository::writeThings() {
    std::vector<const Step*> touched;
    for (const Step& step : journal().steps())
        if (step.kind != StepKind::ValueSet && step.thing != QorThingKind::RecordRow && !isOfUsers(step.thing))
            touched.push_back(&step);
    std::sort(touched.begin(), touched.end(),
              [](const Step* a, const Step* b) { return std::tie(a->id, a) < std::tie(b->id, b); });
    for (std::size_t at = 0; at < touched.size(); ++at)
        if (at + 1 == touched.size() || touched[at + 1]->id != touched[at]->id) writeThing(*touched[at]);
}

// The last step that touched the thing tells whether it went.
void Repository::writeThing(const Step& step) {
    const bool isNew = journal().isNew(step.id);
    const bool isGone = step.kind == StepKind::Removed;
    if (isNew && isGone) return;
    const std::size_t row = isGone ? step.row : things().at(step.id).index;
    const auto write = [&](const StoredRow& stored) {
        if (isGone)
            _file->remove(stored, step.scope);
        else
            _file->put(stored, step.scope, isNew);
    };
    if (step.thing == QorThingKind::ModelGroup)
        write(groups().stored(step.id, row));
    else if (isOfModels(step.thing))
        write(models().stored(step.thing, step.id, row));
    else
        meta().forEachStored(step.thing, step.id, row, write);
}

// The rows of a record attribute from the first place on where something changed: those behind it have moved.
void Repository::writeRecordRows() {
    struct Place {
        std::uint32_t position;
        QorIdentifier scope;
    };
    std::map<std::pair<QorIdentifier, QorIdentifier>, Place> changed;  // by owner and attribute
    for (const Step& step : journal().steps()) {
        if (step.thing != QorThingKind::RecordRow) continue;
        const bool isGone = step.kind == StepKind::Removed;
        if (!isGone && !things().exists(step.id)) continue;
        const std::size_t row = isGone ? step.row : things().at(step.id).index;
        const StoredRow stored = models().stored(QorThingKind::RecordRow, step.id, row);
        if (isGone && !journal().isNew(step.id)) _file->remove(stored, step.scope);
        const auto [place, isFirst] =
            changed.try_emplace({stored.numbers[2], stored.numbers[3]}, Place{step.position, step.scope});
        if (!isFirst) place->second.position = std::min(place->second.position, step.position);
    }
    for (const auto& [list, place] : changed) {
        const auto rows = models().rows(list.first, list.second);
        for (std::size_t at = place.position; at < rows.size(); ++at)
            _file->put(models().stored(QorThingKind::RecordRow, rows[at], things().at(rows[at]).index, at), place.scope,
                       journal().isNew(rows[at]));
    }
}

void Repository::writeValues() {
    std::vector<const Step*> touched;
    for (const Step& step : journal().steps())
        if (step.kind == StepKind::ValueSet) touched.push_back(&step);
    std::sort(touched.begin(), touched.end(),
              [](const Step* a, const Step* b) { return std::tie(a->id, a->other, a) < std::tie(b->id, b->other, b); });
    const Step* first = nullptr;  // of the same value; it tells whether the file has one
    for (const Step* step : touched) {
        if (first != nullptr && first->id == step->id && first->other == step->other) continue;
        first = step;
        const std::optional<std::string_view> value = _content->values.own(step->id, step->other);
        const StoredRow row(StoredTable::Values, {step->id, step->other}, {value.value_or(std::string_view())});
        if (value)
            _file->put(row, step->scope, !step->hadValue);
        else if (step->hadValue)
            _file->remove(row, step->scope);
    }
}

// Each row that was touched, as it is now; the first step that touched it tells whether the file has it.
void Repository::writeUsers() {
    struct Row {
        StoredRow key;
        const Step* step;
    };
    std::vector<Row> touched;
    for (const Step& step : journal().steps())
        if (isOfUsers(step.thing)) touched.push_back({UserDirectory::keyOf(step), &step});
    const auto keyOf = [](const Row& its) { return std::tuple(its.key.table, its.key.numbers[0], its.key.numbers[1]); };
    std::sort(touched.begin(), touched.end(),
              [&](const Row& a, const Row& b) { return std::tuple(keyOf(a), a.step) < std::tuple(keyOf(b), b.step); });
    for (std::size_t at = 0; at < touched.size(); ++at) {
        if (at > 0 && keyOf(touched[at - 1]) == keyOf(touched[at])) continue;
        const Row& its = touched[at];
        if (const auto row = users().stored(its.key))
            _file->put(*row, UserDirectory::kScope, !its.step->hadValue);
        else if (its.step->hadValue)
            _file->remove(its.key, UserDirectory::kScope);
    }
}

}  // namespace qor::embedded
