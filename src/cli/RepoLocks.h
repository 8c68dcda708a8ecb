// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace qor::cli {

class JsonWriter;
class RepoSession;

/// Lists the locks of all libraries, into the document if there is one.
void showLocks(RepoSession& session, JsonWriter* json);
/// Breaks the locks of one library, or of all.
void unlock(RepoSession& session);

}  // namespace qor::cli
