// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorKexParser.h"
#include "simmap/MappingErrors.h"
#include "simmap/QorSimulationOption.h"

namespace qor::simmap {

/// Takes a simulation option out of the parser's current element.
class OptionRecord {
public:
    OptionRecord(const QorKexParser& parser, long library, MappingErrors errors, bool continueOnError)
        : _parser(parser), _library(library), _errors(errors), _tolerance(continueOnError) {}

    /// The element asks to be left out.
    [[nodiscard]] bool isSwitchedOff() const;
    /// Returns QorSimCode. The option is complete when the record was read to its end, with errors or without.
    int read(QorSimulationOption& option);

private:
    int readName(QorSimulationOption& option);
    void readHelpText(QorSimulationOption& option);
    int readActivity(QorSimulationOption& option);
    int readStandardAttributes(QorSimulationOption& option);
    int readProcessCall(QorSimulationOption& option);
    int readUserAttributes(QorSimulationOption& option);
    /// 0 for an unknown name, which has then been reported.
    long attributeOf(long cls, std::string_view key);
    int unknown(std::string_view key, const SV::String& name) {
        return _errors.unknown(_parser.GetKeyPosition(key), name.view());
    }

    const QorKexParser& _parser;
    long _library;
    MappingErrors _errors;
    Tolerance _tolerance;
    long _activity = 0;
};

}  // namespace qor::simmap
