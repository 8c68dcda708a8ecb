// SPDX-License-Identifier: Apache-2.0
#include "modeltools/ModelCycles.h"

#include <algorithm>
#include <unordered_map>

namespace qor::modeltools {

namespace {

/// Tarjan's walk for strongly connected components, with a stack of its own.
class Components {
public:
    explicit Components(const ListsByKey<long>& children) : _children(children) {}

    /// Each with its models ascending, those of one model that does not refer to itself left out.
    std::vector<std::vector<long>> find() {
        for (const long model : _children.keys())
            if (!_marks.contains(model)) walk(model);
        return std::move(_found);
    }

private:
    struct Mark {
        std::size_t number;
        std::size_t lowest;
        bool open;
    };
    struct Step {
        long model;
        std::size_t next;
    };

    void walk(long root) {
        enter(root);
        while (!_way.empty()) {
            Step& step = _way.back();
            const auto children = _children.of(step.model);
            if (step.next < children.size()) {
                const long child = children[step.next++];
                const auto seen = _marks.find(child);
                if (seen == _marks.end())
                    enter(child);
                else if (seen->second.open)
                    lower(step.model, seen->second.number);
            } else {
                leave(step.model);
            }
        }
    }

    void enter(long model) {
        const std::size_t number = _marks.size();
        _marks.emplace(model, Mark{number, number, true});
        _way.push_back({model, 0});
        _open.push_back(model);
    }

    void lower(long model, std::size_t number) {
        Mark& mark = _marks.at(model);
        mark.lowest = std::min(mark.lowest, number);
    }

    void leave(long model) {
        const Mark mark = _marks.at(model);
        _way.pop_back();
        if (!_way.empty()) lower(_way.back().model, mark.lowest);
        if (mark.lowest == mark.number) close(model);
    }

    void close(long model) {
        const auto first = std::find(_open.rbegin(), _open.rend(), model).base() - 1;
        std::vector<long> members(first, _open.end());
        _open.erase(first, _open.end());
        for (const long member : members) _marks.at(member).open = false;
        const auto own = _children.of(model);
        if (members.size() == 1 && !std::binary_search(own.begin(), own.end(), model)) return;
        std::sort(members.begin(), members.end());
        _found.push_back(std::move(members));
    }

    const ListsByKey<long>& _children;
    std::unordered_map<long, Mark> _marks;
    std::vector<Step> _way;
    std::vector<long> _open;
    std::vector<std::vector<long>> _found;
};

/// A shortest way from the lowest member back to itself.
std::vector<long> shortestCircle(const ListsByKey<long>& children, const std::vector<long>& members) {
    const long start = members.front();
    std::unordered_map<long, long> cameFrom;
    std::vector<long> front{start};
    for (std::size_t at = 0; at < front.size(); ++at) {
        for (const long child : children.of(front[at])) {
            if (child == start) {
                std::vector<long> path;
                for (long model = front[at]; model != start; model = cameFrom.at(model)) path.push_back(model);
                path.push_back(start);
                std::reverse(path.begin(), path.end());
                return path;
            }
            const bool isMember = std::binary_search(members.begin(), members.end(), child);
            if (isMember && cameFrom.try_emplace(child, front[at]).second) front.push_back(child);
        }
    }
    return {};
}

}  // namespace

std::vector<QorModelCycle> findCycles(const ListsByKey<long>& children) {
    std::vector<QorModelCycle> cycles;
    for (const std::vector<long>& members : Components(children).find())
        cycles.push_back({shortestCircle(children, members), members.size()});
    std::sort(cycles.begin(), cycles.end(),
              [](const QorModelCycle& a, const QorModelCycle& b) { return a.path.front() < b.path.front(); });
    return cycles;
}

}  // namespace qor::modeltools
