// SPDX-License-Identifier: Apache-2.0
#include "modeltools/QorHierarchyManager.h"

#include <utility>
#include <vector>

#include "modeltools/HierarchyAttributes.h"
#include "modeltools/HierarchyDocuments.h"
#include "modeltools/ModelByName.h"
#include "modeltools/internalErrors.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorGuard.h"

using namespace qor::modeltools;

namespace {

constexpr QorEventPriority kPriority = 800;

QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }

// The fields of events that count here.
constexpr int kModelField = 8;
constexpr int kSwitchField = 9;
constexpr int kValueModelField = 9;
constexpr int kValueTypeField = 13;

constexpr QorEventType kModelEvents[] = {QorEventType::ModelCreated, QorEventType::ModelRenamed,
                                         QorEventType::ModelMoved, QorEventType::ModelDeleted,
                                         QorEventType::ModelVersionsChanged};

}  // namespace

QorHierarchyManager::EventListener::EventListener(QorHierarchyManager& manager) : _manager(manager) {
    for (const QorEventType type : kModelEvents) setEventHandler(type, &EventListener::onModelsChanged, kPriority);
    setEventHandler(QorEventType::AutomaticUpdatesSwitched, &EventListener::onUpdatesSwitched, kPriority);
    setEventHandler(QorEventType::ModelReferencesChanged, &EventListener::onReferencesChanged, kPriority);
    setEventHandler(QorEventType::AttributeValueChanged, &EventListener::onValueChanged, kPriority);
}

QorHierarchyManager::EventListener::~EventListener() = default;

void QorHierarchyManager::EventListener::onModelsChanged(const QorEvent&) { _manager.Clear(); }

void QorHierarchyManager::EventListener::onUpdatesSwitched(const QorEvent& event) {
    _suspended = event.field(kSwitchField) == 0;
}

void QorHierarchyManager::EventListener::onReferencesChanged(const QorEvent& event) {
    _manager.RemoveSourceModel(event.field(kModelField));
}

void QorHierarchyManager::EventListener::onValueChanged(const QorEvent& event) {
    constexpr auto kReference = static_cast<long>(QorCoreAttributeType::InterReference);
    if (!_suspended && event.field(kValueTypeField) == kReference)
        _manager.RemoveSourceModel(event.field(kValueModelField));
}

QorHierarchyManager::QorHierarchyManager() noexcept { prepare(); }
QorHierarchyManager::~QorHierarchyManager() = default;

QorHierarchyManager& QorHierarchyManager::Instance() noexcept {
    static QorHierarchyManager instance;
    return instance;
}

/// Without memory nothing is read, and the next question tries again.
void QorHierarchyManager::prepare() noexcept {
    Qor_Guarded(kHierarchySource, [this] {
        auto attributes = readHierarchyAttributes();
        _listener = std::make_unique<EventListener>(*this);
        _attributes = std::move(attributes);
    });
}

const ISortedSet<long>& QorHierarchyManager::getReferencedModels(long model) noexcept {
    static const ISortedSet<long> none;
    const auto id = Qor_NarrowIdentifier(model);
    if (!id) return none;
    if (const auto known = _cache.find(*id); known != _cache.end()) return known->second;
    if (_listener == nullptr) prepare();
    const auto* const models = Qor_Guarded<const ISortedSet<long>*>(kHierarchySource, nullptr, [&] {
        _cache[*id].removeAll();
        ISortedSet<long> found;
        fetch(*id, found);
        // Asked for again: an event may have emptied the cache meanwhile.
        return &(_cache[*id] = std::move(found));
    });
    if (models != nullptr) return *models;
    _cache.erase(*id);
    return none;
}

void QorHierarchyManager::fetch(QorIdentifier model, ISortedSet<long>& models) {
    QorSourceInterRefContainer references;
    if (repository().getInterRefsOfSourceModel(model, references) != QorErrorCode::Ok) return;
    for (unsigned long index = 0; index < references.numberOfElements(); ++index) {
        const QorInterModRefTarget& target = references.elementAtIndex(index);
        const auto attribute = Qor_NarrowIdentifier(target.attribute);
        if (!attribute || !_attributes.contains(*attribute)) continue;
        long found = QorNoIdentifier;
        if (findModel(target.modelTypeName, target.modelName, found) == ModelSearch::Found) models.add(found);
    }
}

bool QorHierarchyManager::IsInCache(long model) const noexcept {
    const auto id = Qor_NarrowIdentifier(model);
    return id && _cache.contains(*id);
}

void QorHierarchyManager::RemoveSourceModel(long model) noexcept {
    if (const auto id = Qor_NarrowIdentifier(model)) _cache.erase(*id);
}

void QorHierarchyManager::Clear() noexcept { _cache.clear(); }

QorErrorCode QorHierarchyManager::GetHierarchyAsXML(long model, SV::String& text) noexcept {
    return Qor_Guarded(kHierarchySource, QorErrorCode::Broken, [&] {
        if (!repository().isModelVersion(model)) return QorErrorCode::NotAModelVersion;
        std::string xml(kXmlDeclaration);
        ISortedSet<long> path;
        GetHierarchyAsXML(model, xml, path);
        text = SV::String(std::move(xml));
        return QorErrorCode::Ok;
    });
}

/// Walks with a stack of its own: a chain of models may be longer than the process's stack is deep.
void QorHierarchyManager::GetHierarchyAsXML(long model, std::string& text, ISortedSet<long>& path) {
    struct Level {
        long model;
        ISortedSet<long> children;  ///< a copy: an event may empty the cache while the walk is below
        unsigned long next = 0;
    };
    std::vector<Level> levels;
    const auto enter = [&](long entered) {
        const ISortedSet<long> children = path.contains(entered) ? ISortedSet<long>() : getReferencedModels(entered);
        text.append(2 * path.numberOfElements(), ' ');
        text.append("<model id=\"").append(std::to_string(entered));
        text.append(children.isEmpty() ? "\" />\n" : "\">\n");
        if (children.isEmpty()) return;
        path.add(entered);
        levels.push_back({entered, children});
    };
    enter(model);
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next < level.children.numberOfElements()) {
            enter(level.children.elementAtIndex(level.next++));
        } else {
            path.remove(level.model);
            levels.pop_back();
            text.append(2 * path.numberOfElements(), ' ').append("</model>\n");
        }
    }
}
