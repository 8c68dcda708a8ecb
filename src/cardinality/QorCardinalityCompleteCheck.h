// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "platform/QorExport.h"
#include "platform/QorKexParser.h"
#include "platform/SvString.h"

class QorCardinalityHandler;

/// The limit that was broken, and which written rule it comes from.
struct QorCardinalityRule {
    long cls = -1;            ///< the class whose text holds the rule
    std::string_view key;     ///< as written: "max-outgoing", "default-min-incoming" ...; a string literal
    long relationClass = -1;  ///< of the RELATION element; -1 for a limit of the class itself
    long otherClass = -1;     ///< of the TO_CLASS or FROM_CLASS element; -1 when the rule names none
    std::uint32_t limit = 0;
};

/// One limit broken by one object, or by one class in one model.
struct QorCardinalityBreach {
    std::uint16_t message = 0;  ///< message resource, in the singular form when the limit is 1
    SV::String text;            ///< the message, complete
    long subject = -1;          ///< the object; the class when subjectIsClass
    bool subjectIsClass = false;
    QorCardinalityRule rule;
    std::uint32_t found = 0;      ///< the count that breaks the limit
    std::vector<long> objects;    ///< objects concerned, ascending
    std::vector<long> relations;  ///< relation instances concerned, ascending
};

/// Every breach of a model: every object against every limit of its class, every class of the model type against its
/// numbers of objects. Nothing is shared between objects, nothing ends early, so one mistake can show under several
/// rules. Same limits and same counting as QorCardinalityHandler::checkModel, whose one breach is always among these.
class QOR_API QorCardinalityCompleteCheck {
public:
    /// Takes one breach; false ends the run.
    using Sink = std::function<bool(const QorCardinalityBreach&)>;

    /// Works on the rules that the handler has read; the handler must outlive this object.
    explicit QorCardinalityCompleteCheck(const QorCardinalityHandler& handler);
    ~QorCardinalityCompleteCheck();

    /// Breaches by object (ascending, each object's in the order in which QorCardinalityHandler tests them), then by
    /// class. True when the run came to its end or the sink ended it; false, after an internal error was shown, when
    /// the repository failed. The handler's activation is not looked at. O(objects + relations + breaches).
    bool checkModel(long model, const Sink& sink);
    /// One object.
    bool checkObject(long object, const Sink& sink);

private:
    const QorCardinalityHandler& _handler;
};
