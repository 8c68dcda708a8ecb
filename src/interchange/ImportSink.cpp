// SPDX-License-Identifier: Apache-2.0
#include "interchange/ImportSink.h"

namespace qor::interchange {

ImportSink::~ImportSink() = default;
ByteSource::~ByteSource() = default;

}  // namespace qor::interchange
