// SPDX-License-Identifier: Apache-2.0
#include "simmap/ResultReader.h"

#include "frame/RepositoryLookup.h"
#include "platform/QorSyntaxChecks.h"
#include "simmap/KexValues.h"
#include "simmap/MappingErrors.h"
#include "simmap/OldResultText.h"

namespace qor::simmap {

namespace {
constexpr std::string_view kCurrentSyntax = "4.00.00";
}

void ResultTables::clear() {
    mapping.removeAll();
    attributes.removeAll();
    sources.clear();
}

ResultSyntax parseResultText(QorKexParser& parser, const SV::String& text, QorCoreVarType part) {
    parser.SetText(text);
    if (parser.Parse() == 0) return ResultSyntax::Current;
    if (!isOldResultText(text.view()) || !isVersionBelow(Qor_GetSyntaxChecksLevel().view(), kCurrentSyntax))
        return ResultSyntax::Unreadable;
    const auto rewritten = rewriteOldResultText(text.view(), part);
    if (!rewritten) return ResultSyntax::Unreadable;
    parser.SetText(*rewritten);
    return parser.Parse() == 0 ? ResultSyntax::Old : ResultSyntax::Unreadable;
}

std::optional<SV::String> holderClassName(QorKexParser& parser, const ResultHolder& holder) {
    for (unsigned long index = 0; parser.SetCurElemIndex(index); ++index)
        if (parser.GetCurElemNameView() == holder.element) return elementValue(parser);
    return std::nullopt;
}

bool ResultReader::read(ResultTables& tables) {
    const ResultHolder* last = nullptr;
    bool hasHolder = false;
    for (unsigned long index = 0; _parser.SetCurElemIndex(index); ++index) {
        const auto element = _parser.GetCurElemNameView();
        if (const auto* const holder = resultHolder(_holder.part, element)) {
            last = holder;
            if (holder != &_holder || std::exchange(hasHolder, true)) continue;
            if (!readHolder(tables)) return false;
        } else if (element == kSourceElement && last == &_holder && _holderClass != 0) {
            if (!readSource(tables)) return false;
        }
    }
    return _clean;
}

bool ResultReader::readHolder(ResultTables& tables) {
    const auto name = elementValue(_parser);
    const auto cls = frame::findClass(_part, name);
    if (!cls) return unknown(_parser.GetCurElemPosition(), name.view());
    _holderClass = *cls;
    for (const auto key : _holder.fixedKeys) {
        long attribute = 0;
        if (_parser.IsContained(key)) {
            attribute = attributeOf(_holderClass, key);
            if (attribute == 0 && !unknown(_parser.GetKeyPosition(key), valueOrEmpty(_parser, key).view()))
                return false;
        }
        tables.attributes.add(attribute);
        if (attribute != 0) tables.mapping.add({attribute, attribute});
    }
    return true;
}

bool ResultReader::readSource(ResultTables& tables) {
    const auto name = elementValue(_parser);
    const auto cls = frame::findClass(_part, name);
    if (!cls) return unknown(_parser.GetCurElemPosition(), name.view());

    QorSimResultSource source{*cls, 0, 0};
    const struct {
        std::string_view key;
        long cls;
        long& attribute;
    } keys[] = {{kFromAttributeKey, *cls, source.attribute},
                {kResultAttributeKey, _holderClass, source.resultAttribute}};
    for (const auto& row : keys) {
        if (!_parser.IsContained(row.key)) {
            if (!missing(row.key)) return false;
            continue;
        }
        row.attribute = attributeOf(row.cls, row.key);
        if (row.attribute == 0 && !unknown(_parser.GetKeyPosition(row.key), valueOrEmpty(_parser, row.key).view()))
            return false;
    }
    if (source.attribute == 0 || source.resultAttribute == 0) return true;
    tables.mapping.add({source.attribute, source.resultAttribute});
    tables.sources.push_back(source);
    return true;
}

long ResultReader::attributeOf(long cls, std::string_view key) {
    return frame::findAttribute(cls, valueOrEmpty(_parser, key)).value_or(0);
}

bool ResultReader::unknown(QorKexPosition position, std::string_view name) {
    return report(QorSimCode::Failed, position, unknownName(name));
}

bool ResultReader::missing(std::string_view key) {
    return report(QorSimCode::KeyMissing, _parser.GetCurElemPosition(), missingKey(key));
}

bool ResultReader::report(int code, QorKexPosition position, const SV::String& message) {
    _clean = false;
    return _onError(code, position, message);
}

}  // namespace qor::simmap
