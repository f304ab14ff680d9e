#pragma once

#include <gtest/gtest.h>

namespace rvl::test {

/// Sees that this test process is in a network of its own that has nothing but 127.0.0.0/8, so that the fixed
/// ports are free and a broadcast reaches nobody else. False where there is none to be had.
bool EnterPrivateNetwork();

/// A test that needs such a network; it is skipped where there is none.
class PrivateNetworkTest : public testing::Test {
 protected:
    PrivateNetworkTest() : m_granted(EnterPrivateNetwork()) {}

    void SetUp() override {
        if (!m_granted) GTEST_SKIP() << "no private network";
    }

 private:
    bool m_granted;
};

}  // namespace rvl::test
