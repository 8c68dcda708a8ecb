// SPDX-License-Identifier: Apache-2.0
#include "platform/QorAccess.h"

#include <algorithm>
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
    _entries.reserve(other._entries.size());
    for (const auto& entry : other._entries) add(std::make_unique<QorAccModelgroup>(*entry));
}
QorAccModelgroupContainer& QorAccModelgroupContainer::operator=(const QorAccModelgroupContainer& other) {
    QorAccModelgroupContainer copy(other);
    _entries.swap(copy._entries);
    _isInOrder = copy._isInOrder;
    return *this;
}
QorAccModelgroupContainer::~QorAccModelgroupContainer() = default;

void QorAccModelgroupContainer::add(std::unique_ptr<QorAccModelgroup> entry) {
    const bool isBehind = _entries.empty() || _entries.back() < entry;
    _entries.push_back(std::move(entry));
    _isInOrder = _isInOrder && isBehind;
}
void QorAccModelgroupContainer::putInOrder() const {
    std::sort(_entries.begin(), _entries.end());
    _isInOrder = true;
}
void QorAccModelgroupContainer::removeAll() {
    _entries.clear();
    _isInOrder = true;
}
