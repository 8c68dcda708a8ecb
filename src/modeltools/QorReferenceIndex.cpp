// SPDX-License-Identifier: Apache-2.0
#include "modeltools/QorReferenceIndex.h"

#include <algorithm>
#include <new>
#include <utility>

#include "frame/RepositoryLookup.h"
#include "modeltools/ListsByKey.h"
#include "modeltools/ModelCycles.h"
#include "modeltools/ReferenceReader.h"
#include "modeltools/internalErrors.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorGuard.h"
#include "platform/QorModelTypeAttrHandler.h"

using namespace qor::modeltools;
namespace frame = qor::frame;

namespace {

unsigned long typeOf(long model) {
    unsigned long type = ~0UL;
    if (QorModelTypeAttrHandler::GetGlobal()->GetModelTypeIndexOfModel(model, type) != QorErrorCode::Ok) return ~0UL;
    return type;
}

SV::String nameOf(long model) { return frame::readText(model, QorAttributeId::Name).value_or(SV::String()); }

bool isType(const SV::String& name, unsigned long type) {
    unsigned long its = ~0UL;
    return QorModelTypeAttrHandler::GetGlobal()->GetModelTypeIndex(name, its) == QorErrorCode::Ok && its == type;
}

}  // namespace

struct QorReferenceIndex::Impl {
    ISortedSet<long> models;
    std::vector<long> unread;
    std::vector<QorModelReference> references;  ///< ascending by source
    std::vector<QorBadReference> bad;
    ListsByKey<QorModelReference> uses;  ///< by the model that they lead to
    ListsByKey<long> children;

    void build() {
        ReferenceReader reader(models.numberOfElements(), references, bad);
        for (const long model : models)
            if (!reader.read(model)) unread.push_back(model);
        turnRound();
        collectChildren();
    }

    void turnRound() {
        std::vector<std::pair<QorIdentifier, std::uint32_t>> found;
        found.reserve(references.size());
        for (std::uint32_t place = 0; place < references.size(); ++place)
            if (references[place].model >= 0) found.emplace_back(references[place].model, place);
        std::sort(found.begin(), found.end());
        uses.reserve(found.size());
        for (const auto& [model, place] : found) uses.add(model, references[place]);
    }

    void collectChildren() {
        std::vector<long> ofOne;
        for (std::size_t place = 0; place < references.size(); ++place) {
            const QorModelReference& reference = references[place];
            if (reference.hierarchy && reference.model >= 0) ofOne.push_back(reference.model);
            if (place + 1 < references.size() && references[place + 1].source == reference.source) continue;
            std::sort(ofOne.begin(), ofOne.end());
            ofOne.erase(std::unique(ofOne.begin(), ofOne.end()), ofOne.end());
            for (const long child : ofOne) children.add(reference.source, child);
            ofOne.clear();
        }
    }

    [[nodiscard]] std::vector<QorModelReference> copyOfUses(long model) const {
        const auto found = uses.of(model);
        return {found.begin(), found.end()};
    }

    /// The newest of the other versions of the model among the given ones.
    [[nodiscard]] long versionBefore(long model) const {
        const SV::String name = nameOf(model);
        const unsigned long type = typeOf(model);
        long found = -1;
        for (const long other : models)
            if (other != model && typeOf(other) == type && nameOf(other) == name) found = other;
        return found;
    }
};

QorReferenceIndex::QorReferenceIndex() noexcept : _impl(new (std::nothrow) Impl) {}
QorReferenceIndex::~QorReferenceIndex() = default;

bool QorReferenceIndex::build(const ISortedSet<long>& models) noexcept {
    std::unique_ptr<Impl> made(new (std::nothrow) Impl);
    const bool complete = made && Qor_Guarded(kHierarchySource, false, [&] {
                              made->models = models;
                              made->build();
                              return true;
                          });
    _impl = complete ? std::move(made) : std::unique_ptr<Impl>(new (std::nothrow) Impl);
    return complete;
}

