// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string_view>
#include <vector>

#include "platform/QorKexParser.h"
#include "platform/SvString.h"
#include "simmap/QorSimDefinitionError.h"
#include "simmap/QorSimResultCode.h"

namespace qor::simmap {

/// The message for a name that nobody knows.
[[nodiscard]] SV::String unknownName(std::string_view name);
/// The message for a required key that is not there.
[[nodiscard]] SV::String missingKey(std::string_view key);

/// Where errors of a mapping text go: into the text that the user sees, and beside it with their places. The
/// operations return the code.
struct MappingErrors {
    long library;
    SV::String& text;
    std::vector<QorSimDefinitionError>& list;

    int add(int code, QorKexPosition position, const SV::String& message) const;
    int unknown(QorKexPosition position, std::string_view name) const {
        return add(QorSimCode::Failed, position, unknownName(name));
    }
    int missing(QorKexPosition position, std::string_view key) const {
        return add(QorSimCode::KeyMissing, position, missingKey(key));
    }
};

/// Whether reading ends at an error, and whether there were any.
class Tolerance {
public:
    explicit Tolerance(bool goOn) : _goOn(goOn) {}
    /// True when the code is an error that ends the record; one that does not is remembered.
    [[nodiscard]] bool isStoppedBy(int code) {
        if (code == QorSimCode::Ok) return false;
        _hadErrors = true;
        return !_goOn;
    }
    [[nodiscard]] int result() const { return _hadErrors ? QorSimCode::FinishedWithErrors : QorSimCode::Ok; }

private:
    bool _goOn;
    bool _hadErrors = false;
};

}  // namespace qor::simmap
