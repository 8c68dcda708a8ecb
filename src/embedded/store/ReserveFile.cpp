// SPDX-License-Identifier: Apache-2.0
#include "embedded/store/ReserveFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qor::embedded {

void ReserveFile::lay() noexcept {
    if (_isLaid) return;
    const int file = ::open(_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    if (file < 0) return;
    struct stat status {};
    // Blocks, not length: a file with holes would keep nothing.
    const bool isThere = ::fstat(file, &status) == 0 && static_cast<std::size_t>(status.st_blocks) * 512 >= kBytes;
    _isLaid = isThere || ::posix_fallocate(file, 0, static_cast<off_t>(kBytes)) == 0;
    ::close(file);
    if (!_isLaid) (void)::unlink(_path.c_str());
}

void ReserveFile::drop() noexcept {
    (void)::unlink(_path.c_str());
    _isLaid = false;
}

}  // namespace qor::embedded
