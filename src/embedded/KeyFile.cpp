// SPDX-License-Identifier: Apache-2.0
#include "embedded/KeyFile.h"

#include <fcntl.h>
#include <sodium.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "embedded/ByteText.h"
#include "embedded/FileReplacement.h"
#include "embedded/store/RepositoryStore.h"

namespace qor::embedded {

namespace {

constexpr std::string_view kBegin = "qor-key-1 ";
// The beginning, 32 bytes in base 64 without padding, a line feed.
constexpr std::size_t kFileBytes = kBegin.size() + 43 + 1;
constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;

std::string setting(const char* variable) {
    const char* const value = std::getenv(variable);
    return value == nullptr ? std::string() : std::string(value);
}

// Makes the folders that are missing, for their owner only.
bool makeFolders(const std::string& path) {
    for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        const std::string folder = path.substr(0, end);
        if (::mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
            struct stat status {};
            if (::stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return false;
        }
        if (end == std::string::npos) return true;
    }
}

class Descriptor {
public:
    explicit Descriptor(int number) : _number(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (_number >= 0) ::close(_number);
    }
    [[nodiscard]] int number() const { return _number; }
    [[nodiscard]] bool isOpen() const { return _number >= 0; }

private:
    int _number;
};

// Text that is not left behind in memory.
struct KeyText {
    KeyText() = default;
    KeyText(const KeyText&) = delete;
    KeyText& operator=(const KeyText&) = delete;
    ~KeyText() { sodium_memzero(bytes.data(), bytes.size()); }
    std::array<char, kFileBytes + 1> bytes{};
};

bool writeAll(int descriptor, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(descriptor, bytes, size);
        if (written < 0 && errno != EINTR) return false;
        if (written < 0) continue;
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

}  // namespace

std::string KeyFile::placeFor(const RepositoryIdentity& identity, const std::string& chosen) {
    if (!chosen.empty()) return chosen;
    if (std::string named = setting("QOR_KEY_FILE"); !named.empty()) return named;
    std::string settings = setting("XDG_CONFIG_HOME");
    // Anything but an absolute path there is no folder.
    if (!settings.starts_with('/')) {
        settings = setting("HOME");
        if (!settings.starts_with('/')) return {};
        settings += "/.config";
    }
    std::array<char, 2 * sizeof(RepositoryIdentity) + 1> digits{};
    (void)sodium_bin2hex(digits.data(), digits.size(), identity.data(), identity.size());
    return settings + "/qor/keys/" + digits.data() + ".key";
}

QorRepositoryResult KeyFile::refused(const std::string& why) const {
    return failure(QorRepositoryStatus::NoKey, "the key file " + _path + " " + why);
}

QorRepositoryResult KeyFile::failed(const char* what) const {
    return refused(std::string(what) + ": " + std::strerror(errno));
}

QorRepositoryResult KeyFile::read(SecretKey& key) const {
    // Never waits for what is not a file.
    const Descriptor file(::open(_path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!file.isOpen() && errno == ENOENT) return failure(QorRepositoryStatus::Missing);
    if (!file.isOpen() && errno == ELOOP) return refused("is a symbolic link");
    if (!file.isOpen()) return failed("cannot be opened");
    struct stat status {};
    if (::fstat(file.number(), &status) != 0) return failed("cannot be examined");
    if (!S_ISREG(status.st_mode)) return refused("is not a regular file");
    if (status.st_uid != ::geteuid()) return refused("belongs to another user");
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0) return refused("can be read or written by others");
    if (static_cast<std::size_t>(status.st_size) != kFileBytes) return refused("has the wrong size");
    KeyText text;
    std::size_t size = 0;
    while (size < text.bytes.size()) {
        const ssize_t got = ::read(file.number(), text.bytes.data() + size, text.bytes.size() - size);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return failed("cannot be read");
        if (got == 0) break;
        size += static_cast<std::size_t>(got);
    }
    const std::string_view content(text.bytes.data(), size);
    const bool hasForm = size == kFileBytes && content.starts_with(kBegin) && content.back() == '\n';
    if (!hasForm || !fromBase64(content.substr(kBegin.size(), kFileBytes - kBegin.size() - 1), key.bytes))
        return refused("is not a key file");
    return {};
}

// Under another name first: nobody ever sees half a key.
QorRepositoryResult KeyFile::make(SecretKey& key) const {
    const std::string folder = folderOf(_path);
    if (!makeFolders(folder)) return failed("cannot be made");
    std::string unfinished = _path + ".XXXXXX";
    const Descriptor file(::mkstemp(unfinished.data()));
    if (!file.isOpen()) return failed("cannot be made");
    randombytes_buf(key.bytes.data(), key.bytes.size());
    KeyText text;
    kBegin.copy(text.bytes.data(), kBegin.size());
    (void)sodium_bin2base64(text.bytes.data() + kBegin.size(), text.bytes.size() - kBegin.size(), key.bytes.data(),
                            key.bytes.size(), sodium_base64_VARIANT_URLSAFE_NO_PADDING);
    text.bytes[kFileBytes - 1] = '\n';
    const bool isWritten = ::fchmod(file.number(), kOwnerOnly) == 0 &&
                           writeAll(file.number(), text.bytes.data(), kFileBytes) && ::fsync(file.number()) == 0 &&
                           ::link(unfinished.c_str(), _path.c_str()) == 0;
    const int error = isWritten ? 0 : errno;
    (void)::unlink(unfinished.c_str());
    errno = error;
    if (error == EEXIST) return failure(QorRepositoryStatus::Exists);
    if (!isWritten) return failed("cannot be written");
    (void)syncFolder(folder);
    return {};
}

}  // namespace qor::embedded
