// SPDX-License-Identifier: Apache-2.0
#include "modeltools/QorConversionHandler.h"

#include <algorithm>

#include "frame/RepositoryLookup.h"
#include "modeltools/ConversionNames.h"
#include "modeltools/ConversionText.h"
#include "modeltools/ObjectConversion.h"
#include "modeltools/internalErrors.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreVar.h"
#include "platform/QorErrorBox.h"
#include "platform/QorGuard.h"
#include "platform/QorOwnedText.h"

using namespace qor::modeltools;
namespace frame = qor::frame;

namespace {

constexpr const char* kConversionAttribute = "__Conversion__";

constexpr long kBroken = static_cast<long>(QorErrorCode::Broken);

QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }

/// Of the loaded library.
enum class Part { None, BusinessProcess, WorkingEnvironment };

Part partOf(long cls) {
    long library = QorNoIdentifier;
    (void)repository().getLibraryOfClass(cls, library);
    if (library < 1) return Part::None;
    if (library == Qor_GetCoreVar(QorCoreVarType::BusinessProcessLibrary)) return Part::BusinessProcess;
    return library == Qor_GetCoreVar(QorCoreVarType::WorkingEnvironmentLibrary) ? Part::WorkingEnvironment : Part::None;
}

void show(const SV::String& text) {
    QorErrorBox(SV::Application::GetTopWindow(), QorBoxStyle::Error, text).Execute(QorErrorBoxType::Standard);
}

long failed(ConversionLine line, QorErrorCode code) {
    reportInternalError(line);
    return static_cast<long>(code);
}

}  // namespace

QorConversionHandler::QorConversionHandler(long cls) noexcept
    : _cls(Qor_NarrowIdentifier(cls).value_or(QorNoIdentifier)) {}

QorConversionHandler::QorConversionHandler(const QorConversionHandler& other) noexcept : _cls(other._cls) {
    *this = other;
}

QorConversionHandler& QorConversionHandler::operator=(const QorConversionHandler& other) noexcept {
    Qor_Guarded(kConversionSource, [&] {
        auto label = other._label;
        auto conversions = other._conversions;
        auto errorText = other._errorText;
        auto errorReason = other._errorReason;
        _cls = other._cls;
        _label = std::move(label);
        _conversions = std::move(conversions);
        _errorText = std::move(errorText);
        _errorReason = std::move(errorReason);
        _errorPosition = other._errorPosition;
        _isBusinessProcess = other._isBusinessProcess;
        _isWithoutConversion = other._isWithoutConversion;
    });
    return *this;
}

QorConversionHandler::~QorConversionHandler() = default;

const char* QorConversionHandler::GetConversionAttrName() noexcept { return kConversionAttribute; }

long QorConversionHandler::Init(const char* text) noexcept {
    return Qor_Guarded(kConversionSource, kBroken, [&] { return read(text); });
}

long QorConversionHandler::read(const char* text) {
    _conversions.clear();
    _errorText.Clear();
    _errorReason.Clear();
    _errorPosition = {};
    _isWithoutConversion = false;

    const Part part = partOf(_cls);
    if (part == Part::None) return failed(ConversionLine::Library, QorErrorCode::ClassOutsideLibrary);
    _isBusinessProcess = part == Part::BusinessProcess;
    _label = nameOfConvertedClass(_cls);

    long attribute = QorNoIdentifier;
    const QorErrorCode found = repository().getAttributeIDFromAttributeName(_cls, kConversionAttribute, attribute);
    _isWithoutConversion = found == QorErrorCode::NotFound;
    if (_isWithoutConversion) return 0;
    if (found != QorErrorCode::Ok) return failed(ConversionLine::Attribute, found);

    SV::String stored;
    if (text == nullptr) {
        QorOwnedText value;
        const QorErrorCode code = repository().getAttributeValue(_cls, attribute, value.out(), false);
        if (code != QorErrorCode::Ok && code != QorErrorCode::NoValue) return failed(ConversionLine::Text, code);
        stored = value.view();
    } else {
        stored = text;
    }

    QorKexParser parser(std::move(stored), kConversionAttribute, _label);
    if (parser.Parse() != 0) {
        parser.MakeErrorText(_errorText);
        _errorReason = parser.GetErrorReason();
        _errorPosition = parser.GetErrorPosition();
        return static_cast<long>(QorErrorCode::ValueRefused);
    }
    ConversionText definitions(_cls, _isBusinessProcess, _conversions);
    const QorErrorCode code = definitions.read(parser);
    if (!definitions.reason().IsEmpty()) {
        _errorReason = definitions.reason();
        _errorPosition = parser.GetCurElemPosition();
        _errorText = _errorReason + "\n";
        parser.MakeErrorText(_errorText);
    }
    return static_cast<long>(code);
}

QorErrorCode QorConversionHandler::Convert(long model, long object, long targetClass, long& newObject) noexcept {
    newObject = QorNoIdentifier;
    const QorErrorCode code = Qor_Guarded(kConversionSource, QorErrorCode::Broken,
                                          [&] { return convert(model, object, targetClass, newObject); });
    if (code != QorErrorCode::Ok) newObject = QorNoIdentifier;
    return code;
}

QorErrorCode QorConversionHandler::convert(long model, long object, long targetClass, long& newObject) {
    // A class that once had no conversions is not asked again.
    if (!_isWithoutConversion) {
        const auto code = static_cast<QorErrorCode>(Init(nullptr));
        if (code != QorErrorCode::Ok) {
            if (!_errorText.IsEmpty()) show(_errorText);
            return code;
        }
    }
    if (_isWithoutConversion) return QorErrorCode::Ok;

    std::vector<ConvertedValue> values;
    QorErrorCode code = findConvertedValues(*this, targetClass, values);
    // Nothing is made in a model of no class.
    long modelClass = QorNoIdentifier;
    if (code == QorErrorCode::Ok) code = repository().getModelClass(model, modelClass);
    if (code != QorErrorCode::Ok) return code;
    const auto refused = [&](const ConvertedValue& value, const ConversionOutcome& outcome) {
        _errorText = ConversionNames(_cls, value.source, targetClass, value.target).message(outcome.message);
        show(_errorText);
    };
    return ObjectConversion(model, targetClass, ConvertedPart::Everything).run(object, values, refused, {}, newObject);
}

bool QorConversionHandler::IsCorrectConversionAttr(long cls, SV::String& errorText, const char* text) noexcept {
    errorText.Clear();
    QorConversionHandler handler(cls);
    const bool correct = handler.Init(text) == 0;
    errorText = std::move(handler._errorText);
    return correct;
}

std::vector<QorGrObjPattern> QorConversionHandler::GetPatternList() const noexcept {
    return Qor_Guarded(kConversionSource, std::vector<QorGrObjPattern>(), [this] {
        std::vector<QorGrObjPattern> patterns;
        const Part part = partOf(_cls);
        if (part == Part::None) return patterns;
        const bool business = part == Part::BusinessProcess;
        (void)QorGrObjAttrHandler(business, !business).GetPatterns(business, patterns);
        return patterns;
    });
}

const QorClassConversion* QorConversionHandler::conversionInto(long targetClass) const noexcept {
    const auto found = std::find_if(_conversions.begin(), _conversions.end(),
                                    [&](const QorClassConversion& one) { return one.targetClass() == targetClass; });
    return found == _conversions.end() ? nullptr : &*found;
}
