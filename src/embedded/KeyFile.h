// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>

#include "embedded/Seals.h"

namespace qor::embedded {

// The file with the key of a repository. It lies outside the repository, since who gets hold of that is not to read
// what was enciphered in it, and belongs to its owner alone.
class KeyFile {
public:
    // The chosen place; else the one that QOR_KEY_FILE names; else a file of the repository's own in the user's
    // folder for settings. Empty when there is no such folder.
    [[nodiscard]] static std::string placeFor(const RepositoryIdentity& identity, const std::string& chosen);

    explicit KeyFile(std::string path) : _path(std::move(path)) {}
    // Missing when there is none; NoKey when it is not a key file, or others could have read it.
    [[nodiscard]] QorRepositoryResult read(SecretKey& key) const;
    // Makes one with a random key. Exists, and nothing was done, when there is one.
    [[nodiscard]] QorRepositoryResult make(SecretKey& key) const;
    [[nodiscard]] const std::string& path() const { return _path; }

private:
    [[nodiscard]] QorRepositoryResult refused(const std::string& why) const;
    [[nodiscard]] QorRepositoryResult failed(const char* what) const;

    std::string _path;
};

}  // namespace qor::embedded
