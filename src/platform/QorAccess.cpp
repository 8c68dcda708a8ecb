// SPDX-License-Identifier: Apache-2.0
#include "platform/QorAccess.h"

#include <utility>

namespace {
constexpr std::int32_t kOlderNoAccess = 1;
}

QorAccModelgroup::QorAccModelgroup(long modelGroup, const char* name, long applicationLibrary, std::int32_t permission)
    : _modelGroup(modelGroup), _name(name), _applicationLibrary(applicationLibrary), _permission(permission) {}

QorAccModelgroup::QorAccModelgroup(const QorAccModelgroup& other)
    : _modelGroup(other._modelGroup),
      _name(other._name),
      _applicationLibrary(other._applicationLibrary),
      _permission(other._permission == kOlderNoAccess ? QorModelGroupPermission::None : other._permission) {}

QorAccModelgroup::~QorAccModelgroup() = default;

QorAccModelgroupContainer::QorAccModelgroupContainer() = default;
QorAccModelgroupContainer::QorAccModelgroupContainer(const QorAccModelgroupContainer& other) {
    for (const auto& entry : other._entries) add(std::make_unique<QorAccModelgroup>(*entry));
}
QorAccModelgroupContainer& QorAccModelgroupContainer::operator=(const QorAccModelgroupContainer& other) {
    QorAccModelgroupContainer copy(other);
    _entries.swap(copy._entries);
    return *this;
}
QorAccModelgroupContainer::~QorAccModelgroupContainer() = default;

// Entries that are made one after the other mostly lie one behind the other, so that the end is where they belong.
void QorAccModelgroupContainer::add(std::unique_ptr<QorAccModelgroup> entry) {
    _entries.insert(_entries.end(), std::move(entry));
}
void QorAccModelgroupContainer::removeAll() { _entries.clear(); }
