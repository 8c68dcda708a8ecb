// SPDX-License-Identifier: Apache-2.0
#include <memory>

#include "frame/RepositoryLookup.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreVar.h"
#include "platform/QorGuard.h"
#include "platform/QorMessage.h"
#include "simmap/ActionRecord.h"
#include "simmap/ClassesRecord.h"
#include "simmap/MappingErrors.h"
#include "simmap/OptionRecord.h"
#include "simmap/QorSimMappingHandler.h"
#include "simmap/internalErrors.h"
#include "simmap/messages.h"

using namespace qor::simmap;
namespace frame = qor::frame;

int QorSimMappingHandler::init(bool continueOnError) noexcept {
    const bool wasRead = _parsed;
    const int code = Qor_Guarded(kMappingSource, QorSimCode::Failed, [&] { return readMapping(continueOnError); });
    if (!wasRead) _readingCode = code;
    return code;
}

int QorSimMappingHandler::readMapping(bool continueOnError) {
    const auto text = frame::readText(_library, QorAttributeId::SimulationMapping);
    if (!text) {
        _errorText = Qor_Message(message::repositoryFailed);
        return QorSimCode::Failed;
    }
    if (!_parsed) forget();
    if (text->IsEmpty()) return setDefaultSettings(1, 1);
    const int code = decryptKex(*text, continueOnError ? 1 : 0);
    if (code != QorSimCode::Ok) {
        forget();
        setDefaultSettings(1, 1);
    }
    return code;
}

/// Drops options, classes and flags; the errors stay.
void QorSimMappingHandler::forget() {
    _options.clear();
    _businessProcessClasses.removeAll();
    _workingEnvironmentClasses.removeAll();
    _parsed = false;
    _defined = false;
}

int QorSimMappingHandler::decryptKex(const SV::String& text, int continueOnError) noexcept {
    if (_parsed) return QorSimCode::Ok;
    return Qor_Guarded(kMappingSource, QorSimCode::Failed, [&] {
        _errorText.Clear();
        _errors.clear();
        return readText(text, continueOnError != 0);
    });
}

int QorSimMappingHandler::readText(const SV::String& text, bool continueOnError) {
    const auto attributeName = frame::nameOfAttribute(QorAttributeId::SimulationMapping);
    if (!attributeName) {
        reportInternalError(MappingLine::AttributeName);
        return QorSimCode::Failed;
    }
    const auto libraryName = frame::readText(_library, QorAttributeId::Name);
    if (!libraryName) {
        reportInternalError(MappingLine::LibraryName);
        return QorSimCode::Failed;
    }

    const MappingErrors errors{_library, _errorText, _errors};
    QorKexParser parser(text, *attributeName, *libraryName);
    if (parser.Parse() != 0) return errors.add(QorSimCode::BadText, parser.GetErrorPosition(), parser.GetErrorText());

    int optionCount = 0;
    bool hasClasses = false;
    Tolerance tolerance(continueOnError);
    for (unsigned long index = 0; parser.SetCurElemIndex(index); ++index) {
        const int code = readElement(parser, optionCount, hasClasses, continueOnError);
        if (tolerance.isStoppedBy(code)) return code;
    }
    // Lays the actions out, so that queries need no memory.
    for (const auto& option : _options) (void)option->actions.begin();
    if (const int code = setDefaultSettings(_defined ? 0 : 1, hasClasses ? 0 : 1); code != QorSimCode::Ok) return code;
    _parsed = true;
    return tolerance.result();
}

int QorSimMappingHandler::readElement(const QorKexParser& parser, int& optionCount, bool& hasClasses,
                                      bool continueOnError) {
    const auto name = parser.GetCurElemNameView();
    const int goOn = continueOnError ? 1 : 0;
    if (name == "SIMOPTION") return decryptSimOption(&parser, ++optionCount, goOn);
    if (name == "ACTION") return decryptSimAction(&parser, goOn);
    if (name == "SIMCLASSES") {
        hasClasses = true;
        return decryptSimClasses(&parser, goOn);
    }
    const MappingErrors errors{_library, _errorText, _errors};
    return errors.add(QorSimCode::BadText, parser.GetCurElemPosition(), unknownName(name));
}

int QorSimMappingHandler::decryptSimOption(const QorKexParser* parser, int number, int continueOnError) noexcept {
    return Qor_Guarded(kMappingSource, QorSimCode::Failed, [&] {
        OptionRecord record(*parser, _library, {_library, _errorText, _errors}, continueOnError != 0);
        if (record.isSwitchedOff()) return QorSimCode::Ok;
        // In the vector before it is read, so that actions behind it find it whatever becomes of it.
        _options.push_back(std::make_shared<QorSimulationOption>(number));
        auto& option = *_options.back();
        const int code = record.read(option);
        if (option.complete != 0) _defined = true;
        return code;
    });
}

int QorSimMappingHandler::decryptSimAction(const QorKexParser* parser, int continueOnError) noexcept {
    return Qor_Guarded(kMappingSource, QorSimCode::Failed, [&] {
        const MappingErrors errors{_library, _errorText, _errors};
        if (_options.empty()) {
            _errorText.Clear();  // this message alone stands, whatever was said before
            return errors.add(QorSimCode::BadText, parser->GetCurElemPosition(),
                              Qor_Message(message::actionWithoutOption));
        }
        return readAction(*parser, _library, errors, continueOnError != 0, *_options.back());
    });
}

int QorSimMappingHandler::decryptSimClasses(const QorKexParser* parser, int continueOnError) noexcept {
    return Qor_Guarded(kMappingSource, QorSimCode::Failed, [&] {
        ClassesRecord record(*parser, {_library, _errorText, _errors}, continueOnError != 0);
        return record.read(_businessProcessClasses, _workingEnvironmentClasses);
    });
}

int QorSimMappingHandler::setDefaultSettings(int addDefaultOption, int addDefaultClasses) noexcept {
    if (_parsed) return QorSimCode::Ok;
    constexpr int kBrokenOff = -1;
    const int code = Qor_Guarded(kMappingSource, kBrokenOff, [&] {
        if (addDefaultOption != 0) {
            auto option = std::make_shared<QorSimulationOption>(1);
            option->name = Qor_Message(message::defaultOptionName);
            option->helpText = Qor_Message(message::defaultHelpText);
            _options.push_back(std::move(option));
            _parsed = true;
            if (_errorText.IsEmpty()) _errorText = Qor_Message(message::noOptionDefined);
        }
        return addDefaultClasses != 0 ? defaultClasses() : QorSimCode::Ok;
    });
    if (code != kBrokenOff) return code;
    _parsed = false;  // half the defaults are none: the next query tries again
    return QorSimCode::Failed;
}

int QorSimMappingHandler::defaultClasses() {
    if (allClasses(Qor_GetCoreVarConst(QorCoreVarType::BusinessProcessLibrary), _businessProcessClasses) &&
        allClasses(Qor_GetCoreVarConst(QorCoreVarType::WorkingEnvironmentLibrary), _workingEnvironmentClasses))
        return QorSimCode::Ok;
    _errorText += Qor_Message(message::repositoryFailed).view();
    return QorSimCode::Failed;
}

SV::String QorSimMappingHandler::getNameError(const SV::String& name) const noexcept {
    return Qor_Guarded(kMappingSource, SV::String(), [&] { return unknownName(name.view()); });
}
