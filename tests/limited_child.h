#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>

namespace krnqb::tests {

/// Runs an action on an input of `inputBytes` bytes in a process of its own. Succeeds if the action returns
/// true without exhausting the stack, in less than 2 s of processor time, with at most ten times the input
/// and 64 MiB of additional memory. The process is ended after 20 s or at 6 GiB, so that a failure costs no
/// more. A program built with the sanitizers is only required to end by itself, because they take their own
/// time and memory.
testing::AssertionResult StaysWithinLimits(std::size_t inputBytes, const std::function<bool()>& action);

}  // namespace krnqb::tests
