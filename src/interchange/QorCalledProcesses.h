// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/QorRepositoryBuilder.h"
#include "embedded/QorRepositoryReader.h"
#include "interchange/QorImport.h"
#include "platform/QorExport.h"

/// Lets call activities of BPMN files refer to processes of other files. A file by itself knows the name of what it
/// calls; which model that is shows when all files of a run have been read.
class QOR_API QorCalledProcesses {
public:
    QorCalledProcesses(QorRepositoryBuilder& builder, const QorRepositoryReader& reader);
    QorCalledProcesses(const QorCalledProcesses&) = delete;
    QorCalledProcesses& operator=(const QorCalledProcesses&) = delete;
    ~QorCalledProcesses();

    /// What came out of a file. The importer must live as long as this object.
    void add(const std::string& file, const QorImporter& importer, const QorImportResult& imported);

    /// Makes the references of all files added so far. A call of its own file's process stands already. Of several
    /// processes with the identifier that is called, the one read last is the newest and taken; a warning tells so. A
    /// call of what no file has stays as it is. Linear in the objects of the files.
    [[nodiscard]] std::vector<QorDiagnostic> link();

    /// A call of what is no process of any file.
    struct UnknownCall {
        QorIdentifier model;
        QorIdentifier object;
        std::string called;
    };
    /// As the latest `link` found them, in the order of the files.
    [[nodiscard]] const std::vector<UnknownCall>& unknownCalls() const { return _unknown; }

private:
    struct File {
        std::string name;
        const QorImporter* importer;
        std::vector<QorIdentifier> models;
    };
    struct Process {
        QorIdentifier model;
        std::size_t file;
    };
    struct Attributes {
        QorIdentifier calledElement;
        QorIdentifier calledProcess;
    };

    void linkObject(const File& file, QorIdentifier model, QorIdentifier object, std::vector<QorDiagnostic>& warnings);
    [[nodiscard]] const Attributes& attributesOf(QorIdentifier cls);
    [[nodiscard]] const std::vector<Process>* find(std::string_view called) const;
    [[nodiscard]] QorDiagnostic severalHave(const File& file, QorIdentifier object, std::string_view called,
                                            const std::vector<Process>& processes) const;

    QorRepositoryBuilder& _builder;
    const QorRepositoryReader& _reader;
    std::vector<File> _files;
    std::map<std::string, std::vector<Process>, std::less<>> _processes;
    std::map<QorIdentifier, Attributes> _attributes;  ///< by class
    std::vector<UnknownCall> _unknown;
};
