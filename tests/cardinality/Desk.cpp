// SPDX-License-Identifier: Apache-2.0
#include "cardinality/Desk.h"

#include <algorithm>

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

}  // namespace

std::string quoted(std::string text) {
    std::replace(text.begin(), text.end(), '\'', '"');
    return text;
}

Desk::Desk() : _host(workshop.platform.host()) {
    _host.texts = this;
    _host.windows = this;
    _installation = std::make_unique<QorHostInstallation>(_host);

    name("Node", workshop.abstractClass("Node"));
    name("Task", workshop.cls("Task", "Node"));
    name("Document", workshop.cls("Document", "Node"));
    name("Special", workshop.cls("Special", "Task"));
    name("then", workshop.relationClass("then", "Node", "Node"));
    name("uses", workshop.relationClass("uses", "Node", "Node"));
    name("files", workshop.relationClass("files", "Document", "Task"));
    workshop.modelType("Process", {"Task", "Document", "Special"});
    EXPECT_EQ(workshop.load(), QorErrorCode::Ok);
    model = workshop.model("Process", "First");
}

Desk::~Desk() = default;

long Desk::operator[](std::string_view name) const {
    const auto place = _identifiers.find(name);
    return place == _identifiers.end() ? -1 : place->second;
}

Desk& Desk::objects(std::string_view letters) {
    for (const char letter : letters) {
        const std::string object(1, letter);
        if (_identifiers.count(object) != 0) continue;
        name(object, workshop.object(letter < 's' ? "Task" : letter < 'x' ? "Special" : "Document", object));
    }
    return *this;
}

Desk& Desk::draw(std::string_view picture) {
    for (; picture.size() >= 3; picture.remove_prefix(std::min<std::size_t>(4, picture.size()))) {
        const auto line = picture.substr(0, 3);
        objects(line.substr(0, 1)).objects(line.substr(2, 1));
        const auto* relationClass = line[1] == '>' ? "then" : line[1] == '=' ? "uses" : "files";
        const auto end = [&](std::size_t at) { return static_cast<QorIdentifier>((*this)[line.substr(at, 1)]); };
        name(line, workshop.connect(end(0), relationClass, end(2)));
    }
    return *this;
}

Desk& Desk::rules(std::string_view cls, std::string_view text) {
    handler.decryptKex(workshop.processes, (*this)[cls], quoted(std::string(text)).c_str());
    return *this;
}

FailingRepository& Desk::watched() {
    if (_watched != nullptr) return *_watched;
    _watched = std::make_unique<FailingRepository>(*_host.repository);
    auto host = _host;
    host.repository = _watched.get();
    _watchedInstallation = std::make_unique<QorHostInstallation>(host);
    return *_watched;
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
