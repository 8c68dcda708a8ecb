// SPDX-License-Identifier: Apache-2.0
#include "frame/QorValidECode.h"

#include <string>
#include <string_view>

#include "platform/QorGuard.h"

namespace {

std::string bareName(std::string_view path) {
    const auto slash = path.find_last_of("/\\");
    if (slash != std::string_view::npos) path.remove_prefix(slash + 1);
    return std::string(path.substr(0, path.rfind('.')));
}

}  // namespace

bool Qor_AssertValidECode(QorErrorCode code, const char* file, long line) noexcept {
    if (code == QorErrorCode::Ok) return true;
    Qor_Guarded("frame", [&] { displayErrorMessage(bareName(file).c_str(), line, "QOR_VALID_ECODE (eCode)"); });
    return false;
}
