// SPDX-License-Identifier: Apache-2.0
// Reading from the file system: what cannot be read, what kind a file is of, and which library its models go with.
#include <sys/stat.h>

#include <thread>

#include "interchange/Files.h"
#include "support/OnStores.h"

namespace {

namespace fs = std::filesystem;
using qor::test::expectDiagnostics;
using qor::test::Files;
using qor::test::kSmallLibrary;

struct Import : testing::Test, TemporaryFolder {
    Import() { fs::create_directory(file("models")); }
    std::string write(const std::string& name, std::string_view text) const {
        std::ofstream(file(name), std::ios::binary) << text;
        return file(name);
    }
    Files files;
};

constexpr std::string_view kModel = "format: qor.model/1\nlibrary: ../small.yaml\nmodels: [{name: M, type: Notes}]\n";

TEST_F(Import, SaysWhatCannotBeRead) {
    fs::create_symlink(file("circle"), file("circle"));
    const struct {
        std::string path, expected;
    } kCases[] = {
        {file("nothing"), "0:0 there is no such file"},
        {file("models"), "0:0 this is a folder"},
        {write("small.yaml", kSmallLibrary) + "/x", "0:0 there is no such file"},
        {file("circle"), "0:0 circle"},
        {std::string("a\0b", 3), "0:0 there is no such file"},
        {"", "0:0 there is no such file"},
        {write("empty", ""), "0:0 the file is empty"},
        {"/dev/zero", "1:1 a zero byte"},
        {write("program", std::string_view("\x7F"
                                           "ELF\0\0",
                                           6)),
         "1:5 a zero byte"},
    };
    for (const auto& [path, expected] : kCases) {
        const QorImportResult result = files.importer.readFile(path, QorNoIdentifier);
        expectDiagnostics(result.diagnostics, expected);
        EXPECT_EQ(result.kind, QorFileKind::Unknown);
        EXPECT_EQ(result.diagnostics.at(0).place.file, path);
        EXPECT_EQ(files.importer.kindOf(path), QorFileKind::Unknown) << path;
    }
}

TEST_F(Import, RefusesAHugeFileUnread) {
    for (const std::string_view beginning : {"format: qor.model/1\n", "{\"format\": \"qor.model/1\",\n"}) {
        const std::string path = write("huge", beginning);
        fs::resize_file(path, std::uintmax_t{2} << 40);  // a sparse file
        expectDiagnostics(files.importer.readFile(path, QorNoIdentifier).diagnostics, "0:0 larger than 512 MiB");
    }
}

TEST_F(Import, KnowsKindsByTheirBeginning) {
    const std::string padding = "# " + std::string(200000, 'x') + "\n";
    const struct {
        std::string text;
        QorFileKind kind;
        std::string_view library;
    } kCases[] = {
        {std::string(kSmallLibrary), QorFileKind::Library, ""},
        {std::string(kModel), QorFileKind::Models, "../small.yaml"},
        {"\xEF\xBB\xBF{\"models\": [1, 2],\n \"format\": \"qor.model/1\", \"library\": \"/a.yaml\"}",
         QorFileKind::Models, "/a.yaml"},
        {"models: [\n" + padding + "]\nlibrary: far.yaml\nformat: qor.model/1\n", QorFileKind::Models, "far.yaml"},
        // The beginning that is looked at first ends within the name.
        {"format: qor.model/1\n#" + std::string(65536 - 20 - 1 - 1 - 16, 'x') + "\nlibrary: \"cut.yaml\"\n",
         QorFileKind::Models, "cut.yaml"},
        {"format: qor.model/1\n#" + std::string(65536 - 20 - 1 - 1 - 13, 'x') + "\nlibrary: cut.yaml\n",
         QorFileKind::Models, "cut.yaml"},
        {"#" + std::string(65535, '\xC3'), QorFileKind::Unknown, ""},
        {"<?xml version=\"1.0\"?><x/>", QorFileKind::Bpmn, ""},
        {"\n <x/>", QorFileKind::Bpmn, ""},
        {std::string("\xFF\xFE<\0", 4), QorFileKind::Bpmn, ""},
        {"hello\n", QorFileKind::Unknown, ""},
        {"format: &a qor.model/1\nmodels: *a", QorFileKind::Models, ""},
    };
    for (const auto& [text, kind, library] : kCases) {
        const std::string file = write("models/any", text);
        EXPECT_EQ(files.importer.kindOf(file), kind) << text.substr(0, 60);
        const std::string named = files.importer.libraryNamedBy(file);
        EXPECT_EQ(named, library.empty() ? std::string() : (fs::path(file).parent_path() / library).string());
    }
}

TEST_F(Import, LooksAtAPipeWithoutLosingIt) {
    const std::string pipe = file("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::thread writer([&] { std::ofstream(pipe) << kSmallLibrary; });
    EXPECT_EQ(files.importer.kindOf(pipe), QorFileKind::Library);
    writer.join();
    EXPECT_EQ(files.importer.libraryNamedBy(pipe), "");
    EXPECT_NE(files.importer.readFile(pipe, QorNoIdentifier).library, QorNoIdentifier);
}

TEST_F(Import, ReadsTheLibraryThatModelsNameOnce) {
    write("small.yaml", kSmallLibrary);
    const std::string first = write("models/first.yaml", kModel);
    const std::string second = write(
        "second.yaml", "format: qor.model/1\nlibrary: ./models/.././small.yaml\nmodels: [{name: N, type: Notes}]\n");
    EXPECT_EQ(files.importer.readFile(first, QorNoIdentifier).models.size(), 1U);
    EXPECT_EQ(files.importer.readFile(second, QorNoIdentifier).models.size(), 1U);
    EXPECT_EQ(files.content(), "Small (M 0 0;N 0 0;)");
}

TEST_F(Import, TellsWhatIsWrongWithTheLibraryThatModelsName) {
    const std::string model = write("models/first.yaml", kModel);
    const std::string library = write("small.yaml", "format: qor.library/1\nname: L\nclases: []\n");
    const QorImportResult result = files.importer.readFile(model, QorNoIdentifier);
    expectDiagnostics(result.diagnostics, "3:1 no key \"clases\"\n2:10 cannot be used");
    EXPECT_EQ(fs::weakly_canonical(result.diagnostics[0].place.file), fs::weakly_canonical(library));
    EXPECT_EQ(result.diagnostics[1].place.file, model);
    expectDiagnostics(files.importer.readFile(model, QorNoIdentifier).diagnostics, "2:10 cannot be used");

    write("small.yaml", kModel);
    expectDiagnostics(Files().importer.readFile(model, QorNoIdentifier).diagnostics,
                      "1:1 file of models, not a method library\n2:10 cannot be used");
    expectDiagnostics(files.read("format: qor.model/1\nmodels: []\n").diagnostics, "1:1 need a method library");
    EXPECT_EQ(files.content(), "");
}

}  // namespace
