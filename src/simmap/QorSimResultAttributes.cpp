// SPDX-License-Identifier: Apache-2.0
#include "simmap/QorSimResultAttributes.h"

#include <new>
#include <optional>
#include <vector>

#include "frame/RepositoryLookup.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreUnitsOfWork.h"
#include "platform/QorCoreVar.h"
#include "platform/QorErrorBox.h"
#include "platform/QorGuard.h"
#include "platform/QorMessage.h"
#include "simmap/OldResultText.h"
#include "simmap/ResultReader.h"
#include "simmap/internalErrors.h"
#include "simmap/messages.h"
#include "simmap/resetValue.h"

using namespace qor::simmap;
namespace frame = qor::frame;

namespace {

constexpr long kUnknownKindLine = 204;

struct ProcessTables {
    struct Kind {
        bool made = false;
        ResultTables tables;
    };
    std::array<Kind, 3> kinds;
    bool hasError = false;
};

// Never destroyed: somebody may still ask while the process ends.
ProcessTables& processTables() noexcept {
    alignas(ProcessTables) static std::array<std::byte, sizeof(ProcessTables)> room;
    static auto* const tables = new (room.data()) ProcessTables;
    return *tables;
}

ResultTables& tablesOf(QorSimResultAttributeType kind) noexcept {
    return processTables().kinds[static_cast<std::size_t>(kind)].tables;
}

std::size_t placeOf(QorCoreVarType part) { return part == QorCoreVarType::BusinessProcessLibrary ? 0 : 1; }

/// Nothing when the repository refuses the text; empty where no library is loaded.
std::optional<SV::String> resultText(QorCoreVarType part) {
    const long library = Qor_GetCoreVarConst(part);
    if (library < 1) return SV::String();
    return frame::readText(library, QorAttributeId::SimulationResult);
}

}  // namespace

QorSimResultAttributes::QorSimResultAttributes() noexcept
    : _parsers{QorKexParser(SV::String(), SV::String()), QorKexParser(SV::String(), SV::String())} {
    const auto readTexts = [this] {
        _InitParser();
        return true;
    };
    if (!Qor_Guarded(kResultSource, false, readTexts)) processTables().hasError = true;
}

QorSimResultAttributes::QorSimResultAttributes(const QorSimResultAttributes& other) noexcept
    : _parsers(other._parsers) {
    copyNames(other);
}

QorSimResultAttributes& QorSimResultAttributes::operator=(const QorSimResultAttributes& other) noexcept {
    if (this == &other) return *this;
    _parsers = other._parsers;
    copyNames(other);
    return *this;
}

/// All or, without memory, none: a part of the names would reset a part of the results.
void QorSimResultAttributes::copyNames(const QorSimResultAttributes& other) noexcept {
    _holderNames = {};
    Qor_Guarded(kResultSource, [&] {
        auto names = other._holderNames;
        _holderNames = std::move(names);
    });
}

QorSimResultAttributes::~QorSimResultAttributes() = default;

/// The names are taken only when both texts can be read: one alone would reset one half of the results.
void QorSimResultAttributes::_InitParser() {
    bool parsed = true;
    for (const auto part : {QorCoreVarType::BusinessProcessLibrary, QorCoreVarType::WorkingEnvironmentLibrary}) {
        const auto name = frame::readText(Qor_GetCoreVarConst(part), QorAttributeId::Name);
        auto& parser = _parsers[placeOf(part)];
        parser = QorKexParser(SV::String(), Qor_Message(message::resultTextLabel), name.value_or(SV::String()));
        const auto text = resultText(part);
        if (!text || parseResultText(parser, *text, part) == ResultSyntax::Unreadable) parsed = false;
    }
    if (!parsed) {
        processTables().hasError = true;
        return;
    }
    for (const auto& holder : resultHolders())
        _holderNames[static_cast<std::size_t>(holder.kind)] =
            holderClassName(_parsers[placeOf(holder.part)], holder).value_or(SV::String());
}

int QorSimResultAttributes::getResultAttributes(QorSimResultAttributeType type) noexcept {
    if (resultHolder(type) == nullptr) return 0;
    auto& kind = processTables().kinds[static_cast<std::size_t>(type)];
    if (kind.made) return 1;
    kind.made = true;
    if (Qor_Guarded(kResultSource, false, [&] { return makeTables(type); })) return 1;
    _GetAttrError(type);
    return 0;
}

