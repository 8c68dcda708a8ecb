// SPDX-License-Identifier: Apache-2.0
#include "simmap/QorSimResultDefinitions.h"

#include <algorithm>

#include "frame/RepositoryLookup.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreVar.h"
#include "platform/QorGuard.h"
#include "platform/QorMessage.h"
#include "simmap/MappingErrors.h"
#include "simmap/ResultReader.h"
#include "simmap/internalErrors.h"
#include "simmap/messages.h"

using namespace qor::simmap;
namespace frame = qor::frame;

namespace {

/// Reads the text of one library part.
class PartText {
public:
    PartText(QorCoreVarType part, std::vector<QorSimDefinitionError>& errors)
        : _part(part), _library(Qor_GetCoreVarConst(part)), _errors(errors), _parser(SV::String(), SV::String()) {}

    void read(std::vector<QorSimResultHolder>& holders) {
        if (!parse()) return;
        for (const auto& holder : resultHolders())
            if (holder.part == _part) readHolder(holder, holders[static_cast<std::size_t>(holder.kind)]);
        remarkOnIgnoredRecords();
    }

private:
    bool parse() {
        const auto text = frame::readText(_library, QorAttributeId::SimulationResult);
        if (!text) {
            add(QorSimCode::Failed, {}, Qor_Message(message::repositoryFailed));
            return false;
        }
        const auto syntax = parseResultText(_parser, *text, _part);
        _hasPlaces = syntax != ResultSyntax::Old;
        if (syntax != ResultSyntax::Unreadable) return true;
        add(QorSimCode::BadText, _parser.GetErrorPosition(), _parser.GetErrorText());
        return false;
    }

    void readHolder(const ResultHolder& holder, QorSimResultHolder& found) {
        found.className = holderClassName(_parser, holder).value_or(SV::String());
        const auto collect = [this](int code, QorKexPosition position, const SV::String& text) {
            add(code, position, text);
            return true;
        };
        ResultReader reader(_parser, _library, holder, collect);
        ResultTables tables;
        reader.read(tables);
        found.cls = reader.holderClass();
        found.attributes = std::move(tables.attributes);
        found.mapping = std::move(tables.mapping);
        found.sources = std::move(tables.sources);
    }

    /// Unknown elements, further records of a holder, and source classes before any holder.
    void remarkOnIgnoredRecords() {
        std::vector<const ResultHolder*> seen;
        for (unsigned long index = 0; _parser.SetCurElemIndex(index); ++index) {
            const auto element = _parser.GetCurElemNameView();
            const auto* const holder = resultHolder(_part, element);
            const bool isFirst = holder != nullptr && std::find(seen.begin(), seen.end(), holder) == seen.end();
            if (isFirst) seen.push_back(holder);
            if (isFirst || (element == kSourceElement && !seen.empty())) continue;
            add(QorSimCode::Ok, _parser.GetCurElemPosition(), Qor_Message(message::recordIgnored, {{"%s", element}}));
        }
    }

    void add(int code, QorKexPosition position, const SV::String& text) {
        _errors.push_back(
            {_library, QorAttributeId::SimulationResult, code, _hasPlaces ? position : QorKexPosition(), text});
    }

    QorCoreVarType _part;
    long _library;
    std::vector<QorSimDefinitionError>& _errors;
    QorKexParser _parser;
    bool _hasPlaces = true;
};

}  // namespace

QorSimResultDefinitions::QorSimResultDefinitions() noexcept {
    Qor_Guarded(kResultSource, [this] {
        for (const auto& holder : resultHolders()) _holders.push_back({holder.kind, {}, 0, {}, {}, {}});
        for (const auto part : {QorCoreVarType::BusinessProcessLibrary, QorCoreVarType::WorkingEnvironmentLibrary})
            PartText(part, _errors).read(_holders);
        _usable = std::all_of(_errors.begin(), _errors.end(),
                              [](const QorSimDefinitionError& error) { return error.code == QorSimCode::Ok; });
    });
}

QorSimResultDefinitions::~QorSimResultDefinitions() = default;

ISequence<SV::String> QorSimResultDefinitions::fixedKeys(QorSimResultAttributeType kind) {
    return Qor_Guarded(kResultSource, ISequence<SV::String>(), [&] {
        ISequence<SV::String> keys;
        if (const auto* const holder = resultHolder(kind))
            for (const auto key : holder->fixedKeys) keys.add(key);
        return keys;
    });
}
