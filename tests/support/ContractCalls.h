// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <set>
#include <string>

#include "platform/QorHost.h"

namespace qor::test {

/// Calls every operation of the contracts once, with outputs that hold something, and gives the names of those that the
/// host does not offer. With `mustRefuse` each call has to refuse and to leave its output at "none".
std::set<std::string> operationsRefusedBy(QorHost host, bool mustRefuse);

}  // namespace qor::test
