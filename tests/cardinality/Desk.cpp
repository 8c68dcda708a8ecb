// SPDX-License-Identifier: Apache-2.0
#include "cardinality/Desk.h"

#include <gtest/gtest.h>

#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorHost.h"

namespace {

const char* structure(unsigned short number) {
    static std::map<unsigned short, std::string> texts;
    auto& text = texts[number];
    const auto is = [number](std::initializer_list<unsigned short> numbers) {
        return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
    };
    text = std::to_string(number);
    if (is({1962, 1963, 1971, 1972})) text += "{%source,%direction,%number}";
    if (is({1964, 1965, 1973, 1974})) text += "{%source %direction,%type,%number}";
    if (is({1967, 1968, 1969, 1970})) text += "{%c,%n1,%n2}";
    if (is({1983})) text += "<%instance1|%instance2>";
    if (is({1984, 1985})) text += "<%class|%instance>";
    if (is({1988})) text += "<%c>";
    if (is({1966})) text += "{%a,%k,%s,%e}";
    if (is({1975})) text += "{%a,%k,%s,%r}";
    return text.c_str();
}

long made(const QorBuildResult& result) {
    EXPECT_TRUE(result.ok()) << Qor_BuildErrorText(result.error);
    return result.id;
}

QorIdentifier narrow(long identifier) { return static_cast<QorIdentifier>(identifier); }

}  // namespace

Desk::Desk() {
    _host = platform.host();
    _host.texts = this;
    _host.windows = this;
    _installations.push_back(std::make_unique<QorHostInstallation>(_host));

    auto& builder = platform.builder();
    application = made(builder.addApplicationLibrary("Works", "", ""));
    library = builder.libraryPart(narrow(application), QorLibraryPart::BusinessProcess);
    otherLibrary = builder.libraryPart(narrow(application), QorLibraryPart::WorkingEnvironment);
    const auto addClass = [&](const char* cls, long superclass, bool abstract) {
        name(cls, made(builder.addClass(narrow(library), cls, narrow(superclass), abstract)));
        return narrow((*this)[cls]);
    };
    const auto node = addClass("Node", -1, true);
    const auto task = addClass("Task", node, false);
    const auto document = addClass("Document", node, false);
    const auto special = addClass("Special", task, false);
    name("then", made(builder.addRelationClass(narrow(library), "then", node, node)));
    name("uses", made(builder.addRelationClass(narrow(library), "uses", node, node)));
    name("files", made(builder.addRelationClass(narrow(library), "files", document, task)));
    const QorIdentifier visible[] = {task, document, special};
    const auto type = made(builder.addModelType(narrow(library), "Process", visible));
    EXPECT_EQ(QorCoreModelingManager::GetGlobal()->LoadApplicationLibrary(application, false), QorErrorCode::Ok);
    EXPECT_EQ(QorCoreModelingManager::GetGlobal()->initLibraryHandlers(true), QorErrorCode::Ok);
    model = made(builder.addModel(narrow(type), "First", ""));
}

Desk::~Desk() {
    while (!_installations.empty()) _installations.pop_back();
}

long Desk::operator[](std::string_view name) const {
    const auto place = _identifiers.find(name);
    return place == _identifiers.end() ? -1 : place->second;
}

Desk& Desk::objects(std::string_view letters) {
    for (const char letter : letters) {
        const std::string object(1, letter);
        if (_identifiers.count(object) != 0) continue;
        const auto* cls = letter < 's' ? "Task" : letter < 'x' ? "Special" : "Document";
        name(object, made(platform.builder().addObject(narrow(model), narrow((*this)[cls]), object)));
    }
    return *this;
}

Desk& Desk::draw(std::string_view picture) {
    for (; picture.size() >= 3; picture.remove_prefix(std::min<std::size_t>(4, picture.size()))) {
        const auto line = picture.substr(0, 3);
        objects(line.substr(0, 1)).objects(line.substr(2, 1));
        const auto* relationClass = line[1] == '>' ? "then" : line[1] == '=' ? "uses" : "files";
        name(line,
             made(platform.builder().addRelation(narrow((*this)[relationClass]), narrow((*this)[line.substr(0, 1)]),
                                                 narrow((*this)[line.substr(2, 1)]))));
    }
    return *this;
}

Desk& Desk::rules(std::string_view cls, std::string_view text) {
    handler.decryptKex(library, (*this)[cls], std::string(text).c_str());
    return *this;
}

void Desk::store(std::string_view cls, std::string_view text) {
    made(platform.builder().setClassValue(narrow((*this)[cls]), QorAttributeId::Cardinality, text));
}

void Desk::install(QorCoreModelingManager& repository) {
    _host.repository = &repository;
    _installations.push_back(std::make_unique<QorHostInstallation>(_host));
}

const char* Desk::text(unsigned short number) const { return structure(number); }

void Desk::setWaitCursor(bool on) {
    if (on && !waitCursor) ++waitsBegun;
    waitCursor = on;
}

void Desk::internalError(const char* source, long, const char*) { internalErrors.emplace_back(source); }

void Desk::name(std::string_view name, long identifier) {
    _identifiers.emplace(name, identifier);
    _names.emplace(identifier, name);
}
