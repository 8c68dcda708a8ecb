// SPDX-License-Identifier: Apache-2.0
#include "interchange/Files.h"

namespace qor::test {

QorIdentifier Files::library(std::string_view text) {
    const QorImportResult result = read(text);
    EXPECT_EQ(shown(result.diagnostics), "");
    return result.library;
}

std::vector<QorIdentifier> Files::models(std::string_view text, QorIdentifier library) {
    const QorImportResult result = read(text, library);
    EXPECT_EQ(shown(result.diagnostics), "");
    return result.models;
}

std::string Files::content() const {
    std::ostringstream text;
    for (const QorIdentifier library : reader().applicationLibraries()) {
        text << reader().nameOf(library) << " (";
        for (const QorModelInfo& model : reader().modelsOf(library))
            text << model.name << ' ' << reader().objectsOf(model.id).size() << ' '
                 << reader().relationsOf(model.id).size() << ';';
        for (const QorModelGroupInfo& group : reader().modelGroupsOf(library)) text << group.name << ';';
        text << ')';
    }
    return text.str();
}

QorIdentifier Files::object(QorIdentifier model, std::string_view name) const {
    for (const QorIdentifier object : reader().objectsOf(model))
        if (reader().nameOf(object) == name) return object;
    return QorNoIdentifier;
}

std::string repeated(std::string_view text, std::size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i) result += text;
    return result;
}

std::string shown(const std::vector<QorDiagnostic>& diagnostics) {
    std::ostringstream text;
    for (const QorDiagnostic& d : diagnostics) text << d.place.line << ':' << d.place.column << ' ' << d.text << '\n';
    return text.str();
}

void expectDiagnostics(const std::vector<QorDiagnostic>& found, const std::string& expected) {
    const std::string all = shown(found);
    std::istringstream lines(expected);
    std::size_t next = 0;
    for (std::string line; std::getline(lines, line); ++next) {
        ASSERT_LT(next, found.size()) << all;
        const std::string one = shown({found[next]});
        const std::size_t blank = line.find(' ');
        EXPECT_EQ(one.substr(0, one.find(' ')), line.substr(0, blank)) << all;
        EXPECT_NE(one.find(line.substr(blank + 1)), std::string::npos) << line << "\nnot in\n" << all;
    }
    EXPECT_EQ(found.size(), next) << all;
}

}  // namespace qor::test
