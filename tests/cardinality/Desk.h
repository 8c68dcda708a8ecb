// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "cardinality/QorCardinalityHandler.h"
#include "platform/QorInternational.h"
#include "platform/QorWindows.h"
#include "support/Workshop.h"

/// A handler whose inner steps can be called.
class OpenHandler : public QorCardinalityHandler {
public:
    OpenHandler() noexcept = default;
    using QorCardinalityHandler::areAlreadyChecked;
    using QorCardinalityHandler::checkOneClass;
    using QorCardinalityHandler::checkOneObject;
    using QorCardinalityHandler::checkOneObjectMax;
    using QorCardinalityHandler::checkOneObjectMin;
    using QorCardinalityHandler::createClassItem;
    using QorCardinalityHandler::decryptKex;
    using QorCardinalityHandler::getCurrentInRelations;
    using QorCardinalityHandler::getCurrentOutRelations;
    using QorCardinalityHandler::isAlreadyChecked;
    using QorCardinalityHandler::makeErrorText;
    using QorCardinalityHandler::setBadInstance;
    using QorCardinalityHandler::setBadInstances;
    using QorCardinalityHandler::setChecked;
};

/// A rule text whose names stand in single quotes.
[[nodiscard]] std::string quoted(std::string text);

/// A workshop with a small library and one model, on which boxes are drawn and joined.
///
/// Classes: Node (abstract), Task, Document and Special, which is a Task. Relation classes: "then" and "uses" between
/// any Nodes, "files" from a Document to a Task. Objects a to h are Tasks, s to u Specials, x to z Documents.
///
/// Message texts show their structure: "1964{who,direction,type,number}".
class Desk : private QorMessageTexts, private QorWindows {
public:
    Desk();
    ~Desk() override;

    /// Identifier of a class, relation class, object or drawn relation ("a>b", the first of its kind).
    long operator[](std::string_view name) const;
    /// Adds objects: one letter each.
    Desk& objects(std::string_view letters);
    /// Joins objects: "a>b" then, "a=x" uses, "x~a" files. Adds those that are missing.
    Desk& draw(std::string_view picture);
    /// Puts rules, as `quoted`, into the handler; what it says about the text is kept.
    Desk& rules(std::string_view cls, std::string_view text);
    /// Names of things, by identifier, separated by blanks.
    template <class Identifiers>
    std::string names(const Identifiers& identifiers) const {
        std::string text;
        for (const long identifier : identifiers) text += (text.empty() ? "" : " ") + _names.at(identifier);
        return text;
    }

    Workshop workshop;
    OpenHandler handler;
    long model = -1;
    std::vector<std::string> internalErrors;  ///< their sources
    bool waitCursor = false;
    int waitsBegun = 0;

    /// Puts a failing repository without a bulk view before the platform's, until the desk goes.
    FailingRepository& watched();

private:
    const char* text(unsigned short number) const override;
    bool isWaitCursor() override { return waitCursor; }
    void setWaitCursor(bool on) override;
    void internalError(const char* source, long line, const char* text) override;
    void name(std::string_view name, long identifier);

    QorHost _host;
    std::unique_ptr<FailingRepository> _watched;
    std::unique_ptr<QorHostInstallation> _installation;
    std::unique_ptr<QorHostInstallation> _watchedInstallation;
    std::map<std::string, long, std::less<>> _identifiers;
    std::map<long, std::string> _names;
};
