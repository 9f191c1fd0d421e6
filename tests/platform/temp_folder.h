#pragma once
// A fresh folder for each test that works with files, removed afterwards.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <sstream>
#include <string>

#include "platform/temp_directory.h"

class TempFolderTest : public ::testing::Test {
  protected:
    void SetUp() override { std::filesystem::create_directories(folder_); }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::filesystem::path Write(const std::filesystem::path& name,
                                std::span<const uint8_t> bytes) const {
        const std::filesystem::path path = folder_ / name;
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        return path;
    }

    static std::string ReadAll(const std::filesystem::path& path) {
        std::ifstream in(path, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }

    std::size_t FileCount() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder_), {}));
    }

    const std::filesystem::path folder_ = ZoMakeTempFileName("");
};
