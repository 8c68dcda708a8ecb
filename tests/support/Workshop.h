// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorHost.h"
#include "support/FailingRepository.h"

/// The embedded platform in memory, installed as the host, with a method library of the tests' making. Things are
/// called by their names; what the platform refuses to build throws, with the reason.
class Workshop {
public:
    /// With an application library "Works" and its two parts, nothing loaded. The current user is "ada". With a file,
    /// the repository is made there.
    explicit Workshop(const QorEmbeddedOptions& options = {.language = "en", .console = false, .user = "ada"},
                      const std::string& repositoryFile = {});
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;
    ~Workshop();

    QorEmbeddedPlatform platform;
    QorIdentifier library = QorNoIdentifier;
    QorIdentifier processes = QorNoIdentifier;    ///< its business-process part
    QorIdentifier environment = QorNoIdentifier;  ///< its working-environment part

    [[nodiscard]] QorRepositoryBuilder& builder() { return platform.builder(); }
    [[nodiscard]] const QorRepositoryReader& reader() const { return platform.reader(); }
    /// The installed host's repository: the platform's, or the one that `watched` put before it.
    [[nodiscard]] QorCoreModelingManager& repository() const;
    /// Puts a recording, failing repository before the platform's for the rest of the workshop's life.
    FailingRepository& watched();

    // ---- The method library ----

    QorIdentifier cls(std::string_view name, std::string_view superclass = {});
    QorIdentifier abstractClass(std::string_view name, std::string_view superclass = {});
    QorIdentifier environmentClass(std::string_view name, std::string_view superclass = {});
    QorIdentifier recordClass(std::string_view name);
    QorIdentifier relationClass(std::string_view name, std::string_view from, std::string_view to);
    /// Of a class, record class or relation class.
    QorIdentifier attribute(std::string_view owner, QorAttributeSpec spec);
    QorIdentifier attribute(std::string_view owner, std::string_view name, QorCoreAttributeType type,
                            std::string_view defaultText = {});
    /// The cardinality text of the class.
    void classText(std::string_view cls, std::string_view text);
    /// The automatic-checks text, simulation mapping ... (QorAttributeIds.h) of the library or a part.
    void libraryText(QorIdentifier of, QorIdentifier attribute, std::string_view text);
    /// An attribute that refers to models, or to objects in them.
    QorIdentifier references(std::string_view owner, std::string_view name, bool toModels = true);
    QorIdentifier modelType(std::string_view name, std::initializer_list<std::string_view> classes);

    // ---- Models ----

    /// The objects made next lie in it.
    QorIdentifier model(std::string_view modelType, std::string_view name, std::string_view version = {});
    QorIdentifier object(std::string_view cls, std::string_view name);
    std::vector<QorIdentifier> objects(std::string_view cls, std::initializer_list<std::string_view> names);
    QorIdentifier connect(QorIdentifier from, std::string_view relationClass, QorIdentifier to);
    void value(QorIdentifier instance, std::string_view attribute, std::string_view text);

    // ---- The life of the library ----

    /// Through the installed repository, as an application does it: loads, and initialises the handlers when wanted.
    QorErrorCode load(bool initialiseHandlers = true);
    QorErrorCode discard();

    // ---- Names ----

    /// Class, record class or relation class; throws when there is none.
    [[nodiscard]] QorIdentifier idOf(std::string_view cls) const;
    /// Attribute of the class (of the object's class); throws when there is none.
    [[nodiscard]] QorIdentifier attributeOf(QorIdentifier clsOrInstance, std::string_view name) const;
    /// The value as the repository gives it; empty when it gives none.
    [[nodiscard]] std::string textAt(long identifier, long attribute) const;
    /// What was shown since the last question: boxes by their texts, internal errors as "source:line", each with "; ".
    std::string shown();

private:
    QorIdentifier addClass(QorIdentifier part, std::string_view name, std::string_view superclass, bool isAbstract);

    QorIdentifier _model = QorNoIdentifier;
    std::size_t _seen = 0;
    std::unique_ptr<FailingRepository> _watched;
    std::vector<std::unique_ptr<QorHostInstallation>> _installations;
};
