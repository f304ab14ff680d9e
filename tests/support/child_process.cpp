#include "tests/support/child_process.h"

#include <gtest/gtest.h>

namespace rvl::test {

ChildProcess::~ChildProcess() {
    if (HasEnded()) return;
    Kill();
    Wait();
}

bool ChildProcess::IsOne() {
    return GTEST_FLAG_GET(also_run_disabled_tests);
}

std::string ChildArguments(const std::string& test) {
    return "--gtest_also_run_disabled_tests --gtest_brief=1 --gtest_filter=" + test;
}

}  // namespace rvl::test
