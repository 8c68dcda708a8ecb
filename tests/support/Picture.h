// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>

class QorEmbeddedPlatform;

/// Everything that can be seen of a repository, with its identifiers, as text: two of them are alike when it is the
/// same.
std::string pictureOf(QorEmbeddedPlatform& platform);
