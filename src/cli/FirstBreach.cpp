// SPDX-License-Identifier: Apache-2.0
#include "cli/FirstBreach.h"

#include <algorithm>
#include <optional>

#include "cardinality/QorCardinalityHandler.h"

namespace qor::cli {

namespace {

bool isSame(const ISortedSet<long>& set, const std::vector<long>& ids) {
    return std::equal(set.begin(), set.end(), ids.begin(), ids.end());
}

}  // namespace

bool reportFirstBreach(long model, const QorCardinalityCompleteCheck::Sink& sink) {
    QorCardinalityHandler& handler = QorCardinalityHandler::Instance();
    if (handler.checkModel(model, 0) != 0) return true;
    if (!handler.isError()) return false;

    // The handler tells its breach as a text and as marks; the complete check has the same breach with its rule.
    // Objects of two classes may share a name and so a text, which is why the marks are compared, too.
    std::optional<QorCardinalityBreach> breach;
    const auto take = [&](const QorCardinalityBreach& candidate) {
        if (!(candidate.text == handler.getErrorText())) return true;
        const bool isExact = isSame(handler.getBadObjects(), candidate.objects) &&
                             isSame(handler.getBadRelations(), candidate.relations);
        if (isExact || !breach) breach = candidate;
        return !isExact;
    };
    if (!QorCardinalityCompleteCheck(handler).checkModel(model, take) || !breach) return false;
    (void)sink(*breach);
    return true;
}

}  // namespace qor::cli
