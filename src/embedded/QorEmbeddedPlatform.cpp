// SPDX-License-Identifier: Apache-2.0
#include "embedded/QorEmbeddedPlatform.h"

#include "embedded/Builder.h"
#include "embedded/ConsoleWindows.h"
#include "embedded/Editing.h"
#include "embedded/LibrarySession.h"
#include "embedded/ModelingManager.h"
#include "embedded/Reader.h"
#include "embedded/RecordingWindows.h"
#include "embedded/Repository.h"
#include "embedded/Settings.h"
#include "embedded/Users.h"
#include "platform/QorGuard.h"

using namespace qor::embedded;

struct QorEmbeddedPlatform::Impl {
    explicit Impl(const QorEmbeddedOptions& options) : users(options.user), texts(options.language) {
        if (options.console) console = std::make_unique<ConsoleWindows>();
        host.repository = &manager;
        host.coreVars = &coreVars;
        host.users = &users;
        host.attributeProfiles = &attributeProfiles;
        host.editing = &editing;
        host.graphics = &patterns;
        host.texts = &texts;
        host.windows = console ? static_cast<QorWindows*>(console.get()) : &recording;
    }

    Repository repository;
    LibrarySession session;
    Users users;
    ModelingManager manager{repository, session, users};
    Builder builder{repository, session};
    Reader reader{repository};
    CoreVars coreVars{session};
    AttributeProfiles attributeProfiles{repository};
    Editing editing{repository, manager};
    ClassPatterns patterns{repository, session};
    MessageTexts texts;
    RecordingWindows recording;
    std::unique_ptr<ConsoleWindows> console;
    QorHost host;
};

QorEmbeddedPlatform::QorEmbeddedPlatform(const QorEmbeddedOptions& options) : _impl(std::make_unique<Impl>(options)) {}

QorEmbeddedPlatform::~QorEmbeddedPlatform() = default;

const QorHost& QorEmbeddedPlatform::host() const { return _impl->host; }
QorRepositoryBuilder& QorEmbeddedPlatform::builder() { return _impl->builder; }
const QorRepositoryReader& QorEmbeddedPlatform::reader() const { return _impl->reader; }
void QorEmbeddedPlatform::setCurrentUser(std::string_view logonName) {
    Qor_Guarded("embedded", [&] { _impl->users.setCurrentUser(logonName); });
}
const QorShownWindows& QorEmbeddedPlatform::shown() const { return _impl->recording.shown(); }
void QorEmbeddedPlatform::forgetShown() { _impl->recording.shown().clear(); }
std::size_t QorEmbeddedPlatform::repositoryBytes() const { return _impl->repository.bytes(); }
