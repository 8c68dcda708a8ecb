// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace qor::cli {

class JsonWriter;
class RepoSession;
struct RepoOptions;

/// Lists the locks of all libraries, into the document if there is one.
void showLocks(RepoSession& session, JsonWriter* json);
/// Breaks the locks of one library, or of all.
void unlock(RepoSession& session, const RepoOptions& options);

}  // namespace qor::cli
