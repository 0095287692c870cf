// SPDX-License-Identifier: MIT
// A target that only compiles headers ahead, for others, needs a source nevertheless.