const ISortedSet<long>& QorReferenceIndex::models() const noexcept {
    static const ISortedSet<long> none;
    return _impl ? _impl->models : none;
}

const std::vector<long>& QorReferenceIndex::unreadModels() const noexcept {
    static const std::vector<long> none;
    return _impl ? _impl->unread : none;
}

unsigned long QorReferenceIndex::numberOfReferences() const noexcept { return _impl ? _impl->references.size() : 0; }

std::span<const QorModelReference> QorReferenceIndex::referencesOf(long model) const noexcept {
    if (!_impl) return {};
    const auto& all = _impl->references;
    const auto first =
        std::partition_point(all.begin(), all.end(), [&](const auto& its) { return its.source < model; });
    const auto last = std::partition_point(first, all.end(), [&](const auto& its) { return its.source == model; });
    return {first, last};
}

std::span<const QorModelReference> QorReferenceIndex::usesOf(long model) const noexcept {
    return _impl ? _impl->uses.of(model) : std::span<const QorModelReference>();
}

std::span<const long> QorReferenceIndex::childrenOf(long model) const noexcept {
    return _impl ? _impl->children.of(model) : std::span<const long>();
}

std::vector<long> QorReferenceIndex::roots() const noexcept {
    if (!_impl) return {};
    return Qor_Guarded(kHierarchySource, std::vector<long>(), [&] {
        std::vector<long> found;
        for (const long model : _impl->models) {
            const auto uses = _impl->uses.of(model);
            const bool isChild = std::any_of(uses.begin(), uses.end(), [model](const QorModelReference& use) {
                return use.hierarchy && use.source != model;
            });
            if (!isChild) found.push_back(model);
        }
        return found;
    });
}

const std::vector<QorBadReference>& QorReferenceIndex::badReferences() const noexcept {
    static const std::vector<QorBadReference> none;
    return _impl ? _impl->bad : none;
}

std::vector<QorModelCycle> QorReferenceIndex::cycles() const noexcept {
    if (!_impl) return {};
    return Qor_Guarded(kHierarchySource, std::vector<QorModelCycle>(), [&] { return findCycles(_impl->children); });
}

QorReferenceImpact QorReferenceIndex::ifModelDeleted(long model) const noexcept {
    if (!_impl) return {};
    return Qor_Guarded(kHierarchySource, QorReferenceImpact(), [&] {
        QorReferenceImpact impact;
        impact.leadsTo = _impl->versionBefore(model);
        (impact.leadsTo < 0 ? impact.broken : impact.redirected) = _impl->copyOfUses(model);
        // What the model itself refers to goes with it.
        for (auto* part : {&impact.broken, &impact.redirected})
            std::erase_if(*part, [model](const QorModelReference& use) { return use.source == model; });
        return impact;
    });
}

QorReferenceImpact QorReferenceIndex::ifModelRenamed(long model, const SV::String& name) const noexcept {
    if (!_impl) return {};
    return Qor_Guarded(kHierarchySource, QorReferenceImpact(), [&] {
        QorReferenceImpact impact;
        if (nameOf(model) == name) return impact;
        impact.broken = _impl->copyOfUses(model);
        const unsigned long type = typeOf(model);
        for (const long other : _impl->models)
            if (other != model && typeOf(other) == type && nameOf(other) == name) impact.leadsTo = other;
        for (const QorBadReference& bad : _impl->bad)
            if (bad.reference.model < 0 && bad.target.modelName == name && isType(bad.target.modelTypeName, type))
                impact.mended.push_back(bad);
        return impact;
    });
}

QorReferenceImpact QorReferenceIndex::ifObjectLost(long object) const noexcept {
    if (!_impl) return {};
    return Qor_Guarded(kHierarchySource, QorReferenceImpact(), [&] {
        QorReferenceImpact impact;
        if (object < 0) return impact;
        for (const QorModelReference& reference : _impl->references)
            if (reference.object == object) impact.broken.push_back(reference);
        return impact;
    });
}
