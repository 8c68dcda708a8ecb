// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/ISequence.h"
#include "platform/ISortedSet.h"
#include "platform/QorExport.h"
#include "platform/QorKexParser.h"
#include "platform/SvString.h"
#include "simmap/QorSimDefinitionError.h"
#include "simmap/QorSimOptionActionEvent.h"
#include "simmap/QorSimResultCode.h"
#include "simmap/QorSimulationOption.h"

/// Which classes of a method library play which part in a simulation: the simulation options, and the classes that may
/// be simulated at all.
///
/// The definitions are a keyword text of the library (docs/simulation.md). It is read once, by the first query, and
/// never again: after the text has changed, make a new handler. A text with an error leaves the defaults in force, one
/// option without attributes and every class that can have objects; only the query that read it returns the code of the
/// failure. When the text cannot even be fetched nothing is set, and the next query tries again.
///
/// Results are QorSimCode. An option index counts from 0. Outputs of a failed query are left alone unless said
/// otherwise. Copies share their option objects, which are freed with the last of them.
class QOR_API QorSimMappingHandler {
public:
    // ---- The handler of the loaded library ----

    /// Makes a handler for the library the process-wide one and reads its text; true when that went well. The handler
    /// stays in place when it did not. An earlier handler is not freed: somebody may still hold it.
    static bool CreateGlobal(long libraryId) noexcept;
    /// Null when there is none.
    static QorSimMappingHandler* GetGlobal() noexcept;
    static bool ExistsGlobal() noexcept;
    static void FreeGlobal() noexcept;

    // ---- Construction ----

    explicit QorSimMappingHandler(long libraryId);
    QorSimMappingHandler(const QorSimMappingHandler& other) noexcept;
    QorSimMappingHandler& operator=(const QorSimMappingHandler& other) noexcept;
    virtual ~QorSimMappingHandler();

    // ---- Reading ----

    /// Reads the library's text. Failed when the repository refuses it; otherwise the code of the first error, or with
    /// `continueOnError`, where reading goes on behind an error, FinishedWithErrors.
    int init(bool continueOnError) noexcept;

    /// What the reading of the text ended with; Ok before. Unlike the error text it tells whether something is wrong: a
    /// library without options has an error text and is in order.
    [[nodiscard]] int readingCode() const noexcept { return _readingCode; }
    /// The errors of the text with their places, in the order of their discovery.
    [[nodiscard]] const std::vector<QorSimDefinitionError>& definitionErrors() const noexcept { return _errors; }

    // ---- Queries, each of which reads the text first when it has not been read ----

    int getSimableBPClasses(ISortedSet<long>& classes) noexcept;
    int getSimableWEClasses(ISortedSet<long>& classes) noexcept;
    /// O(log n).
    int isSimableClass(long classId, bool& isSimable) noexcept;
    /// The names of the options in order.
    int getMappingOptions(ISequence<SV::String>& names) noexcept;
    int getHelpTextFromOption(int index, SV::String& text) noexcept;
    /// NoSuchOption for an option that is not complete; the name is delivered all the same.
    int getActivityNameFromOption(int index, SV::String& name) noexcept;
    int getWaitingTimeNameFromOption(int index, SV::String& name) noexcept;
    /// 0 for what the option does not name.
    int getSubPerformerAssignmentFromOption(int index, long& processCallClassId, long& subPerformerAttrId) noexcept;
    /// Execution, waiting, resting and transport time; 0 for what the option does not name.
    int getStandardSimAttributes(int index, ISequence<long>& attributes) noexcept;
    int getAdditionalSimAttributes(int index, ISequence<long>& attributes) noexcept;
    /// At least one option record was taken over; false while only the defaults are in force.
    bool isDefined() noexcept;
    /// All messages, one behind the other.
    SV::String GetErrorText() noexcept;

    // ---- Queries that do not read the text ----

    /// 0 before the text is read.
    [[nodiscard]] int getSimOptionCount() const noexcept;
    /// The option's number minus 1, which is its index only when no record before it was skipped: that is deliberate,
    /// numbers must not move when a record is switched off.
    int getOptionNrFromName(const SV::String& name, int& index) const noexcept;
    /// The attribute that the option evaluates for the class on the event, 0 when there is none. A query for any event
    /// finds every action of the class; an action for any event is found only by such a query.
    int getActionAttribute(int index, const long& classId, QorSimOptionActionEvent event,
                           long& attributeId) const noexcept;
    /// 1 or 0.
    [[nodiscard]] int isActionClass(int index, const long& classId, QorSimOptionActionEvent event) const noexcept;
    [[nodiscard]] bool hasAnyActions(int index) const noexcept;
    /// The option with that index; null when there is none. Lives as long as a handler that has it.
    [[nodiscard]] const QorSimulationOption* option(int index) const noexcept;

    // ---- Writing ----

    /// Appends the mapping as keyword text, with the classes when `withClasses` is not 0. 1; or 0, and nothing is
    /// appended, before the text is read and when a name cannot be fetched. Values are written as they are, also those
    /// with a double quote, which cannot be read again. Process calls and actions are not written.
    int getSimMappingKEX(SV::String& out, const int& withClasses) noexcept;

protected:
    /// Takes the whole text over. What was read before an error stays; `init` clears it away.
    int decryptKex(const SV::String& text, int continueOnError) noexcept;
    /// The records take over the parser's current element.
    int decryptSimOption(const QorKexParser* parser, int number, int continueOnError) noexcept;
    int decryptSimAction(const QorKexParser* parser, int continueOnError) noexcept;
    int decryptSimClasses(const QorKexParser* parser, int continueOnError) noexcept;
    int setDefaultSettings(int addDefaultOption, int addDefaultClasses) noexcept;
    SV::String getNameError(const SV::String& name) const noexcept;

private:
    int readMapping(bool continueOnError);
    int readText(const SV::String& text, bool continueOnError);
    int readElement(const QorKexParser& parser, int& optionCount, bool& hasClasses, bool continueOnError);
    int defaultClasses();
    void forget();
    int ensureRead() noexcept;
    template <class Read>
    int readOption(int index, Read read) noexcept;

    std::int32_t _readingCode = QorSimCode::Ok;
    bool _parsed = false;
    bool _defined = false;
    SV::String _errorText;
    std::vector<QorSimDefinitionError> _errors;
    long _library;
    ISortedSet<long> _businessProcessClasses;
    ISortedSet<long> _workingEnvironmentClasses;
    std::vector<std::shared_ptr<QorSimulationOption>> _options;
};
