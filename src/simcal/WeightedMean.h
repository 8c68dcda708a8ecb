// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace qor::simcal {

// A mean of expectations in the making, each weighted by the seconds for which it holds.
struct WeightedMean {
    double sum = 0;
    double seconds = 0;

    void add(const WeightedMean& more) {
        sum += more.sum;
        seconds += more.seconds;
    }
};

}  // namespace qor::simcal
