/// \file
/// Paths for files that tests write.
#pragma once

#include <cstdio>
#include <fstream>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace test {

/// A path of this process alone, since tests run side by side. The file is the test's to remove.
inline std::string TempPath(const char* name) {
    static const std::string own = std::to_string(std::random_device()());
    return testing::TempDir() + "qev_" + own + "_" + name;
}

} // namespace test
