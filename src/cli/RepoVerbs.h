// SPDX-License-Identifier: Apache-2.0
// What the larger commands of `qor repo` do with an open session.
#pragma once

namespace qor::cli {

class RepoSession;
struct RepoOptions;

void importInto(RepoSession& session, const RepoOptions& options);
void exportFrom(RepoSession& session, const RepoOptions& options);

}  // namespace qor::cli
