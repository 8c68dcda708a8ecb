// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <random>
#include <string>

#include "embedded/QorEmbeddedPlatform.h"

/// Work of every kind on a repository, drawn at random from a seed: libraries, classes, models, objects, relations,
/// values, rows come and go. What is refused is refused; the work goes on.
class RandomWork {
public:
    explicit RandomWork(unsigned seed) : _random(seed) {}

    /// A library with models to begin with.
    static void furnish(QorEmbeddedPlatform& platform);
    /// One operation; its code.
    QorErrorCode step(QorEmbeddedPlatform& platform);

    std::size_t pick(std::size_t below) { return _random() % below; }

private:
    std::string text() { return std::string(pick(pick(20) == 0 ? 6000 : 40), static_cast<char>('a' + pick(26))); }
    template <class List>
    QorIdentifier idIn(const List& list) {
        return list.empty() ? QorNoIdentifier : list[pick(list.size())].id;
    }
    QorIdentifier model(const QorRepositoryReader& reader, QorIdentifier library);
    QorErrorCode onLibrary(QorEmbeddedPlatform& platform, QorIdentifier library);
    QorErrorCode onModel(QorEmbeddedPlatform& platform, QorIdentifier library);
    QorErrorCode onGroups(QorEmbeddedPlatform& platform, QorIdentifier library, QorIdentifier model);

    QorErrorCode onUsers(QorEmbeddedPlatform& platform, QorIdentifier library);

    std::mt19937 _random;
};
