// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>

#include "embedded/QorRepositoryBuilder.h"
#include "embedded/QorRepositoryReader.h"
#include "interchange/ImportSink.h"

namespace qor::interchange {

/// Reads a BPMN 2.0 file into models of the application library, which must hold the classes of the shipped BPMN
/// library (a library without them is an error that names the first missing class). `fileName` gives its stem as the
/// name of a model that has none.
void readBpmn(ByteSource& source, const std::string& fileName, QorIdentifier library, QorRepositoryBuilder& builder,
              const QorRepositoryReader& reader, ImportSink& sink);

}  // namespace qor::interchange
