// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <random>
#include <string>

#include "cardinality/Desk.h"

/// A desk with objects, relations and rules at random, the same ones for the same seed.
class RandomDesk {
public:
    /// Every third one is crowded: so many relations at an object that they are grouped for counting.
    explicit RandomDesk(unsigned seed) : _random(seed), _scale(seed % 3 == 0 ? 7 : 1) {
        desk.objects("abcdstxyz");
        for (int lines = draw(_scale * _scale * 10 + 15); lines > 0; --lines) {
            const char from = "abcdstxyz"[draw(8)];
            const char to = "abcdstxyz"[draw(8)];
            desk.draw(std::string{from, from >= 'x' && to < 'x' ? ">=~"[draw(2)] : ">="[draw(1)], to});
        }
        for (const auto* cls : {"Task", "Document", "Special"})
            for (int readings = draw(2); readings > 0; --readings) desk.rules(cls, ruleText());
        desk.handler.resetCheck();
    }
    Desk desk;

private:
    int draw(int most) { return std::uniform_int_distribution<int>(0, most)(_random); }

    std::string keys(std::initializer_list<const char*> names, int rarity) {
        std::string text;
        for (const auto* key : names)
            if (draw(rarity) == 0) text += std::string(" ") + key + ": " + std::to_string(draw(5) * _scale);
        return text;
    }

    std::string ruleText() {
        auto text = "CARDINALITIES" + keys({"max-objects", "max-relations", "max-incoming", "max-outgoing",
                                            "min-objects", "min-relations", "min-incoming", "min-outgoing"},
                                           4);
        for (const auto* relation : {"then", "uses", "files"}) {
            if (draw(1) == 0) continue;
            text += std::string(" RELATION '") + relation + "'" +
                    keys({"max-outgoing", "max-incoming", "default-max-outgoing", "default-max-incoming",
                          "min-outgoing", "min-incoming", "default-min-outgoing", "default-min-incoming"},
                         5);
            for (const auto* cls : {"Node", "Task", "Document", "Special"}) {
                text += std::string(" TO_CLASS '") + cls + "'" + keys({"max-outgoing", "min-outgoing"}, 5);
                text += std::string(" FROM_CLASS '") + cls + "'" + keys({"max-incoming", "min-incoming"}, 5);
            }
        }
        return text;
    }

    std::mt19937 _random;
    int _scale;
};