bool QorSimResultAttributes::makeTables(QorSimResultAttributeType type) {
    const auto& holder = *resultHolder(type);
    const auto text = resultText(holder.part);
    if (!text) return false;
    if (text->IsEmpty()) return true;
    if (processTables().hasError) return false;

    auto& parser = _parsers[placeOf(holder.part)];
    if (parseResultText(parser, *text, holder.part) == ResultSyntax::Unreadable) return false;
    const auto stopAtError = [](int, QorKexPosition, const SV::String&) { return false; };
    return ResultReader(parser, Qor_GetCoreVarConst(holder.part), holder, stopAtError).read(tablesOf(type));
}

void QorSimResultAttributes::_GetAttrError(QorSimResultAttributeType type) noexcept {
    processTables().hasError = true;
    if (resultHolder(type) == nullptr) {
        displayErrorMessage(kResultSource, kUnknownKindLine);
        return;
    }
    tablesOf(type).clear();
    Qor_Guarded(kResultSource, [] {
        QorErrorBox box(nullptr, QorBoxStyle::Error, Qor_Message(message::resultNameUnknown));
        box.Execute(QorErrorBoxType::Standard);
    });
}

int QorSimResultAttributes::resetResultAttributes(const ISortedSet<long>& modelIds,
                                                  ISortedSet<long>& instanceIds) noexcept {
    if (processTables().hasError) return 0;
    for (const auto& holder : resultHolders())
        if (getResultAttributes(holder.kind) == 0) return 0;
    return Qor_Guarded(kResultSource, 0, [&] {
        std::vector<long> instances;
        QorUnitOfWork unit;
        for (const long model : modelIds) resetModel(model, instances);
        instanceIds.assign(std::move(instances));
        return unit.commit() == QorErrorCode::Ok ? 1 : 0;
    });
}

void QorSimResultAttributes::resetModel(long model, std::vector<long>& instances) {
    auto& repository = *QorCoreModelingManager::GetGlobal();
    long modelClass = 0;
    if (repository.getModelClass(model, modelClass) != QorErrorCode::Ok) return;
    for (const auto& holder : resultHolders()) {
        const auto cls =
            frame::findClass(Qor_GetCoreVarConst(holder.part), _holderNames[static_cast<std::size_t>(holder.kind)]);
        ISortedSet<long> objects;
        if (!cls || repository.getAllInstancesOfClassAndSubClassInModel(model, *cls, objects, true) != QorErrorCode::Ok)
            continue;
        instances.insert(instances.end(), objects.begin(), objects.end());
        for (const auto& [source, attribute] : tablesOf(holder.kind).mapping) {
            auto type = QorCoreAttributeType::None;
            if (repository.getUIAttributeType(attribute, type) != QorErrorCode::Ok)
                displayErrorMessage(kResultSource, holder.typeLine);
            for (const long object : objects)
                if (writeReset(model, object, attribute, type) != QorErrorCode::Ok)
                    displayErrorMessage(kResultSource, holder.writeLine(type));
        }
    }
}

bool QorSimResultAttributes::old2New(SV::String& text, long kindSelector) noexcept {
    const auto rewrite = [&] {
        std::optional<SV::String> rewritten;
        if (kindSelector == QorLibraryKind::BusinessProcess)
            rewritten = rewriteOldResultText(text.view(), QorCoreVarType::BusinessProcessLibrary);
        if (kindSelector == QorLibraryKind::WorkingEnvironment)
            rewritten = rewriteOldResultText(text.view(), QorCoreVarType::WorkingEnvironmentLibrary);
        if (!rewritten) return false;
        text = std::move(*rewritten);
        return true;
    };
    if (Qor_Guarded(kResultSource, false, rewrite)) return true;
    processTables().hasError = true;
    return false;
}

const ISortedSet<std::pair<long, long>>& QorSimResultAttributes::Get_ProcessStartMapping() noexcept {
    return tablesOf(QorSimResultAttributeType::ProcessStart).mapping;
}

const ISortedSet<std::pair<long, long>>& QorSimResultAttributes::Get_ActivityMapping() noexcept {
    return tablesOf(QorSimResultAttributeType::Activity).mapping;
}

const ISortedSet<std::pair<long, long>>& QorSimResultAttributes::Get_PersonMapping() noexcept {
    return tablesOf(QorSimResultAttributeType::Person).mapping;
}

const ISequence<long>& QorSimResultAttributes::Get_ProcessStartAttributes() noexcept {
    return tablesOf(QorSimResultAttributeType::ProcessStart).attributes;
}

const ISequence<long>& QorSimResultAttributes::Get_ActivityAttributes() noexcept {
    return tablesOf(QorSimResultAttributeType::Activity).attributes;
}

const ISequence<long>& QorSimResultAttributes::Get_PersonAttributes() noexcept {
    return tablesOf(QorSimResultAttributeType::Person).attributes;
}

int QorSimResultAttributes::Get_Error() noexcept { return processTables().hasError ? 1 : 0; }
