// A folder of a test's own, which goes with it.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace kelvora {

class TestFolder {
public:
    TestFolder() { EXPECT_NE(mkdtemp(path_.data()), nullptr); }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder() { std::filesystem::remove_all(path_); }

    const std::string& Path() const { return path_; }

private:
    std::string path_ = testing::TempDir() + "kelvora-XXXXXX";
};

}  // namespace kelvora
