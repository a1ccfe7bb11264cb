// A folder of a test's own.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

class FolderFixture : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (std::filesystem::temp_directory_path() / "elugraph-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    folder_ = pattern;
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  std::string File(const std::string& name) const { return (folder_ / name).string(); }
  std::string Write(const std::string& name, const std::string& text) const {
    std::ofstream(folder_ / name) << text;
    return File(name);
  }

  std::filesystem::path folder_;
};
