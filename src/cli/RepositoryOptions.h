// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>

namespace qor::cli {

/// What commands take that work on one repository file as a whole.
struct RepositoryOptions {
    std::string schema;  ///< of the document, "qor.repo.info/1"
    std::string file;
    bool json = false;
    std::string language = "en";
    std::string user;     ///< who acts; empty: the operating system's
    std::string keyFile;  ///< empty: the usual place
};

}  // namespace qor::cli
