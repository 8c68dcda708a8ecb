// SPDX-License-Identifier: Apache-2.0
#include "embedded/store/RepositoryStore.h"

namespace qor::embedded {

StoredRowSink::~StoredRowSink() = default;
RepositoryStore::~RepositoryStore() = default;
LockStore::~LockStore() = default;

}  // namespace qor::embedded
