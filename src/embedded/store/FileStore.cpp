// SPDX-License-Identifier: Apache-2.0
#include "embedded/store/FileStore.h"

namespace qor::embedded {

FileStore::~FileStore() = default;

}  // namespace qor::embedded
