// SPDX-License-Identifier: Apache-2.0
// Access of users to model groups. "x_pass" is the time in times of one bare pass over what the host hands out: the
// entries of the user's groups, or the users with their memberships; the fastest of each, in turns in one run.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "admin/QorAllModelStructure.h"
#include "admin/QorModelGroupReach.h"
#include "admin/QorModelGroupRights.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorCoreModelGroupManager.h"
#include "platform/QorHost.h"
#include "platform/QorUserManager.h"

namespace {

constexpr long kLibrary = 7;

double secondsOf(const auto& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// A host that keeps users, memberships, model groups and permissions in tables.
class Host final : public QorUserService, public QorModelGroupService {
public:
    Host(long users, long groupsOfUser, long groups, long entriesOfGroup) {
        for (long modelGroup = 0; modelGroup < kModelGroups; ++modelGroup)
            _modelGroups.push_back("Model group " + std::to_string(modelGroup));
        for (long user = 0; user < users; ++user) {
            auto& own = _memberships.emplace_back();
            for (long i = 0; i < groupsOfUser; ++i) own.push_back((user * 31 + i) % groups);
            std::sort(own.begin(), own.end());
        }
        for (long group = 0; group < groups; ++group) {
            auto& own = _permissions.emplace_back();
            for (long i = 0; i < entriesOfGroup; ++i)
                own.push_back({(group * 37 + i * 101) % kModelGroups, i % 3 == 0 ? 4 : 2});
        }
        QorHost host;
        host.users = this;
        host.modelGroups = this;
        _installation = std::make_unique<QorHostInstallation>(host);
    }

    QorErrorCode push(long) override { return QorErrorCode::Ok; }
    QorErrorCode pop() override { return QorErrorCode::Ok; }
    QorErrorCode allUserIDs(ISortedSet<QorUserID>& users) override {
        users.removeAll();
        for (std::size_t user = 0; user < _memberships.size(); ++user) users.add(QorUserID(static_cast<long>(user)));
        return QorErrorCode::Ok;
    }
    QorErrorCode singleSignOnMode(long& mode) override {
        mode = 0;
        return QorErrorCode::Ok;
    }
    QorErrorCode allowedApplicationLibrary(const QorUserID&, long& library) override {
        library = kLibrary;
        return QorErrorCode::Ok;
    }
    QorErrorCode userGroupsOfUser(const QorUserID& user, ISortedSet<QorUserGroupID>& groups) override {
        groups.removeAll();
        for (const long group : _memberships[static_cast<std::size_t>(user.value())]) groups.add(QorUserGroupID(group));
        return QorErrorCode::Ok;
    }
    QorErrorCode modelGroupsAccessibleByUserGroup(const QorUserGroupID& group,
                                                  QorAccModelgroupContainer& entries) override {
        entries.removeAll();
        for (const auto& [modelGroup, permission] : _permissions[static_cast<std::size_t>(group.value())])
            entries.add(std::make_unique<QorAccModelgroup>(
                modelGroup, _modelGroups[static_cast<std::size_t>(modelGroup)].c_str(), kLibrary, permission));
        return QorErrorCode::Ok;
    }
    QorErrorCode modelGroupInfo(long modelGroup, SV::String& name, long& library) override {
        name = SV::String(_modelGroups[static_cast<std::size_t>(modelGroup)]);
        library = kLibrary;
        return QorErrorCode::Ok;
    }
    QorErrorCode subGroups(long, ISortedSet<long>& groups, bool) override {
        groups.removeAll();
        return QorErrorCode::Ok;
    }

private:
    static constexpr long kModelGroups = 20'000;

    std::vector<std::string> _modelGroups;
    std::vector<std::vector<long>> _memberships;
    std::vector<std::vector<std::pair<long, std::int32_t>>> _permissions;
    std::unique_ptr<QorHostInstallation> _installation;
};

/// Measures `work` beside `pass` and reports the one in times of the other; `clear` gives the result back.
void compare(benchmark::State& state, const auto& pass, const auto& work, const auto& clear) {
    double passing = 1e9;
    double working = 1e9;
    for (auto _ : state) {
        passing = std::min(passing, secondsOf(pass));
        const double seconds = secondsOf(work);
        working = std::min(working, seconds);
        state.SetIterationTime(seconds);
        clear();
    }
    state.counters["x_pass"] = working / passing;
}

/// Groups have the identifiers from `first` on.
void passOverEntries(long groups, long first = 0) {
    long sum = 0;
    for (long group = first; group < first + groups; ++group) {
        QorAccModelgroupContainer entries;
        (void)QorUserManager::allUmansGetModelGroupsAccessibleByUserGroup(QorUserGroupID(group), entries);
        for (const auto& entry : entries) sum += entry->getModelGroupID() + entry->getPermission();
    }
    benchmark::DoNotOptimize(sum);
}

/// A user in N groups with 100 entries each.
void accessOfUser(benchmark::State& state) {
    const long groups = state.range(0);
    const Host host(1000, groups, groups, 100);
    QorAccModelgroupContainer container;
    compare(
        state, [&] { passOverEntries(groups); },
        [&] {
            if (QorAllModelStructure::Instance().GetModelGroupsOfUser(QorUserID(500), container) != QorErrorCode::Ok ||
                container.numberOfElements() != static_cast<unsigned long>(groups) * 100)
                state.SkipWithError("wrong access");
        },
        [&] { container.removeAll(); });
}
BENCHMARK(accessOfUser)->UseManualTime()->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void mergedRightsOfUser(benchmark::State& state) {
    const long groups = state.range(0);
    const Host host(1000, groups, groups, 100);
    QorModelGroupRights rights;
    compare(
        state, [&] { passOverEntries(groups); },
        [&] {
            if (rights.read(QorUserID(500)) != QorErrorCode::Ok || rights.rights().empty())
                state.SkipWithError("no rights");
        },
        [] {});
}
BENCHMARK(mergedRightsOfUser)->UseManualTime()->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void passOverMemberships() {
    long sum = 0;
    ISortedSet<QorUserID> users;
    (void)QorUserManager::getAllUserIDs(users);
    ISortedSet<QorUserGroupID> groups;
    for (const auto& user : users) {
        (void)QorDBAdministration::getUsergroups(user, groups);
        for (const auto& group : groups) sum += group.value();
    }
    benchmark::DoNotOptimize(sum);
}

/// N users in five groups each; one group for 500 users, with 20 entries, which are read too.
void whoCanReach(benchmark::State& state) {
    const Host host(state.range(0), 5, state.range(0) / 500, 20);
    QorModelGroupReach reach;
    compare(
        state, passOverMemberships,
        [&] {
            if (reach.read(101) != QorErrorCode::Ok || reach.users().empty()) state.SkipWithError("nobody");
        },
        [] {});
}
BENCHMARK(whoCanReach)->UseManualTime()->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// The embedded platform with users, groups that each have as many entries, and memberships.
class EmbeddedHost {
public:
    EmbeddedHost(long users, long groupsOfUser, long groups, long entriesOfGroup) : _installation(_platform.host()) {
        auto& administration = _platform.userAdministration();
        const auto library = _platform.builder().addApplicationLibrary("Works", {}, {}).id;
        _platform.setCurrentUser("user 0");
        for (long entry = 0; entry < entriesOfGroup; ++entry)
            modelGroup = _platform.builder().addModelGroup(library, "Model group " + std::to_string(entry)).id;
        for (long group = 0; group < groups; ++group) {
            const auto id = administration.addUserGroup("Group " + std::to_string(group)).id;
            if (group == 0) firstGroup = id;
            for (long entry = 0; entry < entriesOfGroup; ++entry)
                (void)administration.setPermission(id, modelGroup - static_cast<QorIdentifier>(entry), 2);
        }
        for (long number = 0; number < users; ++number) {
            user = administration.addUser("user " + std::to_string(number)).id;
            (void)administration.setAllowedLibrary(user, library);
            for (long i = 0; i < groupsOfUser; ++i)
                (void)administration.join(user, firstGroup + static_cast<QorIdentifier>((number * 31 + i) % groups));
        }
    }
    QorIdentifier firstGroup = QorNoIdentifier;
    QorIdentifier modelGroup = QorNoIdentifier;  // the last one
    QorIdentifier user = QorNoIdentifier;        // the last one

private:
    QorEmbeddedPlatform _platform;
    QorHostInstallation _installation;
};

void accessOfEmbeddedUser(benchmark::State& state) {
    const long groups = state.range(0);
    const EmbeddedHost host(10, groups, groups, 100);
    QorAccModelgroupContainer container;
    compare(
        state, [&] { passOverEntries(groups, host.firstGroup); },
        [&] {
            if (QorAllModelStructure::Instance().GetModelGroupsOfUser(QorUserID(host.user), container) !=
                    QorErrorCode::Ok ||
                container.numberOfElements() != static_cast<unsigned long>(groups) * 100)
                state.SkipWithError("wrong access");
        },
        [&] { container.removeAll(); });
}
BENCHMARK(accessOfEmbeddedUser)->UseManualTime()->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void whoCanReachEmbedded(benchmark::State& state) {
    const EmbeddedHost host(state.range(0), 5, state.range(0) / 500, 20);
    QorModelGroupReach reach;
    compare(
        state, passOverMemberships,
        [&] {
            if (reach.read(host.modelGroup) != QorErrorCode::Ok || reach.users().empty()) state.SkipWithError("nobody");
        },
        [] {});
}
BENCHMARK(whoCanReachEmbedded)->UseManualTime()->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
