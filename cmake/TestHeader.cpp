// SPDX-License-Identifier: Apache-2.0
// The target that owns the tests' precompiled header needs a source even while tests/support is empty.
