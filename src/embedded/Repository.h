// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "embedded/MetaModel.h"
#include "embedded/ModelGroups.h"
#include "embedded/ModelStore.h"
#include "embedded/Store.h"
#include "embedded/UserDirectory.h"
#include "embedded/Values.h"
#include "embedded/store/RepositoryStore.h"

namespace qor::embedded {

// Everything that the embedded platform knows about method libraries and models, and what concerns both. It answers
// from memory; with a file behind it, every change is written there before it is done.
class Repository {
public:
    Repository() = default;
    Repository(const Repository&) = delete;
    Repository& operator=(const Repository&) = delete;

    [[nodiscard]] MetaModel& meta() { return _content->meta; }
    [[nodiscard]] const MetaModel& meta() const { return _content->meta; }
    [[nodiscard]] ModelStore& models() { return _content->models; }
    [[nodiscard]] const ModelStore& models() const { return _content->models; }
    [[nodiscard]] ModelGroups& groups() { return _content->groups; }
    [[nodiscard]] const ModelGroups& groups() const { return _content->groups; }
    [[nodiscard]] UserDirectory& users() { return _content->users; }
    [[nodiscard]] const UserDirectory& users() const { return _content->users; }
    [[nodiscard]] const ThingTable& things() const { return _content->store.things; }

    // Runs an operation that changes something, in one step that itself changes all or nothing, or in many. With a
    // file, what it did is written as one transaction, or with the unit of work that is open. What fails, to be done or
    // to be written, has changed nothing.
    template <class Operation>
    QorBuildResult change(Operation operation, bool ofManySteps = false) {
        if (!mayChange()) return refused(QorBuildError::NotStored);
        Change change(*this, ofManySteps);
        const QorBuildResult result = operation();
        if (!result.ok() || change.keep()) return result;
        return refused(QorBuildError::NotStored);
    }

    // False, with the problem noted, when the file must not be written.
    [[nodiscard]] bool mayChange();
    // Grows with whatever may have changed something, also with what was taken back.
    [[nodiscard]] std::uint64_t changes() const noexcept { return _changes; }

    // A unit of work keeps all changes together until it is committed.
    [[nodiscard]] bool isUnitOpen() const { return _isUnitOpen; }
    [[nodiscard]] bool beginUnit();
    [[nodiscard]] bool commitUnit();
    void rollBackUnit() noexcept;
    // What of the unit others may have asked for and kept.
    struct Touched {
        bool models = false;                    // that came, went, or got another name or group
        std::vector<QorIdentifier> references;  // models whose references changed, ascending
    };
    [[nodiscard]] Touched touchedByUnit() const;

    // ---- The file behind it ----

    [[nodiscard]] RepositoryStore* file() const { return _file.get(); }
    [[nodiscard]] bool isEmpty() const;
    // Takes everything from the file into an empty repository. A damaged file can be read as far as it is sound.
    QorRepositoryResult attach(std::unique_ptr<RepositoryStore> file);
    // Lets go of the file and of all content. A unit that is open is taken back.
    void detach();
    // Lets go of the file and keeps the content.
    void keepInMemory() noexcept { _file.reset(); }
    // What the last failure to write came from.
    [[nodiscard]] const QorRepositoryResult& lastProblem() const { return _lastProblem; }
    void noteProblem(QorRepositoryResult problem) { _lastProblem = std::move(problem); }
    // Reads all of a file as `attach` does, and forgets it again.
    [[nodiscard]] static QorRepositoryResult verify(RepositoryStore& file);

    [[nodiscard]] QorThingKind kindOf(QorIdentifier id) const { return things().kindOf(id); }
    [[nodiscard]] std::string_view text(TextRef ref) const { return _content->store.texts.view(ref); }
    [[nodiscard]] std::string_view nameOf(QorIdentifier id) const;
    [[nodiscard]] QorIdentifier applicationLibraryOf(QorIdentifier id) const;

    // Refused (HasInstances) while it has models.
    QorBuildResult removeApplicationLibrary(QorIdentifier library);
    // With the permissions on it. Refused (HasInstances) while something lies in it.
    QorBuildResult removeModelGroup(QorIdentifier group);

    QorBuildResult setClassValue(QorIdentifier cls, QorIdentifier attribute, std::string_view text);
    QorBuildResult setLibraryValue(QorIdentifier library, QorIdentifier attribute, std::string_view text);
    // Of an object, relation or record row; setting an object's name renames it.
    QorBuildResult setInstanceValue(QorIdentifier instance, QorIdentifier attribute, std::string_view text);
    // The empty name takes it away.
    QorBuildResult setUnmovedRelationClass(QorIdentifier part, std::string_view name);
    // A copy with values and record rows, without relations, that remembers the name of its source.
    QorBuildResult pasteObject(QorIdentifier model, QorIdentifier source, std::string_view name);

    // The attribute as one that the instance, class or library can have a value of; null when it cannot.
    [[nodiscard]] const AttributeRow* attributeOf(QorIdentifier thing, QorIdentifier attribute) const;
    // The thing's own value: as it was set, or its name. Nothing when there is none.
    [[nodiscard]] std::optional<std::string_view> ownValue(QorIdentifier thing, const AttributeRow& attribute) const;
    // The own value or, for an instance, the attribute's default. A default of no text is none.
    [[nodiscard]] std::optional<std::string_view> value(QorIdentifier thing, const AttributeRow& attribute,
                                                        bool withDefault) const;

    // What it takes in memory, without small change.
    [[nodiscard]] std::size_t bytes() const;

private:
    struct Content {
        Store store;
        MetaModel meta{store};
        Values values{store, meta};
        ModelStore models{store, meta, values};
        ModelGroups groups{store, meta, models};
        UserDirectory users{store, meta, groups};
    };

    // Taken back at its end unless it was kept.
    class Change {
    public:
        Change(Repository& repository, bool ofManySteps);
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;
        ~Change();
        // False when it could not be written.
        [[nodiscard]] bool keep();

    private:
        Repository& _repository;
        bool _standsAlone;  // written at once, if there is a file
        bool _isKept = false;
        std::size_t _from;
    };

    class Loading;

    [[nodiscard]] Journal& journal() { return _content->store.journal; }
    [[nodiscard]] const Journal& journal() const { return _content->store.journal; }
    void copyValues(QorIdentifier from, QorIdentifier to);
    [[nodiscard]] bool isInstance(QorIdentifier id) const;
    [[nodiscard]] bool writeBehind();
    void writeThings();
    void writeThing(const Step& step);
    void writeRecordRows();
    void writeValues();
    void writeUsers();
    void takeBackTo(std::size_t steps) noexcept;
    void buryAll() noexcept;

    std::unique_ptr<Content> _content = std::make_unique<Content>();
    std::unique_ptr<RepositoryStore> _file;
    QorRepositoryResult _lastProblem;
    std::uint64_t _changes = 0;
    bool _isUnitOpen = false;
};

}  // namespace qor::embedded
