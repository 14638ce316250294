// A test suite that shares one loaded library: loading it per test would cost a dlopen and a
// fresh instance each time. Derive a suite's fixture from it and use `library`.
#pragma once

#include <gtest/gtest.h>

#include "library.h"

namespace vxtest {

class LibrarySuite : public ::testing::Test {
protected:
    static void SetUpTestSuite() { library = new vxhost::Library(); }
    static void TearDownTestSuite() {
        delete library;
        library = nullptr;
    }
    static inline vxhost::Library* library = nullptr;
};

}  // namespace vxtest
