// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <string>

namespace qor::embedded {

// Room on the disk that is kept beside a repository. On a full disk nothing can be freed from inside the repository,
// not even by deleting; giving up this file lets small writes, such as giving a lock back, still find room.
class ReserveFile {
public:
    static constexpr std::size_t kBytes = std::size_t{1} << 20;

    explicit ReserveFile(const std::string& repository) : _path(repository + ".reserve") {}

    // Lays it unless it is there. Without room for all of it there is none.
    void lay() noexcept;
    void drop() noexcept;
    [[nodiscard]] bool isLaid() const noexcept { return _isLaid; }

private:
    std::string _path;
    bool _isLaid = false;
};

}  // namespace qor::embedded
