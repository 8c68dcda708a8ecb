// SPDX-License-Identifier: Apache-2.0
// Any bytes as simulation mapping, result text and simulation texts of a small library. A mapping that is read must
// keep its promises, also after an error: the defaults then are in force. What is written of a mapping without double
// quotes in its names reads again; simulation texts always do.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreVar.h"
#include "simmap/QorSimMappingHandler.h"
#include "simmap/QorSimReadiness.h"
#include "simmap/QorSimResultAttributes.h"
#include "simmap/QorSimResultDefinitions.h"
#include "simmap/QorSimTextHandler.h"

namespace {

void demand(bool condition) {
    if (!condition) std::abort();
}

class Library {
public:
    Library() : _installation(_platform.host()) {
        auto& builder = _platform.builder();
        id = builder.addApplicationLibrary("Works", {}, {}).id;
        process = builder.libraryPart(id, QorLibraryPart::BusinessProcess);
        staff = builder.libraryPart(id, QorLibraryPart::WorkingEnvironment);
        for (const auto part : {process, staff}) {
            const auto base = builder.addClass(part, "Base", QorNoIdentifier, true).id;
            add(base, "Time", QorCoreAttributeType::Time);
            add(base, "Costs", QorCoreAttributeType::Floating);
            add(base, "Info", QorCoreAttributeType::Text);
            add(base, "Event", QorCoreAttributeType::SimulationAction);
            (void)builder.addClass(part, "Task", base, false);
            (void)builder.addClass(part, "Start", base, false);
        }
        demand(_platform.host().repository->LoadApplicationLibrary(id, false) == QorErrorCode::Ok);
    }
    void set(QorIdentifier of, QorIdentifier attribute, std::string_view text) {
        demand(_platform.builder().setLibraryValue(of, attribute, text).ok());
    }

    QorIdentifier id = QorNoIdentifier;
    QorIdentifier process = QorNoIdentifier;
    QorIdentifier staff = QorNoIdentifier;

private:
    void add(QorIdentifier cls, std::string_view name, QorCoreAttributeType type) {
        QorAttributeSpec spec;
        spec.name = name;
        spec.type = type;
        demand(_platform.builder().addAttribute(cls, spec).ok());
    }

    QorEmbeddedPlatform _platform;
    QorHostInstallation _installation;
};

bool holdsQuotes(QorSimMappingHandler& mapping) {
    for (int index = 0; index < mapping.getSimOptionCount(); ++index) {
        const auto& option = *mapping.option(index);
        for (const auto* text : {&option.name, &option.helpText})
            if (text->view().find('"') != std::string_view::npos) return true;
    }
    return false;
}

void readMapping(Library& library, bool continueOnError) {
    QorSimMappingHandler mapping(library.id);
    const int code = mapping.init(continueOnError);
    demand(code == mapping.readingCode());
    demand((code == 0) == mapping.definitionErrors().empty());
    demand(mapping.getSimOptionCount() > 0);
    demand(code == 0 || (!mapping.isDefined() && !mapping.GetErrorText().IsEmpty()));
    for (int index = 0; index < mapping.getSimOptionCount(); ++index)
        demand(mapping.option(index)->standardAttributes.numberOfElements() == 4);

    SV::String written;
    demand(mapping.getSimMappingKEX(written, 1) == 1);
    if (holdsQuotes(mapping)) return;
    library.set(library.id, QorAttributeId::SimulationMapping, written.view());
    QorSimMappingHandler again(library.id);
    demand(again.init(false) == 0 || !mapping.isDefined() || !again.definitionErrors().empty());
}

void readTexts(const Library& library, const SV::String& text) {
    QorSimTextHandler texts(library.id);
    texts.init(text);
    QorSimTextHandler again(library.id);
    demand(again.init(texts.getSimTextKEX()) == 1);
    demand(again.isDefined() == texts.isDefined());
    demand(again.getBPText() == texts.getBPText() && again.getResCostText() == texts.getResCostText());
}

void readResults() {
    const QorSimResultDefinitions results;
    demand(results.holders().size() == 3);
    QorSimMappingHandler mapping(Qor_GetCoreVarConst(QorCoreVarType::ApplicationLibrary));
    QorSimReadiness readiness;
    demand(readiness.check(Qor_GetCoreVarConst(QorCoreVarType::ApplicationLibrary), mapping, results,
                           QorSimReadiness::kAllOptions, {}));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A new one now and then: what a repository forgets of its texts it still keeps room for.
    static std::unique_ptr<Library> library;
    static int uses = 0;
    if (uses++ % 10'000 == 0) {
        library.reset();
        library = std::make_unique<Library>();
    }
    std::string text(reinterpret_cast<const char*>(data), size);
    if (text.find('\0') != std::string::npos) return 0;  // no attribute holds one
    for (const bool continueOnError : {false, true}) {
        library->set(library->id, QorAttributeId::SimulationMapping, text);
        readMapping(*library, continueOnError);
    }
    readTexts(*library, text);
    for (const auto part : {library->process, library->staff})
        library->set(part, QorAttributeId::SimulationResult, text);
    readResults();
    for (const long part : {QorLibraryKind::BusinessProcess, QorLibraryKind::WorkingEnvironment}) {
        SV::String old(text);
        if (!QorSimResultAttributes::old2New(old, part)) continue;
        QorKexParser parser(old, SV::String());
        demand(parser.Parse() == 0);
    }
    return 0;
}
